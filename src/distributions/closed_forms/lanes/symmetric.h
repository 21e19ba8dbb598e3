// Quantiles of symmetric families in lanes.
#pragma once

#include "distributions/closed_forms/closed_forms.h"
#include "distributions/lanes/text.h"

namespace zul::kernels {
namespace {

// What may tolerantly equal 0.5.
template <class D>
ZUL_INLINE void LeaveHalf(D p, Left<D>* left) {
    left->Where(Absolute(p - 0.5) < kNearHalf);
}

template <class D>
ZUL_INLINE D SmallerTail(D q, Left<D>* left) {
    const D other = 1.0 - q;
    const D smaller = Select(other < q, other, q);
    LeaveHalf(smaller, left);
    return smaller;
}

// By the standard quantile of the smaller tail.
template <class D>
ZUL_INLINE D Symmetric(D q, double location, double scale, D quantile) {
    return location + Select(q < 0.5, Splat<D>(-scale), Splat<D>(scale)) * quantile;
}

}  // namespace
}  // namespace zul::kernels
