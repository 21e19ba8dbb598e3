#pragma once

#include <algorithm>
#include <cmath>

#include "frame/error_state.h"
#include "frame/side.h"
#include "numerics/limits.h"

namespace zul::numerics {

// Of a refinement that evaluates the pair after every step.
struct NoStepIsSure {
    constexpr bool operator()(double, double) const { return false; }
};

// Newton's iteration from *x to the point where the tail on the side, lower or upper, is the target, to a
// relative kSeriesTolerance; pair(x, &lower, &upper, &density) evaluates the tails. The failures have the
// routine's name. LevelDomain: the target is outside [0, 1]. LevelNoConvergence: kNewtonLimit steps did not
// do, *x left the domain, or the density vanished.
// Deliberate: the last step, the one that is small enough, is not applied.
//
// isSure(x, step), asked after an evaluation at x whose step is still to be applied, says that one at x + step would
// find a step that is small enough and leave the error state as that at x did: it is left out, which changes nothing.
template <typename Pair, typename IsSure = NoStepIsSure>
void RefineByNewton(double target, Pair pair, double* x, Side side, const frame::RoutineName& routine,
                    IsSure isSure = {}) {
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
        // Not the last of all: after it the step would have to be small enough by itself.
        if (k < kNewtonLimit && !(std::abs(step) < scale * kSeriesTolerance) && isSure(*x, step)) {
            *x += step;
            step = 0;
        }
    }
    if (std::abs(step) >= scale * kSeriesTolerance) {
        ErrorState().Fail(frame::LevelNoConvergence, routine);
    } else {
        ErrorState().ClearWarning(routine);
    }
}

}  // namespace zul::numerics
