// A group of arguments of the gamma density or the incomplete gamma pair, of which several vectors are computed at a
// time, and the steps that the branches have in common.
#pragma once

#include <cfloat>

#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"
#include "elementary/core/value.h"
#include "numerics/gamma/lanes/pair_constants.h"
#include "numerics/limits.h"

namespace zul::numerics::gamma_lanes {
namespace {

using elementary::Absolute;
using elementary::Bits;
using elementary::BitsOf;
using elementary::FromBits;
using elementary::kLanesOf;
using elementary::Quotient;
using elementary::Select;
using elementary::Splat;

template <class D>
using MaskOf = decltype(D{} < D{});

template <class D>
ZUL_INLINE bool AnyOf(MaskOf<D> mask) {
    return elementary::AnyTopBit((BitsOf<D>)mask);
}

// The count plus 1 where the condition holds.
template <class D>
ZUL_INLINE D CountIf(MaskOf<D> condition, D count) {
    if constexpr (kLanesOf<D> == 8) return Select(condition, count + 1.0, count);
    return count + FromBits<D>((BitsOf<D>)condition & Bits(1.0));
}

// Vectors that are computed at a time: the terms of one wait for one another.
inline constexpr int kVectors = 4;

template <class Work>
ZUL_INLINE void EachVector(Work work) {
    work(0);
    work(1);
    work(2);
    work(3);
}

template <class Work>
ZUL_INLINE void EachOfTwo(Work work) {
    work(0);
    work(1);
}

#define ZUL_VECTOR [&](int w) __attribute__((always_inline))

// The arguments of a group, what became of them, and who is left out.
template <class D>
struct Group {
    D x[kVectors];
    D tail[kVectors];
    MaskOf<D> bad[kVectors];
};

// Terms between two questions whether all have ended: a term that has ended stays.
inline constexpr int kTermsAtATime = 4;

// numerics::Log1p(t) for t >= 0, of which elementary::Log(1 + t) is given.
template <class D>
ZUL_INLINE D LogOfOnePlus(D t, D logarithm) {
    constexpr double kSeriesRange = 0.01;
    const MaskOf<D> near = t <= kSeriesRange;
    if (!AnyOf<D>(near)) return logarithm;
    D sum = Splat<D>(1.0 / 9);
    for (int n = 8; n >= 1; --n)
        sum = 1.0 / n - t * sum;
    return Select(near, t * sum, logarithm);
}

// log(x / a)
template <class D>
ZUL_INLINE D LogRatioOf(const GammaDensityConstants& g, D x) {
    const MaskOf<D> above = x >= g.a;
    const MaskOf<D> apart = (x < (g.a > 1 ? 1.0 : 0.0)) | (x > (g.a < 1 ? 1.0 : DBL_MAX));
    const D a = Splat<D>(g.a);
    const D smaller = Select(above, a, x);
    const D t = (Select(above, x, a) - smaller) / smaller;
    const D logarithm = elementary::CoreLog(Select(apart, x, 1.0 + t));
    const D ratio = LogOfOnePlus(Select(apart, Splat<D>(1), t), logarithm);
    return Select(apart, logarithm - g.log, Select(above, ratio, -ratio));
}

template <class D>
ZUL_INLINE D LogDensityOf(const GammaDensityConstants& g, D x, D logRatio) {
    return g.a * logRatio + (g.a - x) - g.stirlingTerm - logRatio;
}

// The exponential of a logarithm that does not underflow; where it does, the argument is bad.
template <class D>
ZUL_INLINE D ExpUnlessUnder(D logarithm, MaskOf<D>* bad) {
    const MaskOf<D> under = logarithm < kLogUnderflow;
    *bad |= under;
    return elementary::CoreExp(Select(under, D{}, logarithm));
}

template <class D>
ZUL_INLINE bool AnyAbove(const D* t) {
    MaskOf<D> any{};
    EachVector(ZUL_VECTOR { any |= t[w] > kSurelyAbove; });
    return AnyOf<D>(any);
}

// Goes on to the next term of each that has not ended, by its ratio to the one before.
template <class D>
ZUL_INLINE void NextTerm(D ratio, D* t, D* terms) {
    const MaskOf<D> live = *t > kSurelyAbove;
    *t = Select(live, *t * ratio, *t);
    *terms = CountIf<D>(live, *terms);
}

}  // namespace
}  // namespace zul::numerics::gamma_lanes
