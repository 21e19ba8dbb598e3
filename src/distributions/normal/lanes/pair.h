// The incomplete gamma pair of shape 1/2 in lanes, with the operations of numerics/gamma/incomplete_gamma_pair.h. Each of
// its series is one chain of operations that wait for one another, so that W vectors are computed together.
#pragma once

#include "distributions/lanes/text.h"
#include "elementary/core/division.h"
#include "numerics/gamma/one_half_table.h"
#include "numerics/limits.h"

namespace zul::kernels {
namespace {

using numerics::kOneHalfTable;
using numerics::kSeriesTolerance;
using numerics::OneHalfTable;

#define ZUL_UNROLLED _Pragma("GCC unroll 8")

// Arguments, or a function of them. An array of a constant length that is unrolled throughout stays in registers.
template <class D, int W>
struct Group {
    D of[static_cast<unsigned>(W)];
};

template <class D, int W>
inline constexpr int kPoints = int{kLanesOf<D>} * W;

inline constexpr double kHalf = 0.5;

template <class D>
ZUL_INLINE D QuotientBy(D n, double d, double reciprocal) {
    return elementary::Quotient(n, Splat<D>(d), Splat<D>(reciprocal));
}

// numerics::Log1p of t >= 0.
template <class D>
ZUL_INLINE D LogOnePlus(D t) {
    const auto small = t <= 0.01;
    const D far = elementary::CoreLog(1.0 + t);
    if (!elementary::AnyTopBit((BitsOf<D>)small)) [[likely]]
        return far;
    D sum = Splat<D>(1.0 / 9);
    for (int n = 8; n >= 1; --n)
        sum = 1.0 / n - t * sum;
    return Select(small, t * sum, far);
}

// numerics::Expm1 of -1 < t <= 0.
template <class D>
ZUL_INLINE D ExpLessOne(D t) {
    const auto small = t >= -0.01;
    const D far = elementary::CoreExp(t) - 1.0;
    if (!elementary::AnyTopBit((BitsOf<D>)small)) [[likely]]
        return far;
    D sum = Splat<D>(1);
    for (int n = 9; n >= 2; --n)
        sum = 1.0 + t / static_cast<double>(n) * sum;
    return Select(small, t * sum, far);
}

template <class D>
ZUL_INLINE D LogDensity(D x, D logRatio) {
    return kHalf * logRatio + (kHalf - x) - kOneHalfTable.stirlingTerm - logRatio;
}

// The density at x below 1, and above.
template <class D>
ZUL_INLINE D NearDensity(D x) {
    const auto above = x >= kHalf;
    const D less = Select(above, Splat<D>(kHalf), x);
    const D log = LogOnePlus((Select(above, x, Splat<D>(kHalf)) - less) / less);
    return elementary::CoreExp(LogDensity(x, Select(above, log, -log)));
}

template <class D>
ZUL_INLINE D FarDensity(D x) {
    return elementary::CoreExp(LogDensity(x, elementary::CoreLog(x) - kOneHalfTable.log));
}

// A tail of the arguments and, where the pair is one of Newton's, the density; by the top bit the arguments so close to one
// at which the number of terms changes that a step of 1e-6 x might pass it.
template <class D, int W>
struct Tails {
    Group<D, W> tail;
    Group<D, W> density;
    Group<BitsOf<D>, W> unsure;
};

// Has the top bit where the two are within a distance.
template <class D>
ZUL_INLINE BitsOf<D> AreWithin(D x, double y, D distance) {
    return Bits(Absolute(x - y) - distance);
}

// Of a step with a sure outcome, what it changes at most: x by its 1e-6, and the terms and pairs near the tolerance by less
// than a thousandth.
inline constexpr double kSureStep = 1e-6;
inline constexpr double kSureTerm = 1e-3;

// The lower tail of x up to the split, by a series of `least` to `most` terms.
template <bool kNewton, class D, int W>
ZUL_INLINE void LowerTails(const Group<D, W>& x, int least, int most, Tails<D, W>* tails) {
    const OneHalfTable& table = kOneHalfTable;
    Group<D, W> power;
    Group<D, W> sum;
    ZUL_UNROLLED for (int w = 0; w < W; ++w) {
        const D logRatio = -elementary::CoreLog(1.0 + (kHalf - x.of[w]) / x.of[w]);
        const D logDensity = LogDensity(x.of[w], logRatio);
        if constexpr (kNewton) {
            tails->density.of[w] = elementary::CoreExp(logDensity);
            tails->unsure.of[w] = BitsOf<D>{};
        }
        power.of[w] = elementary::CoreExp(logRatio + logDensity);
        sum.of[w] = Splat<D>(1);
    }
    for (int k = most; k > least; --k) {
        const double start = table.termStarts[k - 1];
        ZUL_UNROLLED for (int w = 0; w < W; ++w) {
            const D more = QuotientBy(x.of[w] * sum.of[w], k + kHalf, table.seriesReciprocals[k]) + 1.0;
            sum.of[w] = Select(x.of[w] >= start, more, sum.of[w]);
            if constexpr (kNewton) tails->unsure.of[w] |= AreWithin(x.of[w], start, 2 * kSureStep * x.of[w]);
        }
    }
    for (int k = least; k >= 1; --k)
        ZUL_UNROLLED for (int w = 0; w < W; ++w) sum.of[w] =
            QuotientBy(x.of[w] * sum.of[w], k + kHalf, table.seriesReciprocals[k]) + 1.0;
    ZUL_UNROLLED for (int w = 0; w < W; ++w) tails->tail.of[w] = power.of[w] * sum.of[w];
}

template <class D>
ZUL_INLINE D NextSmallTerm(D x, D term, int n) {
    return -QuotientBy(x, n, kOneHalfTable.reciprocals[n]) * kOneHalfTable.termRatios[n] * term;
}

// The upper tail from the split to 1, by a series of at least `sure` terms. A term within the tolerance ends it: it becomes
// 0, as then do all that follow.
template <bool kNewton, class D, int W>
ZUL_INLINE void SmallUpperTails(const Group<D, W>& x, int sure, Tails<D, W>* tails) {
    constexpr int kSeriesLimit = 40;
    Group<D, W> power;
    Group<D, W> term;
    Group<D, W> sum;
    ZUL_UNROLLED for (int w = 0; w < W; ++w) {
        power.of[w] = ExpLessOne(elementary::CoreLog(x.of[w]) * kHalf) / kHalf;
        const auto log = elementary::LogOfPower(Bits(x.of[w]), Splat<D>(kHalf + 1));
        term.of[w] = elementary::CoreExpOfTwo(log.high, log.low) / (kHalf + 1);
        sum.of[w] = term.of[w];
        if constexpr (kNewton) tails->unsure.of[w] = BitsOf<D>{};
    }
    for (int n = 2; n <= kSeriesLimit; ++n) {
        if (n > sure) {
            BitsOf<D> any{};
            ZUL_UNROLLED for (int w = 0; w < W; ++w) {
                const D size = Absolute(term.of[w]);
                if constexpr (kNewton)
                    tails->unsure.of[w] |=
                        AreWithin(size, kSeriesTolerance, Splat<D>(kSureTerm * kSeriesTolerance));
                any |= Bits(kSeriesTolerance - size);
                term.of[w] = Select(size > kSeriesTolerance, term.of[w], D{});
            }
            if (!AnyTopBit(any)) break;
        }
        ZUL_UNROLLED for (int w = 0; w < W; ++w) {
            term.of[w] = NextSmallTerm(x.of[w], term.of[w], n);
            sum.of[w] += term.of[w];
        }
    }
    ZUL_UNROLLED for (int w = 0; w < W; ++w) {
        tails->tail.of[w] = (-power.of[w] - kOneHalfTable.gammaQuotient + sum.of[w]) / kOneHalfTable.gamma;
        if constexpr (kNewton) tails->density.of[w] = NearDensity(x.of[w]);
    }
}

// Pairs of convergents; one that is near enough stays.
template <class D, int W>
struct ConvergentGroup {
    Group<D, W> p0{};
    Group<D, W> p1;
    Group<D, W> q0;
    Group<D, W> q1;

