#include "elementary/lanes/fill.h"

namespace zul::elementary {

constinit const Columns kColumnsOfFour = MakeColumns<double __attribute__((vector_size(32)))>();

}  // namespace zul::elementary
