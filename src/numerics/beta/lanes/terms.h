// The branches of the incomplete beta pair in lanes: the operations of incomplete_beta.cpp in its order, so that the
// bits are the same. Sources: see there.
//
// All is in an unnamed namespace: see elementary/core/value.h.
#pragma once

#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"
#include "elementary/core/value.h"
#include "numerics/beta/beta_limits.h"
#include "numerics/beta/lanes/plan.h"

namespace zul::numerics {
namespace {

using elementary::BitsOf;
using elementary::Select;

// Vectors in flight: a term waits for the one before, and so many fill the time.
inline constexpr int kInFlight = 4;

template <class D>
using Flight = D[kInFlight];

template <class D>
inline constexpr int kFlightPoints = kInFlight* elementary::kLanesOf<D>;

template <class D>
using MarksOf = BitsOf<D>;

template <class D>
ZUL_INLINE bool AnyLane(const Flight<MarksOf<D>>& masks) {
    MarksOf<D> any = masks[0];
    for (int w = 1; w < kInFlight; ++w)
        any |= masks[w];
    return elementary::AnyTopBit(any);
}

// The ratios of an orientation, as far as they were needed.
struct LaneRatios {
    static constexpr int kMost = 2048;
    double p;
    double q;
    int known = 0;
    double ratios[kMost + 1];

