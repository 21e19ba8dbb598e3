// Both tails of a continuous distribution at a point, for whoever needs more than one of them.
#pragma once

#include "frame/missing_value.h"

namespace zul::kernels {

struct TailPair {
    double lower = frame::kNA;
    double upper = frame::kNA;
    double Tail(bool isUpper) const { return isUpper ? upper : lower; }
};

}  // namespace zul::kernels
