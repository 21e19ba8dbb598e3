#include "elementary/lanes/fill.h"

namespace zul::elementary {

constinit const Columns kColumnsOfTwo = MakeColumns<double __attribute__((vector_size(16)))>();

}  // namespace zul::elementary
