// The search for a quantile of the beta distribution, over a value: a double or lanes of them. Where it starts, the point
// that belongs to a logit, how far that is from the target, the step. Sources: see beta_quantiles.h.
//
// Shapes are an orientation of the shapes p and q, with P(), Q(), LogP(), LogQ(), LogFirstDivisor() and Mirrored(). In
// lanes they are ordinary ones, the target is from kSmallTarget to 1/2.
//
// All is in an unnamed namespace: see elementary/core/value.h.
#pragma once

#include "elementary/core/value.h"
#include "numerics/value_functions.h"

namespace zul::numerics {
namespace {

// Below it the pair may be an exact 0.
inline constexpr double kSmallTarget = 1e-285;
// The pair itself jumps by its tolerance here and there: what is close is good, and after some steps all that the
// tolerance asks for.
inline constexpr double kCloseToTarget = 2e-10;
inline constexpr int kPatience = 8;  // evaluations that try to be close
// Beyond it the pair counts as (0, 1).
inline constexpr double kLogitLimit = 662;
// So that no step overflows.
inline constexpr double kLeastSlope = 1e-200;

// A point of (0, 1) and its complement, both to full precision.
template <class D>
struct PointOf {
    D y;
    D rest;
};

// Where log(y / (1 - y)) is the logit.
template <class D>
ZUL_INLINE PointOf<D> AtLogit(D logit) {
    const D odds = ExpOf(-elementary::Absolute(logit));
    const D smaller = odds / (1.0 + odds);
    const D larger = 1.0 / (1.0 + odds);
    const auto below = logit < 0.0;
    return {elementary::Select(below, smaller, larger), elementary::Select(below, larger, smaller)};
}

// log(tail / target).
template <class D>
ZUL_INLINE D ExcessOf(D tail, D target, D logTarget) {
    constexpr double kNear = 0.5;  // where the logarithms would cancel
    const auto near = elementary::Absolute(tail / target - 1.0) < kNear;
    const auto difference = [&]() ZUL_INLINED {
        return Log1pOf(elementary::Select(near, (tail - target) / target, D{}));
    };
    return Either<D>(near, difference, [&]() ZUL_INLINED { return LogOf(tail) - logTarget; });
}

// The step to the zero of the excess as a function of the logit, where it has a slope: the inverse of its Taylor series
// up to the third order, or Halley's where that is far away, no further than twice Newton's.
template <class D>
ZUL_INLINE D StepOf(double p, double q, const PointOf<D>& at, D excess, D slope) {
    constexpr double kNear = 0.1;
    constexpr double kLeastDivisor = 0.5;
    const D newton = -excess / slope;
    const D curvature = p * at.rest - q * at.y - slope;  // the second derivative over the first
    const D bend = curvature * newton / 2.0;
    const auto near = Both<ConditionOf<D>>(
        Both<ConditionOf<D>>(elementary::Absolute(bend) < kNear, elementary::Absolute(excess) < kNear),
        elementary::Absolute(newton) < 1.0);
    const auto taylor = [&]() ZUL_INLINED {
        const D step = elementary::Select(near, newton, D{});
        const D bent = elementary::Select(near, bend, D{});
        // Over the first derivative, too.
        const D third = curvature * (curvature - slope) - (p + q) * at.y * at.rest;
        return step * (1.0 - bent + 2.0 * bent * bent - third * step * step / 6.0);
    };
    return Either<D>(near, taylor,
                     [&]() ZUL_INLINED { return newton / LargerOf(1.0 + bend, kLeastDivisor); });
}

// Whether the step for the size of an excess leaves so little that the pair at the next point is within kCloseToTarget
// if it sums the same count of terms there. See NeedsNoEvaluation in beta_quantiles.cpp.
template <class D>
ZUL_INLINE ConditionOf<D> LeavesNothing(double sum, D count, D size, D slope) {
    constexpr double kFarthest = 4e-3;
    constexpr double kLeft = 1e-12;
    constexpr double kLargestExcess = 1e-4;
    const D u = (sum + 1 + count) * size / slope;
    const ConditionOf<D> near = Both<ConditionOf<D>>(size <= kLargestExcess, u <= kFarthest);
    const D v = elementary::Select(near, u, D{});
    return Both<ConditionOf<D>>(near, v * v * v * size <= kLeft);
}
// The rest of the conditions.
inline constexpr double kLargestSureSum = 1e4;
inline constexpr double kLeastSureComplement = 0.2;
inline constexpr double kSteady = 1e-270;  // times the largest shape still no underflow

// The logit of y from log(y).
template <class D>
ZUL_INLINE D LogitOfLog(D logY) {
    constexpr double kVanishing = -600;  // from here on 1 - y is 1
    const auto inside = logY < 0.0;
    const auto logit = [&]() ZUL_INLINED {
        const D log = elementary::Select(inside, LargerOf(logY, kVanishing), elementary::Splat<D>(-1));
        return logY - LogOf(-Expm1Of(log));
    };
    return Either<D>(inside, logit, []() ZUL_INLINED { return D{}; });
}

// The logarithm of the shape-th root, at most 0.
template <class D>
ZUL_INLINE D LogOfRoot(D logarithm, double shape) {
    constexpr double kSurelyZero = -800;  // the exponential of it
    const auto root = [&]() ZUL_INLINED { return logarithm / shape; };
    return Either<D>(
        logarithm >= 0.0, []() ZUL_INLINED { return D{}; },
        [&]() ZUL_INLINED {
            return Either<D>(
                logarithm < kSurelyZero * shape,
                [&]() ZUL_INLINED { return elementary::Splat<D>(kSurelyZero); }, root);
        });
}

// log(y) where the first term of the series, y^p / (p B(p, q)), is the tail; 0 where it is none.
template <class D, class Shapes>
ZUL_INLINE D LogOfFirstTerm(const Shapes& shapes, D logTail) {
    return LogOfRoot(logTail + shapes.LogFirstDivisor(), shapes.P());
}

// Below its negative the lanes do not know y.
inline constexpr double kStartReach = elementary::kExpReach - 1;

// A start from the first term at the near end.
template <class D>
struct StartAtEnd {
    D logY;
    D y;
    D secondTerm;
    ConditionOf<D> good;   // the second term is small beside the first
    ConditionOf<D> exact;  // the first term is the whole tail to full precision
    double divisor;

