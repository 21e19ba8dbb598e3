// FineGammaTails of a group of arguments, with its operations.
#pragma once

#include <cstddef>

#include "elementary/core/division.h"
#include "elementary/core/error_function.h"
#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"
#include "elementary/core/power.h"
#include "elementary/core/root.h"
#include "numerics/gamma/gamma_tails.h"
#include "numerics/gamma/lanes/branches.h"
#include "numerics/gamma/lanes/group.h"
#include "numerics/gamma/lanes/pair_constants.h"

namespace zul::numerics::gamma_lanes {
namespace {

// The arguments of a group with their tails, and who is left out.
template <class D>
struct FineGroup {
    D x[kVectors];
    D power[kVectors];
    D lower[kVectors];
    D upper[kVectors];
    MaskOf<D> bad[kVectors];
};

// 1 / (a + n) and 1 / n for n = 1, 2, ...
inline constexpr int kFineTerms = 160;
struct FineReciprocals {
    double ofShape[kFineTerms + 1];
    double ofNumber[kFineTerms + 1];
};

ZUL_INLINE void SetReciprocals(double a, FineReciprocals* reciprocals) {
    for (int n = 1; n <= kFineTerms; ++n) {
        reciprocals->ofShape[n] = 1 / (a + n);
        reciprocals->ofNumber[n] = 1.0 / n;
    }
}

template <class D>
ZUL_INLINE D AtMostOne(D tail) {
    return Select(tail > 1.0, Splat<D>(1), tail);
}

template <class D>
ZUL_INLINE bool AnyLive(const MaskOf<D>* live) {
    MaskOf<D> any{};
    EachVector(ZUL_VECTOR { any |= live[w]; });
    return AnyOf<D>(any);
}

// The deviance of a count a from the mean x.
template <class D>
ZUL_INLINE D DevianceOf(const FineReciprocals& reciprocals, double a, D x, MaskOf<D>* bad) {
    constexpr double kClose = 0.1;
    constexpr int kTermLimit = 12;
    const D difference = a - x;
    const MaskOf<D> close = Absolute(difference) < kClose * (a + x);
    const D far = a * elementary::CoreLog(a / x) + x - a;
    if (!AnyOf<D>(close)) return far;
    const D v = Select(close, difference, D{}) / (a + x);
    D sum = difference * v;
    D power = 2.0 * a * v;
    MaskOf<D> live = close;
    for (int j = 1; j <= kTermLimit && AnyOf<D>(live); ++j) {
        power *= v * v;
        const D next = sum + Quotient(power, Splat<D>(2 * j + 1), Splat<D>(reciprocals.ofNumber[2 * j + 1]));
        live &= next != sum;
        sum = Select(live, next, sum);
    }
    *bad |= live;
    return Select(close, sum, far);
}

// x^a exp(-x) / gamma(a + 1), and for shapes from kStirlingShape on the deviance.
template <class D>
ZUL_INLINE void SetPowers(const GammaSearchConstants& g, const FineReciprocals& reciprocals,
                          FineGroup<D>* group, D* deviance) {
    constexpr double kLargestDeviance = 600;
    constexpr double kLeastPower = 1e-280;
    EachVector(ZUL_VECTOR {
        const D x = group->x[w];
        group->bad[w] = MaskOf<D>{};
        if (g.a < kStirlingShape) {
            const D half = elementary::CoreExp(-x / 2.0);
            group->power[w] = PowerOf(x, g.a) * g.inverseScale * half * half;
            deviance[w] = D{};
        } else {
            const D d = DevianceOf(reciprocals, g.a, x, &group->bad[w]);
            const MaskOf<D> large = d > kLargestDeviance;
            group->bad[w] |= large;
            deviance[w] = Select(large, D{}, d);
            group->power[w] = elementary::CoreExp(-deviance[w]) * g.inverseScale;
        }
        group->bad[w] |= group->power[w] < kLeastPower;
    });
}

template <class D>
ZUL_INLINE void FineLowerTails(const GammaSearchConstants& g, const FineReciprocals& reciprocals,
                               FineGroup<D>* group) {
    D deviance[kVectors];
    D term[kVectors];
    D sum[kVectors];
    MaskOf<D> live[kVectors];
    SetPowers(g, reciprocals, group, deviance);
    EachVector(ZUL_VECTOR {
        term[w] = sum[w] = Splat<D>(1);
        live[w] = ~group->bad[w];
    });
    for (int n = 0; n < kFineTerms && AnyLive<D>(live);) {
        for (const int end = n + kTermsAtATime; n < end;) {
            const D d = Splat<D>(g.a + ++n);
            const D r = Splat<D>(reciprocals.ofShape[n]);
            EachVector(ZUL_VECTOR {
                term[w] = Select(live[w], term[w] * Quotient(group->x[w], d, r), D{});
                sum[w] += term[w];
                live[w] &= term[w] >= kFinePrecision * sum[w];
            });
        }
    }
    EachVector(ZUL_VECTOR {
        group->bad[w] |= live[w];
        group->lower[w] = AtMostOne(group->power[w] * sum[w]);
        group->upper[w] = 1.0 - group->lower[w];
    });
}

// The convergents of Legendre's continued fraction.
template <class D>
struct FineFraction {
    D p0;
    D q0;
    D p1;
    D q1;

