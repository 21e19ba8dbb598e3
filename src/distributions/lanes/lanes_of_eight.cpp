#include "distributions/lanes/fill.h"

namespace zul::kernels {

constinit const Lanes kLanesOfEight = MakeLanes<double __attribute__((vector_size(64)))>();

}  // namespace zul::kernels
