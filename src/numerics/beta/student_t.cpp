#include "numerics/beta/student_t.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <numbers>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "elementary/root.h"
#include "elementary/trigonometric.h"
#include "frame/error_state.h"
#include "numerics/beta/incomplete_beta.h"
#include "numerics/beta/t_quantile_steps.h"
#include "numerics/limits.h"
#include "numerics/normal.h"

namespace zul::numerics {

using frame::ErrorState;
using frame::RoutineName;
using frame::operator""_routine;

namespace {

// Quantiles above it are given up.
constexpr double kLargestQuantile = 1e300;

// The probability outside [-t, t], for t > 0 and many degrees of freedom.
double NormalOutside(double t, double df) {
    constexpr double kLargeDf = 1e30;  // from here on w is t to all digits
    constexpr double kLargeT = 1e10;   // from here on the tail is 0 for any df that is smaller

    double z = std::min(t, kLargeT);
    if (df < kLargeDf && t < kLargeT) {
        const double a = df - 0.5;
        const double w = elementary::Sqrt(a * elementary::Log1p(t * t / df));
        z = w + w * (w * w + 3) / (48 * a * a);
    }
    double lower = 0;
    double upper = 0;
    normal_df(z, &lower, &upper);
    if (upper == 0 && !ErrorState().Failed()) ErrorState().level = frame::LevelUnderflow;
    return 2 * upper;
}

double Outside(double t, const TShape& shape) {
    if (shape.Df() / 2 > kShapeLimit) return NormalOutside(t, shape.Df());
    const TArgument argument(t, shape.Df());
    const auto [x, complement] = argument.at;
    double inside = 0;
    double outside = 0;
    beta_df(x, complement, shape.Square(), &inside, &outside, nullptr);
    outside *= argument.outsideFactor;
    if (outside >= kTinyArgument || ErrorState().Failed()) return outside;
    ErrorState().level = frame::LevelUnderflow;
    return 0;
}

double StartByHill(double q, double df) {
    const HillConstants constants(df);
    const double power = elementary::Pow(constants.d * 2 * q, 1 / df);
    if (power < kTinyPower) return elementary::Sqrt(df) / std::max(power, DBL_MIN);
    return HillQuantile(constants, q, power);
}

// For df n < 1: the leading term of the tail, or that of the centre; both give less than the quantile.
double SmallDfQuantile(double q, const TShape& shape) {
    const double n = shape.Df();
    constexpr double kLogGammaOneHalf = 0.5723649429247001;
    const double logBeta = kLogGammaOneHalf - elementary::Log(shape.GammaRatio());
    constexpr double kLogLargest = 691;
    const double tail = -(elementary::Log(2 * q) + elementary::Log(n / 2) + logBeta);
    const double logTail = tail > kLogLargest * n ? kLogLargest : elementary::Log(n) / 2 + tail / n;
    const double logCentre = elementary::Log((1 - 2 * q) / 2) + elementary::Log(n) / 2 + logBeta;
    return elementary::Exp(std::min(std::max(logTail, logCentre), kLogLargest));
}

StepOfT<double> NextStep(double t, double q, const TShape& shape) {
    const TArgument argument(t, shape.Df());
    const UnitArgument& at = argument.at;
    const double b = shape.Df() / 2;
    const TSquare<double> square{at.x, at.complement, b, shape.GammaRatio()};
    const double slope = SlopeOf(square, at.LogComplement()) * argument.outsideFactor;
    // By the fraction that converges at once; near t = 1 to 3 that is the one of the inside, which is not
    // close to 1 yet.
    const bool outsideFraction = t > 3 || (shape.Df() < 2 && t * t > shape.Df());
    const double found = slope * (outsideFraction ? BetaFractionLimit(b, 0.5, at.Mirrored()) / (2 * b)
                                                  : BetaFractionLimit(0.5, b, at));
    return FindStepOfT(q, square, slope, found, outsideFraction);
}

double Fail(frame::ErrorLevel level) {
    ErrorState().level = level;
    return -DBL_MAX;
}

// t > 0 with the upper tail q < 0.5, or -DBL_MAX and the level.
double SolveQuantile(double q, const TShape& shape) {
    constexpr int kStepLimit = 200;

    const double start = shape.Df() < 1 ? SmallDfQuantile(q, shape) : StartByHill(q, shape.Df());
    double t = std::min(start, kLargestQuantile);
    double low = 0;
    double high = DBL_MAX;
    for (int count = 0; count < kStepLimit; ++count) {
        const StepOfT<double> step = NextStep(t, q, shape);
        if (step.known && std::abs(step.first) < kLastStep) {
            return t + t * elementary::Expm1(step.second);
        }
        if (step.second > 0 && t >= kLargestQuantile) return Fail(frame::LevelDomain);
        (step.second > 0 ? low : high) = t;
        t = std::min(t * elementary::Exp(std::clamp(step.second, -kLargeStep, kLargeStep)), kLargestQuantile);
        if (!(t > low && t < high)) t = low > 0 ? elementary::Sqrt(low) * elementary::Sqrt(high) : high / 2;
    }
    return Fail(frame::LevelNoConvergence);
}

// t >= 0 with the upper tail q <= 0.5.
double UpperHalf(double q, const TShape& shape) {
    const double df = shape.Df();
    if (q == 0.5) return 0;
    if (q < kSmallestTail) return Fail(frame::LevelDomain);
    if (df == 1)
        return q <= 0.25 ? 1 / elementary::Tan(std::numbers::pi * q)
                         : elementary::Tan(std::numbers::pi * (0.5 - q));
    if (df == 2) return (1 - 2 * q) / elementary::Sqrt(2 * q * (1 - q));
    // |T| is above 1e300 with a probability of 1 to all digits.
    constexpr double kSmallestDf = 1e-15;
    if (df < kSmallestDf) return Fail(frame::LevelDomain);
    // The normal distribution, to all digits; larger numbers would overflow on the way.
    constexpr double kLargestDf = 1e20;
    return df > kLargestDf ? SolveQuantile(q, kLargestDf) : SolveQuantile(q, shape);
}

void Quantile(double tail, bool upper, const TShape& shape, const RoutineName& name, double* t) {
    ErrorState().Begin(name);
    *t = -DBL_MAX;
    if (!(tail > 0 && tail < 1 && shape.Df() > 0)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    const bool half = tail <= 0.5;
    const double quantile = UpperHalf(half ? tail : 1 - tail, shape);
    ErrorState().routine = name;
    if (!ErrorState().Failed()) *t = half == upper ? quantile : -quantile;
}

}  // namespace

double HalfStepGammaRatio(double b) {
    constexpr double kAsymptotic = 12;  // where six terms of the logarithm's expansion reach full precision

    double factor = 1;
    double divisor = 1;
    double y = b;
    for (; y < kAsymptotic; y += 1) {
        factor *= y;
        divisor *= y + 0.5;
    }
    const double s = 1 / (y * y);
    const double series =
        (((((691.0 / 180224 * s - 31.0 / 18432) * s + 17.0 / 14336) * s - 1.0 / 640) * s + 1.0 / 192) * s -
         1.0 / 8) /
        y;
    return elementary::Sqrt(y) * elementary::Exp(series) * (factor / divisor);
}

TArgument::TArgument(double t, double df) : size(std::abs(t)) {
    constexpr double kFar = 1e140;
    constexpr double kMedium = 1e100;  // neither the squares nor the shares leave the range

    if (size > 1 / kMedium && size < kMedium && df > 1 / kMedium && df < kMedium) {
        const double square = size * size;
        at = {square / (df + square), df / (df + square)};
        if (at.complement > 1 / (kFar * kFar)) return;
    }
    const double root = elementary::Sqrt(df);
    if (size / kFar > root) {
        outsideFactor = elementary::Pow(kFar / size * root, df);
        logOutsideFactor = df * (elementary::Log(root) - elementary::Log(size / kFar));
        size = kFar * root;
    }
    const double ratio = size <= root ? size / root : root / size;
    const double share = ratio * ratio / (1 + ratio * ratio);
    at = {share, 1 / (1 + ratio * ratio)};
    if (size > root) at = at.Mirrored();
}

void t_df(double t, const TShape& shape, double* lower, double* upper) {
    ErrorState().Begin("t_df"_routine);
    if (!(shape.Df() > 0) || std::isnan(t)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    double far = 0.5;
    if (t != 0) {
        far = Outside(std::abs(t), shape) / 2;
        ErrorState().routine = "t_df"_routine;
        if (ErrorState().Failed()) return;
    }
    *upper = t > 0 ? far : 1 - far;
    *lower = t > 0 ? 1 - far : far;
}

void t_lower_qt(double p, const TShape& shape, double* t) {
    Quantile(p, false, shape, "t_lower_qt"_routine, t);
}

void t_upper_qt(double q, const TShape& shape, double* t) {
    Quantile(q, true, shape, "t_upper_qt"_routine, t);
}

}  // namespace zul::numerics
