// The search for a quantile of Student's t distribution, over a value: a double or lanes of them. Where it starts and the
// step from a point. Sources: see student_t.h.
//
// In lanes q is from kSmallestTail to 1/2, both excluded, and df is not huge.
//
// All is in an unnamed namespace: see elementary/core/value.h.
#pragma once

#include <numbers>

#include "elementary/core/value.h"
#include "numerics/value_functions.h"

namespace zul::numerics {
namespace {

// Below it the tails come close to their underflow.
inline constexpr double kSmallestTail = 1e-280;
// Below it Hill's start is sqrt(df) over the power.
inline constexpr double kTinyPower = 1e-100;
// A step of log(t) below it is the last: what it leaves is of the order of its cube.
inline constexpr double kLastStep = 5e-5;
// The most that a step moves log(t).
inline constexpr double kLargeStep = 5;

// The normal deviate with the upper tail q <= 0.5 to seven digits.
template <class D>
ZUL_INLINE D UpperDeviate(D q) {
    constexpr double kCentral = 0.425;
    const D centre = 0.5 - q;
    const auto inside = [&]() ZUL_INLINED {
        const D r = 0.180625 - centre * centre;
        return centre * (((59.109374720 * r + 159.29113202) * r + 50.434271938) * r + 3.3871327179) /
               (((67.187563600 * r + 78.757757664) * r + 17.895169469) * r + 1.0);
    };
    const auto outside = [&]() ZUL_INLINED {
        const D root = elementary::Sqrt(-LogOf(q));
        const auto middle = [&]() ZUL_INLINED {
            const D r = root - 1.6;
            return (((0.17023821103 * r + 1.3067284816) * r + 2.7568153900) * r + 1.4234372777) /
                   ((0.12021132975 * r + 0.73700164250) * r + 1.0);
        };
        const auto far = [&]() ZUL_INLINED {
            const D r = root - 5.0;
            return (((0.017337203997 * r + 0.42868294337) * r + 3.0812263860) * r + 6.6579051150) /
                   ((0.012258202635 * r + 0.24197894225) * r + 1.0);
        };
        return Either<D>(root <= 5.0, middle, far);
    };
    return Either<D>(centre <= kCentral, inside, outside);
}

// Hill's quantile for df n >= 1, in his letters.
struct HillConstants {
    double n;
    double a;
    double b;
    double c;
    double d;

    explicit ZUL_INLINE HillConstants(double df) : n(df) {
        a = 1 / (n - 0.5);
        b = 48 / (a * a);
        c = ((20700 * a / b - 98) * a - 16) * a + 96.36;
        d = ((94.5 / (b + c) - 3) / b + 1) * elementary::Sqrt(a * std::numbers::pi / 2) * n;
    }
};

// With the upper tail q <= 0.5 and the power (d 2 q)^(1 / n), which is not tiny.
template <class D>
ZUL_INLINE D HillQuantile(const HillConstants& at, D q, D power) {
    const double n = at.n;
    const D start = power * power;
    const auto central = start > 0.05 + at.a;
    const auto inside = [&]() ZUL_INLINED {
        const D x = -UpperDeviate(q);
        D c = elementary::Splat<D>(at.c);
        if (n < 5) c = c + 0.3 * (n - 4.5) * (x + 0.6);
        c = (((0.05 * at.d * x - 5.0) * x - 7.0) * x - 2.0) * x + at.b + c;
        const D square = x * x;
        const D y =
            (((((0.4 * square + 6.3) * square + 36.0) * square + 94.5) / c - square - 3.0) / at.b + 1.0) * x;
        return Expm1Of(elementary::Select(central, at.a * y * y, D{}));
    };
    const auto outside = [&]() ZUL_INLINED {
        const D y = start;
        return ((1.0 / (((n + 6) / (n * y) - 0.089 * at.d - 0.822) * (n + 2) * 3.0) + 0.5 / (n + 4)) * y -
                1.0) *
                   (n + 1) / (n + 2) +
               1.0 / y;
    };
    return elementary::Sqrt(n * Either<D>(central, inside, outside));
}

// t^2 / (df + t^2) with its complement; b = df / 2, and gamma(b + 1/2) / gamma(b).
template <class D>
struct TSquare {
    D x;
    D complement;
    double b;
    double gammaRatio;
};

// t times the density of |T|: 2 sqrt(x) (1 - x)^b / B(1/2, b).
template <class D>
ZUL_INLINE D SlopeOf(const TSquare<D>& at, D logComplement) {
    constexpr double kSqrtPi = 1.772453850905516;
    return 2.0 * elementary::Sqrt(at.x) * ExpOf(at.b * logComplement) * at.gammaRatio / kSqrtPi;
}

// The step of log(t) to the quantile with the upper tail q: Newton's for the logarithm of the smaller of the
// probabilities of [-t, t] and of the rest, which is nearly linear in log(t) both in the centre and far out;
// and with the curvature. Not known: the probability is 0, and the step only a direction.
template <class D>
struct StepOfT {
    D first;
    D second;
    ConditionOf<D> known;
};

// From one of the two probabilities, the outside or the inside.
template <class D, class Condition>
ZUL_INLINE StepOfT<D> FindStepOfT(D q, const TSquare<D>& at, D slope, D found, Condition isOutside) {
    constexpr double kClose = 0.1;
    const D one = elementary::Splat<D>(1);
    const auto byOutside = q <= 0.25;
    const D sign = elementary::Select(byOutside, -one, one);
    const D target = elementary::Select(byOutside, 2.0 * q, 1.0 - 2.0 * q);
    const D value = elementary::Select(byOutside == isOutside, found, 1.0 - found);
    const ConditionOf<D> known = value > 0.0;
    if constexpr (kIsDouble<D>) {
        if (!known) return {0, kLargeStep * sign, false};
    }
    const D positive = elementary::Select(known, value, one);
    const D logSlope = sign * slope / positive;
    const D excess = (positive - target) / target;
    const auto close = elementary::Absolute(excess) < kClose;
    const D logExcess = Either<D>(
        close, [&]() ZUL_INLINED { return Log1pOf(elementary::Select(close, excess, D{})); },
        [&]() ZUL_INLINED { return LogOf(positive / target); });
    const D first = -logExcess / logSlope;
    const D fall = (2 * at.b + 1) * at.x;  // of the density, in log(t)
    const D correction = (fall + logSlope - 1.0) / 2.0 * first;
    const D bounded = Bounded(correction, -0.5, 1.0);
    return {first, first * (1.0 + bounded), known};
}

}  // namespace
}  // namespace zul::numerics