    // To the next one; *ratio of those that end there.
    ZUL_INLINE void Advance(double a, D x, int n, MaskOf<D>* live, D* ratio) {
        constexpr double kLarge = 1e60;
        constexpr double kScale = 1e-60;
        const double numerator = n * (a - n);
        const D denominator = x + static_cast<double>(2 * n + 1) - a;
        const D p2 = denominator * p1 + numerator * p0;
        const D q2 = denominator * q1 + numerator * q0;
        const D product = p2 * q1;
        const MaskOf<D> ends = *live & (Absolute(product - p1 * q2) <= kFinePrecision * Absolute(product));
        if (AnyOf<D>(ends)) {
            *ratio = Select(ends, p2 / q2, *ratio);
            *live &= ~ends;
        }
        p0 = p1;
        q0 = q1;
        p1 = p2;
        q1 = q2;
        const MaskOf<D> large = q2 > kLarge;
        if (!AnyOf<D>(large)) return;
        const D scale = Select(large, Splat<D>(kScale), Splat<D>(1));
        p0 *= scale;
        q0 *= scale;
        p1 *= scale;
        q1 *= scale;
    }
};

template <class D>
ZUL_INLINE void FineUpperTails(const GammaSearchConstants& g, const FineReciprocals& reciprocals,
                               FineGroup<D>* group) {
    constexpr int kTermLimit = 600;
    D deviance[kVectors];
    D ratio[kVectors];
    MaskOf<D> live[kVectors];
    FineFraction<D> fraction[kVectors];
    SetPowers(g, reciprocals, group, deviance);
    EachVector(ZUL_VECTOR {
        fraction[w] = {D{}, Splat<D>(1), Splat<D>(1), group->x[w] + 1.0 - g.a};
        ratio[w] = Splat<D>(1);
        live[w] = ~group->bad[w];
    });
    for (int n = 1; n < kTermLimit && AnyLive<D>(live); ++n)
        EachVector(ZUL_VECTOR { fraction[w].Advance(g.a, group->x[w], n, &live[w], &ratio[w]); });
    EachVector(ZUL_VECTOR {
        group->bad[w] |= live[w];
        group->upper[w] = AtMostOne(g.a * group->power[w] * ratio[w]);
        group->lower[w] = 1.0 - group->upper[w];
    });
}

// For shapes below 1.
template <class D>
ZUL_INLINE void FineSmallTails(const GammaSearchConstants& g, const FineReciprocals& reciprocals,
                               FineGroup<D>* group) {
    D ratio[kVectors];
    D power[kVectors];
    D sum[kVectors];
    MaskOf<D> live[kVectors];
    EachVector(ZUL_VECTOR {
        const D x = group->x[w];
        ratio[w] = PowerOf(x, g.a) * g.inverseScale;
        group->power[w] = ratio[w] * elementary::CoreExp(-x);
        power[w] = Splat<D>(1);
        sum[w] = D{};
        group->bad[w] = MaskOf<D>{};
        live[w] = x == x;
    });
    for (int n = 1; n <= kFineTerms && AnyLive<D>(live); ++n) {
        EachVector(ZUL_VECTOR {
            power[w] *= Quotient(-group->x[w], Splat<D>(n), Splat<D>(reciprocals.ofNumber[n]));
            const D term =
                Select(live[w], Quotient(power[w], Splat<D>(g.a + n), Splat<D>(reciprocals.ofShape[n])), D{});
            sum[w] -= term;
            live[w] &= Absolute(term) >= kFinePrecision * sum[w];
        });
    }
    EachVector(ZUL_VECTOR {
        group->bad[w] |= live[w];
        const D lower = ratio[w] * (1.0 - g.a * sum[w]);
        const D powerMinusOne = elementary::CoreExpm1(g.a * elementary::CoreLog(group->x[w]));
        const D upper = g.a * (ratio[w] * sum[w] - g.slope * (1.0 + powerMinusOne)) - powerMinusOne;
        const MaskOf<D> isLower = lower < 0.5;
        const D tail = AtMostOne(Select(isLower, lower, upper));
        group->lower[w] = Select(isLower, tail, 1.0 - tail);
        group->upper[w] = Select(isLower, 1.0 - tail, tail);
    });
}

// For arguments near a shape of kFineUniformShape or more.
template <class D>
ZUL_INLINE void FineUniformTails(const GammaSearchConstants& g, const FineReciprocals& reciprocals,
                                 FineGroup<D>* group) {
    D deviance[kVectors];
    SetPowers(g, reciprocals, group, deviance);
    const D shape = Splat<D>(g.a);
    const D inverse = Splat<D>(1 / g.a);
    EachVector(ZUL_VECTOR {
        const D y = elementary::Sqrt(deviance[w]);
        const D size = y * g.rootOfTwoByShape;
        const MaskOf<D> above = group->x[w] > g.a;
        const D eta = Select(group->x[w] < g.a, -size, size);
        D total = D{};
        for (std::size_t k = g.lastUniformTerm;; --k) {
            const std::size_t begin = k == 0 ? 0 : kUniformEndsOf[k - 1];
            D c = D{};
            for (std::size_t i = kUniformEndsOf[k]; i > begin; --i)
                c = c * eta + kUniformCoefficients[i - 1];
            total = Quotient(total, shape, inverse) + c;
            if (k == 0) break;
        }
        const D correction = elementary::CoreExp(-deviance[w]) / g.normalScale * total;
        const D half = elementary::CoreErfc(y) / 2.0;
        const D tail = AtMostOne(Select(above, half + correction, half - correction));
        group->upper[w] = Select(above, tail, 1.0 - tail);
        group->lower[w] = Select(above, 1.0 - tail, tail);
    });
}

}  // namespace
}  // namespace zul::numerics::gamma_lanes
