// Both tails of a continuous distribution at a point, for whoever needs more than one of them.
#pragma once

#include <algorithm>

#include "frame/missing_value.h"
#include "frame/side.h"

namespace zul::kernels {

struct TailPair {
    double lower = frame::kNA;
    double upper = frame::kNA;
    double Tail(bool isUpper) const { return isUpper ? upper : lower; }
    // The p-value: one of the tails, or twice the smaller; 0 for an unknown side.
    double PValue(Side side) const {
        switch (side) {
            case Side::Lower:
                return lower;
            case Side::Both:
                return 2 * std::min(lower, upper);
            case Side::Upper:
                return upper;
            case Side::Unknown:
                break;
        }
        return 0.0;
    }
};

}  // namespace zul::kernels
