// Both tails of a continuous distribution at a point, for whoever needs more than one of them.
#pragma once

#include <algorithm>

#include "frame/missing_value.h"

namespace zul::kernels {

struct TailPair {
    double lower = frame::kNA;
    double upper = frame::kNA;
    double Tail(bool isUpper) const { return isUpper ? upper : lower; }
    // The p-value for the code of an EAlternative: -1 the lower tail, 1 the upper one, 0 twice the smaller;
    // any other code gives 0.
    double PValue(int alternative) const {
        if (alternative == 0) return 2 * std::min(lower, upper);
        return alternative == -1 ? lower : alternative == 1 ? upper : 0.0;
    }
};

}  // namespace zul::kernels
