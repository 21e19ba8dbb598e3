// The branches of the incomplete gamma pair for a group of arguments: each with the operations of "gamma_df".
#pragma once

#include "elementary/core/division.h"
#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"
#include "elementary/core/power.h"
#include "numerics/gamma/lanes/group.h"
#include "numerics/gamma/lanes/pair_constants.h"
#include "numerics/limits.h"

namespace zul::numerics {
namespace {

// 1 / (n + a), n = 1, 2, ..., as the divisions of the series need them.
struct Reciprocals {
    double of[GammaPairConstants::kTermLimit + kTermsAtATime];
};

ZUL_INLINE void SetReciprocals(const GammaPairConstants& g, Reciprocals* reciprocals) {
    for (int n = 1; n < g.seriesTerms + kTermsAtATime; ++n)
        reciprocals->of[n] = 1 / (n + g.a);
}

template <class D>
ZUL_INLINE void LowerTails(const GammaPairConstants& g, const Reciprocals& reciprocals, Group<D>* group) {
    D power[kVectors];
    D t[kVectors];
    D terms[kVectors];
    D sum[kVectors];
    EachVector(ZUL_VECTOR {
        const D logRatio = LogRatioOf(g, group->x[w]);
        group->bad[w] = MaskOf<D>{};
        power[w] = ExpUnlessUnder(logRatio + LogDensityOf(g, group->x[w], logRatio), &group->bad[w]);
        t[w] = sum[w] = Splat<D>(1);
        terms[w] = D{};
    });
    int last = 0;
    while (last < g.seriesTerms && AnyAbove(t)) {
        for (const int end = last + kTermsAtATime; last < end;) {
            const double r = reciprocals.of[++last];
            EachVector(ZUL_VECTOR { NextTerm(group->x[w] * r, &t[w], &terms[w]); });
        }
    }
    for (int k = last; k >= 1; --k) {
        const D d = Splat<D>(k + g.a);
        const D r = Splat<D>(reciprocals.of[k]);
        EachVector(ZUL_VECTOR {
            sum[w] = Select(terms[w] >= k, Quotient(group->x[w] * sum[w], d, r) + 1.0, sum[w]);
        });
    }
    EachVector(ZUL_VECTOR {
        group->bad[w] |= t[w] >= kSurelyBelow;
        group->tail[w] = power[w] * sum[w];
    });
}

// GammaContinuedFraction of two vectors where it is asked for; elsewhere the factor stays.
template <class D>
ZUL_INLINE void FractionFactors(double b, const D* arguments, const MaskOf<D>* asked, D* factor,
                                MaskOf<D>* bad) {
    constexpr int kPairLimit = 80;
    D x[2];
    D p0[2];
    D p1[2];
    D q0[2];
    D q1[2];
    D even[2];
    D odd[2];
    MaskOf<D> live[2];
    EachOfTwo(ZUL_VECTOR {
        const MaskOf<D> small = arguments[w] < 1.0;
        bad[w] |= asked[w] & small;
        live[w] = asked[w] & ~small;
        x[w] = Select(live[w], arguments[w], Splat<D>(1));
        p0[w] = D{};
        p1[w] = q0[w] = q1[w] = even[w] = odd[w] = Splat<D>(1);
    });
    for (int k = 1; k <= kPairLimit && AnyOf<D>(live[0] | live[1]); ++k) {
        EachOfTwo(ZUL_VECTOR {
            p0[w] = (k - b) * p0[w] + x[w] * p1[w];
            q0[w] = (k - b) * q0[w] + x[w] * q1[w];
            p1[w] = static_cast<double>(k) * p1[w] + p0[w];
            q1[w] = static_cast<double>(k) * q1[w] + q0[w];
            const D product = p0[w] * q1[w];
            const MaskOf<D> close =
                live[w] & (p1[w] * q0[w] - product <= kSeriesTolerance * (1 + 1e-5) * product);
            if (AnyOf<D>(close)) {
                even[w] = Select(close, p0[w] / q0[w], even[w]);
                odd[w] = Select(close, p1[w] / q1[w], odd[w]);
                live[w] &= ~close;
                x[w] = Select(close, Splat<D>(1), x[w]);  // so that the ended ones do not overflow
            }
        });
    }
    EachOfTwo(ZUL_VECTOR {
        bad[w] |= live[w] | (asked[w] & ((odd[w] - even[w]) / even[w] >= kSeriesTolerance));
        factor[w] = Select(asked[w], (even[w] + odd[w]) / 2.0, factor[w]);
    });
}

// T = (a - j) T / x + 1 down from the terms of each.
template <class D>
ZUL_INLINE void RecurUpward(const GammaPairConstants& g, int last, const D* x, const D* terms, D* factor) {
    D r[kVectors];
    EachVector(ZUL_VECTOR { r[w] = 1.0 / x[w]; });
    for (int j = last; j >= 1; --j) {
        const double f = g.a - j;
        EachVector(ZUL_VECTOR {
            factor[w] = Select(terms[w] >= j, Quotient(f * factor[w], x[w], r[w]) + 1.0, factor[w]);
        });
    }
}

template <class D>
ZUL_INLINE void UpperTails(const GammaPairConstants& g, Group<D>* group) {
    const int whole = static_cast<int>(g.whole);
    D density[kVectors];
    D t[kVectors];
    D terms[kVectors];
    D factor[kVectors];
    D r[kVectors];
    MaskOf<D> fraction[kVectors];
    EachVector(ZUL_VECTOR {
        const D x = group->x[w];
        group->bad[w] = MaskOf<D>{};
        density[w] = ExpUnlessUnder(LogDensityOf(g, x, LogRatioOf(g, x)), &group->bad[w]);
        r[w] = 1.0 / x;
        t[w] = factor[w] = Splat<D>(1);
        terms[w] = D{};
    });
    int last = 0;
    while (last < whole && AnyAbove(t)) {
        for (const int end = last + kTermsAtATime; last < end && last < whole;) {
            const double f = g.a - ++last;
            EachVector(ZUL_VECTOR { NextTerm(f * r[w], &t[w], &terms[w]); });
        }
    }
    EachVector(ZUL_VECTOR {
        fraction[w] = t[w] > kSurelyAbove;
        group->bad[w] |= (t[w] >= kSurelyBelow) & ~fraction[w];
    });
    FractionFactors(g.fraction, group->x, fraction, factor, group->bad);
    FractionFactors(g.fraction, group->x + 2, fraction + 2, factor + 2, group->bad + 2);
    RecurUpward(g, last, group->x, terms, factor);
    EachVector(ZUL_VECTOR { group->tail[w] = factor[w] * density[w]; });
}

// exp(t) - 1, as numerics::Expm1.
template <class D>
ZUL_INLINE D ExpMinusOne(D t) {
    constexpr double kSeriesRange = 0.01;
    const D power = elementary::CoreExp(t) - 1.0;
    const MaskOf<D> near = Absolute(t) <= kSeriesRange;
    if (!AnyOf<D>(near)) return power;
    D sum = Splat<D>(1);
    for (int n = 9; n >= 2; --n)
        sum = 1.0 + t / Splat<D>(n) * sum;
    return Select(near, t * sum, power);
}

template <class D>
ZUL_INLINE D PowerOf(D x, double y) {
    const elementary::TwoDoubles<D> log = elementary::LogOfPower(Bits(x), Splat<D>(y));
    return elementary::CoreExpOfTwo(log.high, log.low);
}

// UpperGammaSmall(x, b), b being the fraction of the shape.
template <class D>
ZUL_INLINE void SmallUppers(const GammaPairConstants& g, Group<D>* group) {
    const double b = g.fraction;
    D term[kVectors];
    D sum[kVectors];
    EachVector(ZUL_VECTOR {
        term[w] = PowerOf(group->x[w], b + 1) / (b + 1);
        sum[w] = term[w];
    });
    for (int n = 2; n <= GammaPairConstants::kSmallTermLimit; ++n) {
        const D d = Splat<D>(n);
        const D r = Splat<D>(1.0 / n);
        EachVector(ZUL_VECTOR {
            const MaskOf<D> live = Absolute(term[w]) > kSeriesTolerance;
            term[w] = Select(live, -Quotient(group->x[w], d, r) * g.termRatios[n] * term[w], term[w]);
            sum[w] = Select(live, sum[w] + term[w], sum[w]);
        });
    }
    EachVector(ZUL_VECTOR {
        group->bad[w] = Absolute(term[w]) > kSeriesTolerance;
        const D power = ExpMinusOne(elementary::CoreLog(group->x[w]) * b) / b;
        group->tail[w] = -power - g.gammaQuotient + sum[w];
    });
}

// The upper tails at x < 1 above the split, which UpperGammaSmall serves: for shapes below 1 and not much above.
template <class D>
ZUL_INLINE void SmallUpperTails(const GammaPairConstants& g, Group<D>* group) {
    SmallUppers(g, group);
    if (g.a < 1) {
        EachVector(ZUL_VECTOR { group->tail[w] = group->tail[w] / g.gamma; });
        return;
    }
    EachVector(ZUL_VECTOR {
        const D x = group->x[w];
        const D density = ExpUnlessUnder(LogDensityOf(g, x, LogRatioOf(g, x)), &group->bad[w]);
        const D factor = group->tail[w] * PowerOf(x, 1 - g.fraction) * elementary::CoreExp(x);
        group->tail[w] = ((g.a - 1) * factor / x + 1.0) * density;
    });
}

}  // namespace
}  // namespace zul::numerics
