#include "distributions/lanes/fill.h"

namespace zul::kernels {

constinit const Lanes kLanesOfTwo = MakeLanes<double __attribute__((vector_size(16)))>();

}  // namespace zul::kernels
