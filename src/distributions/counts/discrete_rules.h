// What the families on whole numbers have in common: the whole number that an argument stands for, the
// quantile from the routines of the numerical core, and the search along the whole numbers.
#pragma once

#include <algorithm>
#include <cmath>

#include "frame/compare.h"
#include "frame/error_state.h"
#include "frame/missing_value.h"

namespace zul::kernels {

// The whole number that x is within CompareTolerant, or else the one below it.
struct WholeArgument {
    explicit WholeArgument(double x)
        : value(frame::RoundHalfAway(x)), isWhole(frame::CompareTolerant(x, value, 0) == 0) {
        if (!isWhole) value = std::floor(x);
    }
    // The first whole number that is not below x, from which on the upper tail counts.
    double First() const { return isWhole ? value : value + 1; }
    double value;
    bool isWhole;
};

// The first whole number on the way from start to end at which the condition holds, given that it holds from
// there on; NA if it holds nowhere. It tries about twice the logarithm of the distance.
template <typename Condition>
double FirstOnTheWay(double start, double end, Condition holds) {
    if (holds(start)) return start;
    double before = start;
    double after = start;
    for (double step = 1;; step *= 2) {
        if (before == end) return frame::kNA;
        after = end > start ? std::min(before + step, end) : std::max(before - step, end);
        if (holds(after)) break;
        before = after;
    }
    for (;;) {
        const double middle = std::floor(before + (after - before) / 2);
        if (middle == before || middle == after) return after;
        (holds(middle) ? after : before) = middle;
    }
}

// The quantile for the upper tail q from a family's routine. With its k comes the share of its atom that
// belongs to the tail: when that is the whole atom to within 1e-9, q is the upper tail beyond k - 1 but for
// rounding, and k - 1 is the answer.
template <typename Routine, typename Shape>
double DiscreteQuantileAtUpperTail(double q, const Shape& shape, Routine* upperQuantile) {
    constexpr double kWholeShare = 0.999999999;

    double k = 0;
    double share = 0;
    upperQuantile(q, shape, &k, &share);
    if (frame::ErrorState().Failed()) return frame::kNA;
    return share >= kWholeShare ? k - 1 : k;
}

// The quantile at p from the smaller tail. k - 1 where p is the lower tail at k - 1 but for rounding.
template <typename Routine, typename Shape>
double DiscreteQuantile(double p, const Shape& shape, Routine* lowerQuantile, Routine* upperQuantile) {
    constexpr double kNoShare = 1e-9;

    if (p > 0.5) return DiscreteQuantileAtUpperTail(1 - p, shape, upperQuantile);
    double k = 0;
    double share = 0;
    lowerQuantile(p, shape, &k, &share);
    if (frame::ErrorState().Failed()) return frame::kNA;
    return share <= kNoShare ? k - 1 : k;
}

}  // namespace zul::kernels