    ZUL_INLINE double At(int n) {
        if (n > known) {
            known = n;
            ratios[n] = (q - n) / (n + p);
        }
        return ratios[n];
    }
};

// What becomes of the points in flight.
template <class D>
struct BetaFlight {
    Flight<D> y;
    Flight<D> rest;
    Flight<D> logRest;
    Flight<D> logDensity;
    Flight<D> power;  // the exponential to be multiplied by the value
    Flight<D> odds;
    Flight<D> value;
    Flight<D> count;
    Flight<D> last;        // term
    Flight<D> beforeLast;  // where it is asked for
    Flight<MarksOf<D>> alternating;
    Flight<MarksOf<D>> gone;  // by underflow: the tail is 0
    Flight<MarksOf<D>> left;  // to beta_df
    int most;                 // terms of any point
};

// As Deviance, for mean > 0.
template <class D>
ZUL_INLINE D LaneDeviance(double x, D mean) {
    constexpr double kClose = 0.1;
    constexpr int kTermLimit = 100;

    const D difference = x - mean;
    const MarksOf<D> close = (MarksOf<D>)(elementary::Absolute(difference) < kClose * (x + mean));
    const D v = difference / (x + mean);
    D sum = difference * v;
    D power = 2 * x * v;
    MarksOf<D> live = close;
    for (int j = 1; j < kTermLimit && elementary::AnyTopBit(live); ++j) {
        power = power * (v * v);
        const D next = sum + power / (2 * j + 1);
        live &= (MarksOf<D>)(next != sum);
        sum = Select(live, next, sum);
    }
    return Select(close, sum, x * elementary::CoreLog(x / mean) + mean - x);
}

template <class D>
ZUL_INLINE void TakeLogDensity(const BetaPlan& plan, const BetaSidePlan& side, BetaFlight<D>& at) {
    for (int w = 0; w < kInFlight; ++w) {
        at.logRest[w] = elementary::CoreLog(at.rest[w]);
        const D logY = elementary::CoreLog(at.y[w]);
        const double sum = side.p + side.q;
        if (sum <= kBetaMediumSum) {
            at.logDensity[w] = (side.p - 1) * logY + (side.q - 1) * at.logRest[w] + plan.minusLogBeta;
        } else {
            at.logDensity[w] = plan.densityConstant - LaneDeviance(side.p, sum * at.y[w]) -
                               LaneDeviance(side.q, sum * at.rest[w]) - logY - at.logRest[w];
        }
    }
}

// The exponential of a tail. Where it underflows the tail is 0, unless the series, whose first ratio is ratio times the
// odds above / below, may rise: such a tail is left over.
template <class D>
ZUL_INLINE void TakePower(const Flight<D>& logarithm, double ratio, const Flight<D>& above,
                          const Flight<D>& below, BetaFlight<D>& at) {
    Flight<MarksOf<D>> under;
    for (int w = 0; w < kInFlight; ++w) {
        under[w] = (MarksOf<D>)(logarithm[w] < kLogUnderflow);
        at.left[w] |= (MarksOf<D>)(logarithm[w] > elementary::kExpReach);
        at.power[w] = elementary::CoreExp(Select(under[w] | at.left[w], D{}, logarithm[w]));
        at.gone[w] = MarksOf<D>{};
    }
    if (!AnyLane<D>(under)) return;
    for (int w = 0; w < kInFlight; ++w) {
        const D first = ratio > 0 ? ratio * above[w] / below[w] : D{};
        const D room = 1.0 - first;
        const MarksOf<D> bounded = (MarksOf<D>)(first < 1.0);
        const D bound = logarithm[w] - elementary::CoreLog(Select(bounded, room, elementary::Splat<D>(1)));
        at.gone[w] = under[w] & bounded & (MarksOf<D>)(bound < kLogUnderflow);
        at.left[w] |= under[w] & ~at.gone[w];
    }
}

// As CountTerms in incomplete_beta.cpp.
template <bool kInFull, class D>
ZUL_INLINE void CountLaneTerms(LaneRatios& ratios, BetaFlight<D>& at) {
    Flight<D> t;
    Flight<MarksOf<D>> live;
    for (int w = 0; w < kInFlight; ++w) {
        t[w] = elementary::Splat<D>(1);
        live[w] = ~(at.left[w] | at.gone[w]);
        at.alternating[w] = MarksOf<D>{};
        at.count[w] = D{};
        if constexpr (kInFull) at.beforeLast[w] = D{};
    }
    int n = 0;
    while (n < LaneRatios::kMost && AnyLane<D>(live)) {
        n += 1;
        const double quotient = ratios.At(n);
        for (int w = 0; w < kInFlight; ++w) {
            const D ratio = quotient * at.odds[w];
            if constexpr (kInFull) at.beforeLast[w] = Select(live[w], t[w], at.beforeLast[w]);
            t[w] = Select(live[w], t[w] * ratio, t[w]);
            at.count[w] = Select(live[w], elementary::Splat<D>(n), at.count[w]);
            const D size = elementary::Absolute(t[w]);
            const MarksOf<D> goOn = (MarksOf<D>)(size >= kSeriesTolerance) &
                                    (MarksOf<D>)(ratio >= kFallingRatio) & (MarksOf<D>)(t[w] < kTermRise);
            live[w] &= goOn;
        }
    }
    for (int w = 0; w < kInFlight; ++w) {
        if constexpr (kInFull) at.last[w] = t[w];
        at.left[w] |= live[w] | (MarksOf<D>)(t[w] >= kTermRise);
        at.alternating[w] =
            (MarksOf<D>)(elementary::Absolute(t[w]) >= kSeriesTolerance) & ~(at.left[w] | at.gone[w]);
    }
    at.most = n;
}

// As SumTerms.
template <class D>
ZUL_INLINE void SumLaneTerms(const LaneRatios& ratios, BetaFlight<D>& at) {
    for (int n = at.most; n >= 1; --n) {
        const double quotient = ratios.ratios[n];
        for (int w = 0; w < kInFlight; ++w) {
            const D next = quotient * at.odds[w] * at.value[w] + 1.0;
            at.value[w] = Select((MarksOf<D>)(at.count[w] >= n), next, at.value[w]);
        }
    }
}

// As PositiveSeries, for the alternating points: value is the factor.
template <class D>
ZUL_INLINE void SumPositiveSeries(const BetaSidePlan& side, BetaFlight<D>& at) {
    constexpr int kMost = 96;
    const double sum = side.p + side.q;
    D quotients[kMost + 1][kInFlight];
    Flight<D> t;
    Flight<D> count;
    Flight<MarksOf<D>> live;
    for (int w = 0; w < kInFlight; ++w) {
        t[w] = elementary::Splat<D>(1);
        count[w] = D{};
        live[w] = at.alternating[w];
    }
    int m = 0;
    while (m < kMost && AnyLane<D>(live)) {
        m += 1;
        for (int w = 0; w < kInFlight; ++w) {
            quotients[m][w] = (sum + m - 1) * at.y[w] / (m + side.p);
            t[w] = Select(live[w], t[w] * quotients[m][w], t[w]);
            count[w] = Select(live[w], elementary::Splat<D>(m), count[w]);
            live[w] &= (MarksOf<D>)(t[w] >= kSeriesTolerance) & (MarksOf<D>)(t[w] < kTermRise);
        }
    }
    Flight<D> f;
    for (int w = 0; w < kInFlight; ++w) {
        at.left[w] |= live[w] | (MarksOf<D>)(t[w] >= kTermRise);
        f[w] = 1.0 / at.rest[w];
    }
    for (int k = m; k >= 1; --k) {
        for (int w = 0; w < kInFlight; ++w)
            f[w] = Select((MarksOf<D>)(count[w] >= k), quotients[k][w] * f[w] + 1.0, f[w]);
    }
    for (int w = 0; w < kInFlight; ++w)
        at.value[w] = Select(at.alternating[w], f[w] * at.rest[w] * at.y[w] / side.p, at.value[w]);
}

// As BetaLowerSide.
template <bool kInFull, class D>
ZUL_INLINE void EvaluateLower(const BetaPlan& plan, const BetaSidePlan& side, LaneRatios& ratios,
                              BetaFlight<D>& at) {
    TakeLogDensity(plan, side, at);
    for (int w = 0; w < kInFlight; ++w)
        at.odds[w] = at.y[w] / at.rest[w];
    TakePower(at.logDensity, side.q > 1 ? (side.q - 1) / (side.p + 1) : 0, at.y, at.rest, at);
    CountLaneTerms<kInFull>(ratios, at);
    for (int w = 0; w < kInFlight; ++w)
        at.value[w] = Select((MarksOf<D>)(side.q - 1 >= at.count[w]), elementary::Splat<D>(1), at.rest[w]);
    SumLaneTerms(ratios, at);
    for (int w = 0; w < kInFlight; ++w)
        at.value[w] = at.value[w] * at.y[w] / side.p;
    if (AnyLane<D>(at.alternating)) SumPositiveSeries(side, at);
    for (int w = 0; w < kInFlight; ++w) {
        at.value[w] = at.value[w] * at.power[w];
        at.left[w] |= (MarksOf<D>)(at.value[w] <= kSurelyNormal) & ~at.gone[w];
        at.value[w] = Select(at.gone[w], D{}, at.value[w]);
    }
}

// As GaussFraction, for the alternating points: value is where the series begins.
template <class D>
ZUL_INLINE void TakeGaussFraction(double b, double q, BetaFlight<D>& at) {
    Flight<D> c;
    Flight<D> d;
    Flight<D> f;
    Flight<MarksOf<D>> live;
    for (int w = 0; w < kInFlight; ++w) {
        c[w] = elementary::Splat<D>(1);
        d[w] = D{};
        f[w] = elementary::Splat<D>(1);
        live[w] = at.alternating[w];
    }
    const auto advance = [&](double coefficient) {
        for (int w = 0; w < kInFlight; ++w) {
            const D e = coefficient * at.odds[w];
            c[w] = Select(live[w], 1.0 + e / c[w], c[w]);
            d[w] = Select(live[w], 1.0 / (1.0 + e * d[w]), d[w]);
            f[w] = Select(live[w], f[w] * (c[w] * d[w]), f[w]);
        }
    };
    advance((1 - b) / (q + 1));
    for (double m = 1; m <= kFractionStepLimit && AnyLane<D>(live); ++m) {
        const double middle = q + 2 * m;
        advance(m * (q + b + m - 1) / ((middle - 1) * middle));
        advance((1 - b + m) * (q + m) / (middle * (middle + 1)));
        for (int w = 0; w < kInFlight; ++w)
            live[w] &= (MarksOf<D>)(elementary::Absolute(c[w] * d[w] - 1.0) >= kFractionTolerance);
    }
    for (int w = 0; w < kInFlight; ++w) {
        at.left[w] |= live[w];
        at.value[w] = Select(at.alternating[w], 1.0 / f[w], at.value[w]);
    }
}

// For the alternating points: the fraction and as many terms as the whole part of the shape.
template <class D>
ZUL_INLINE void BeginWithFraction(const BetaSidePlan& side, LaneRatios& ratios, BetaFlight<D>& at) {
    const int whole = static_cast<int>(side.p);
    if (whole > LaneRatios::kMost) {
        for (int w = 0; w < kInFlight; ++w)
            at.left[w] |= at.alternating[w];
        return;
    }
    TakeGaussFraction(side.p - whole, whole + side.q, at);
    for (int w = 0; w < kInFlight; ++w)
        at.count[w] = Select(at.alternating[w], elementary::Splat<D>(whole), at.count[w]);
    for (int n = at.most + 1; n <= whole; ++n)
        ratios.At(n);
    if (at.most < whole) at.most = whole;
}

// As BetaUpperSide. The ratios are those of the other orientation.
template <bool kInFull, class D>
ZUL_INLINE void EvaluateUpper(const BetaPlan& plan, const BetaSidePlan& side, LaneRatios& ratios,
                              BetaFlight<D>& at) {
    TakeLogDensity(plan, side, at);
    Flight<D> logPower;
    for (int w = 0; w < kInFlight; ++w) {
        at.odds[w] = at.rest[w] / at.y[w];
        logPower[w] = at.logRest[w] + at.logDensity[w] - side.logQ;
    }
    TakePower(logPower, side.p > 1 ? (side.p - 1) / (side.q + 1) : 0, at.rest, at.y, at);
    CountLaneTerms<kInFull>(ratios, at);
    for (int w = 0; w < kInFlight; ++w)
        at.value[w] = Select((MarksOf<D>)(side.p - 1 >= at.count[w]), elementary::Splat<D>(1), at.y[w]);
    if (AnyLane<D>(at.alternating)) BeginWithFraction(side, ratios, at);
    SumLaneTerms(ratios, at);
    for (int w = 0; w < kInFlight; ++w)
        at.value[w] = Select(at.gone[w], D{}, at.power[w] * at.value[w]);
}

// As BetaSmallUpperSide, for a gamma function that is not huge.
template <class D>
ZUL_INLINE void EvaluateSmallShape(const BetaSidePlan& side, BetaFlight<D>& at) {
    Flight<D> powerLess1;
    Flight<D> term;
    Flight<D> sum;
    Flight<MarksOf<D>> live;
    for (int w = 0; w < kInFlight; ++w) {
        powerLess1[w] = elementary::CoreExpm1(side.p * elementary::CoreLog(at.y[w] * side.q));
        term[w] = elementary::Splat<D>(1);
        sum[w] = D{};
        live[w] = ~MarksOf<D>{};
    }
    for (int n = 1; n <= kSmallShapeTermCap && AnyLane<D>(live); ++n) {
        const double quotient = (n - side.q) / n;
        for (int w = 0; w < kInFlight; ++w) {
            term[w] = term[w] * (quotient * at.y[w]);
            sum[w] = Select(live[w], sum[w] + term[w] / (n + side.p), sum[w]);
            live[w] &= (MarksOf<D>)(elementary::Absolute(term[w]) > kSmallShapeTolerance);
        }
    }
    for (int w = 0; w < kInFlight; ++w) {
        const D integral =
            (side.smallShapeConstant - powerLess1[w]) / side.p - (powerLess1[w] + 1.0) * sum[w];
        at.value[w] = integral / side.gammaP / side.gammaRatioFactor;
    }
}

// The density in place of the power, which is that already on the lower side.
template <class D>
ZUL_INLINE void TakeDensity(BetaFlight<D>& at) {
    for (int w = 0; w < kInFlight; ++w) {
        at.gone[w] = (MarksOf<D>)(at.logDensity[w] < kLogUnderflow);
        at.left[w] |= (MarksOf<D>)(at.logDensity[w] > elementary::kExpReach);
        at.power[w] = elementary::CoreExp(Select(at.gone[w] | at.left[w], D{}, at.logDensity[w]));
    }
}

// The count of terms where another point, whose odds differ by at most a relative 0.005 divided by the count, surely has
// the same terms of the same series; kOtherTerms elsewhere. The terms before the last are not below the one beside it,
// nor are their ratios.
inline constexpr double kOtherTerms = 1e30;

template <class D>
ZUL_INLINE void TakeRepeatedTerms(const LaneRatios& ratios, BetaFlight<D>& at) {
    constexpr double kSurelyConverged = 0.99 * kSeriesTolerance;
    constexpr double kSurelyNot = 1.01 * kSeriesTolerance;
    constexpr double kSurelyFalling = 0.98 * kFallingRatio;
    for (int w = 0; w < kInFlight; ++w) {
        const D lastRatio = (ratios.q - at.count[w]) / (at.count[w] + ratios.p) * at.odds[w];
        const auto repeated = (elementary::Absolute(at.last[w]) < kSurelyConverged) &
                              (elementary::Absolute(at.beforeLast[w]) >= kSurelyNot) &
                              (lastRatio > kSurelyFalling);
        at.count[w] = Select(repeated, at.count[w], elementary::Splat<D>(kOtherTerms));
    }
}

}  // namespace
}  // namespace zul::numerics