    ZUL_INLINE D Logit() const { return LogitOfLog(logY) + secondTerm / divisor; }
};

template <class D, class Shapes>
ZUL_INLINE StartAtEnd<D> FindStartAtEnd(const Shapes& shapes, D logTail) {
    constexpr double kSmallCorrection = 0.2;
    constexpr double kFirstTermAlone = 1e-12;
    const double q = shapes.Q();
    const D logY = LogOfFirstTerm(shapes, logTail);
    const D y = ExpOf(kIsDouble<D> ? logY : LargerOf(logY, -kStartReach));
    const D secondTerm = (q - 1) * y;
    const ConditionOf<D> good =
        Both<ConditionOf<D>>(logY < 0.0, elementary::Absolute(secondTerm) <= kSmallCorrection);
    return {logY, y, secondTerm, good, y * (q > 1 ? q : 1) <= kFirstTermAlone, shapes.P() + 1};
}

// AS 109: from the normal distribution for large shapes, from chi-square otherwise.
template <class D, class Shapes>
ZUL_INLINE D StartInside(const Shapes& shapes, D target, D logTarget) {
    constexpr double kVanishing = 1e-100;  // where 1 / (9 q) to the power 1.5 may overflow
    const double p = shapes.P();
    const double q = shapes.Q();
    const D r = elementary::Sqrt(-2.0 * logTarget);
    const D z = r - (2.30753 + 0.27061 * r) / (1.0 + (0.99229 + 0.04481 * r) * r);
    if (p > 1 && q > 1) {
        const D lambda = (z * z - 3.0) / 6.0;
        const double s = 1 / (2 * p - 1);
        const double t = 1 / (2 * q - 1);
        const double h = 2 / (s + t);
        const D w =
            z * elementary::Sqrt(LargerOf(h + lambda, 0.0)) / h - (t - s) * (lambda + 5.0 / 6 - 2 / (3 * h));
        return shapes.LogP() - shapes.LogQ() - 2.0 * w;
    }
    const double variance = q > kVanishing ? 1 / (9 * q) : 0;
    const D root = q > kVanishing ? 1 - variance + z * elementary::Sqrt(variance) : D{};
    const D chiSquare = 2 * q * root * root * root;
    const auto positive = chiSquare > 0.0;
    const auto fromChiSquare = [&]() ZUL_INLINED {
        const D ratio =
            (4 * p + 2 * q - 2) / elementary::Select(positive, chiSquare, elementary::Splat<D>(1));
        return Either<D>(
            ratio <= 1.0, [&]() ZUL_INLINED { return LogitOfLog(LogOfFirstTerm(shapes, logTarget)); },
            [&]() ZUL_INLINED { return LogOf((ratio - 1.0) / 2.0); });
    };
    return Either<D>(positive, fromChiSquare, [&]() ZUL_INLINED {
        return -LogitOfLog(LogOfFirstTerm(shapes.Mirrored(), Log1pOf(-target)));
    });
}

// Whether quantiles need no search.
inline bool AreInClosedForm(double p, double q) {
    return p == 1 || q == 1 || (p == 0.5 && q == 0.5);
}

// What the logit of a quantile for a target of at most 1/2 does not exceed.
template <class Shapes>
double HighestLogit(const Shapes& shapes) {
    constexpr double kMargin = 1e-3;
    const double p = shapes.P();
    const double q = shapes.Q();
    if (!(p > 1 && q > 1)) return kLogitLimit;
    // The median lies between mean and mode.
    return LargerOf(shapes.LogP() - shapes.LogQ(), elementary::Log((p - 1) / (q - 1))) + kMargin;
}

}  // namespace
}  // namespace zul::numerics
