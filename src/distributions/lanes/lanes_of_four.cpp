#include "distributions/lanes/fill.h"

namespace zul::kernels {

constinit const Lanes kLanesOfFour = MakeLanes<double __attribute__((vector_size(32)))>();

}  // namespace zul::kernels
