#include "elementary/lanes/fill.h"

namespace zul::elementary {

constinit const Columns kColumnsOfEight = MakeColumns<double __attribute__((vector_size(64)))>();

}  // namespace zul::elementary
