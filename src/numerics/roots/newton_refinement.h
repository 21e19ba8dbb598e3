#pragma once

#include <algorithm>
#include <cmath>

#include "frame/error_state.h"
#include "frame/side.h"
#include "numerics/limits.h"

namespace zul::numerics {

// Newton's iteration from *x to the point where the tail on the side, lower or upper, is the target, to a
// relative kSeriesTolerance; pair(x, &lower, &upper, &density) evaluates the tails. The failures have the
// routine's name. LevelDomain: the target is outside [0, 1]. LevelNoConvergence: kNewtonLimit steps did not
// do, *x left the domain, or the density vanished.
// Deliberate: the last step, the one that is small enough, is not applied.
template <typename Pair>
void RefineByNewton(double target, Pair pair, double* x, Side side, const frame::RoutineName& routine) {
    using frame::ErrorState;
    if (!(target >= 0 && target <= 1)) {
        ErrorState().Fail(frame::LevelDomain, routine);
        return;
    }
    double scale = -1;
    double step = 0;
    for (int k = 1; k <= kNewtonLimit && !(std::abs(step) < scale * kSeriesTolerance); ++k) {
        *x += step;
        double lower = 0;
        double upper = 0;
        double density = 0;
        pair(*x, &lower, &upper, &density);
        if (ErrorState().Failed() || !(density > 0)) {
            ErrorState().Fail(frame::LevelNoConvergence, routine);
            return;
        }
        if (side == Side::Lower) {
            scale = lower;
            step = (target - lower) / density;
        } else if (side == Side::Upper) {
            scale = upper;
            step = (upper - target) / density;
        }
        scale = std::max(*x, scale);
    }
    if (std::abs(step) >= scale * kSeriesTolerance) {
        ErrorState().Fail(frame::LevelNoConvergence, routine);
    } else {
        ErrorState().ClearWarning(routine);
    }
}

}  // namespace zul::numerics