    ZUL_INLINE void Begin() {
        ZUL_UNROLLED for (int w = 0; w < W; ++w) p1.of[w] = q0.of[w] = q1.of[w] = Splat<D>(1);
    }
    ZUL_INLINE void Advance(const Group<D, W>& x, int k) {
        ZUL_UNROLLED for (int w = 0; w < W; ++w) {
            p0.of[w] = (k - kHalf) * p0.of[w] + x.of[w] * p1.of[w];
            q0.of[w] = (k - kHalf) * q0.of[w] + x.of[w] * q1.of[w];
            p1.of[w] = static_cast<double>(k) * p1.of[w] + p0.of[w];
            q1.of[w] = static_cast<double>(k) * q1.of[w] + q0.of[w];
        }
    }
    // How much nearer than they need be to be divided, negative for those that are not near.
    ZUL_INLINE D Slack(int w) const {
        const D product = p0.of[w] * q1.of[w];
        return kSeriesTolerance * (1 + 1e-5) * product - (p1.of[w] * q0.of[w] - product);
    }
    ZUL_INLINE void AdvanceFar(const Group<D, W>& x, int k) {
        ZUL_UNROLLED for (int w = 0; w < W; ++w) {
            const auto far = Slack(w) < 0.0;
            const D even = (k - kHalf) * p0.of[w] + x.of[w] * p1.of[w];
            const D under = (k - kHalf) * q0.of[w] + x.of[w] * q1.of[w];
            p1.of[w] = Select(far, static_cast<double>(k) * p1.of[w] + even, p1.of[w]);
            q1.of[w] = Select(far, static_cast<double>(k) * q1.of[w] + under, q1.of[w]);
            p0.of[w] = Select(far, even, p0.of[w]);
            q0.of[w] = Select(far, under, q0.of[w]);
        }
    }
};

// The upper tail from 1 on, by its density and a continued fraction of more than `from` pairs, if that is above 1. What is
// so close to the tolerance that rounding decides is NA.
template <bool kNewton, class D, int W>
ZUL_INLINE void FractionTails(const Group<D, W>& x, int from, Tails<D, W>* tails) {
    constexpr int kPairLimit = 80;
    ConvergentGroup<D, W> pair;
    pair.Begin();
    for (int k = 1; k <= from; ++k)
        pair.Advance(x, k);
    Group<BitsOf<D>, W> left{};
    if (from > 1) ZUL_UNROLLED for (int w = 0; w < W; ++w) left.of[w] = ~Bits(pair.Slack(w));
    if constexpr (kNewton) tails->unsure = {};
    for (int k = from; k < kPairLimit; ++k) {
        BitsOf<D> any{};
        ZUL_UNROLLED for (int w = 0; w < W; ++w) {
            const D slack = pair.Slack(w);
            any |= Bits(slack);
            if constexpr (kNewton) {
                const D tolerance = kSureTerm * kSeriesTolerance * (pair.p0.of[w] * pair.q1.of[w]);
                tails->unsure.of[w] |= AreWithin(slack, 0, tolerance);
            }
        }
        if (!AnyTopBit(any)) break;
        pair.AdvanceFar(x, k + 1);
    }
    ZUL_UNROLLED for (int w = 0; w < W; ++w) {
        const D even = pair.p0.of[w] / pair.q0.of[w];
        const D odd = pair.p1.of[w] / pair.q1.of[w];
        tails->density.of[w] = FarDensity(x.of[w]);
        const D tail = (even + odd) / 2.0 * tails->density.of[w];
        // Without a third division.
        const auto close = (odd - even) < kSeriesTolerance * (1 - 1e-5) * even;
        const BitsOf<D> none = (left.of[w] & elementary::kSignBit) | ~(BitsOf<D>)close;
        tails->tail.of[w] = Select((none >> 63) != 0, Splat<D>(frame::kNA), tail);
    }
}

}  // namespace
}  // namespace zul::kernels
