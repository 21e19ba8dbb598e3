#include "numerics/beta/student_t.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <numbers>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "elementary/trigonometric.h"
#include "frame/error_state.h"
#include "numerics/beta/incomplete_beta.h"
#include "numerics/limits.h"
#include "numerics/normal.h"

namespace zul::numerics {

using frame::ErrorState;
using frame::RoutineName;
using frame::operator""_routine;

namespace {

// Quantiles above it are given up.
constexpr double kLargestQuantile = 1e300;
// Below it the tails come close to their underflow.
constexpr double kSmallestTail = 1e-280;
// The most that a step moves log(t).
constexpr double kLargeStep = 5;

// The probability outside [-t, t], for t > 0 and many degrees of freedom.
double NormalOutside(double t, double df) {
    constexpr double kLargeDf = 1e30;  // from here on w is t to all digits
    constexpr double kLargeT = 1e10;   // from here on the tail is 0 for any df that is smaller

    double z = std::min(t, kLargeT);
    if (df < kLargeDf && t < kLargeT) {
        const double a = df - 0.5;
        const double w = std::sqrt(a * elementary::Log1p(t * t / df));
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

// The normal deviate with the upper tail q <= 0.5 to seven digits.
double UpperDeviate(double q) {
    const double centre = 0.5 - q;
    if (centre <= 0.425) {
        const double r = 0.180625 - centre * centre;
        return centre * (((59.109374720 * r + 159.29113202) * r + 50.434271938) * r + 3.3871327179) /
               (((67.187563600 * r + 78.757757664) * r + 17.895169469) * r + 1);
    }
    double r = std::sqrt(-elementary::Log(q));
    if (r <= 5) {
        r -= 1.6;
        return (((0.17023821103 * r + 1.3067284816) * r + 2.7568153900) * r + 1.4234372777) /
               ((0.12021132975 * r + 0.73700164250) * r + 1);
    }
    r -= 5;
    return (((0.017337203997 * r + 0.42868294337) * r + 3.0812263860) * r + 6.6579051150) /
           ((0.012258202635 * r + 0.24197894225) * r + 1);
}

// Hill's quantile with the upper tail q <= 0.5, for df n >= 1, in his letters.
double HillQuantile(double q, double n) {
    constexpr double kTinyPower = 1e-100;

    const double a = 1 / (n - 0.5);
    const double b = 48 / (a * a);
    double c = ((20700 * a / b - 98) * a - 16) * a + 96.36;
    const double d = ((94.5 / (b + c) - 3) / b + 1) * std::sqrt(a * std::numbers::pi / 2) * n;
    const double power = elementary::Pow(d * 2 * q, 1 / n);
    if (power < kTinyPower) return std::sqrt(n) / std::max(power, DBL_MIN);
    double y = power * power;
    if (y > 0.05 + a) {
        const double x = -UpperDeviate(q);
        y = x * x;
        if (n < 5) c += 0.3 * (n - 4.5) * (x + 0.6);
        c = (((0.05 * d * x - 5) * x - 7) * x - 2) * x + b + c;
        y = (((((0.4 * y + 6.3) * y + 36) * y + 94.5) / c - y - 3) / b + 1) * x;
        y = elementary::Expm1(a * y * y);
    } else {
        y = ((1 / (((n + 6) / (n * y) - 0.089 * d - 0.822) * (n + 2) * 3) + 0.5 / (n + 4)) * y - 1) *
                (n + 1) / (n + 2) +
            1 / y;
    }
    return std::sqrt(n * y);
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

// The step of log(t) to the quantile with the upper tail q: Newton's for the logarithm of the smaller of the
// probabilities of [-t, t] and of the rest, which is nearly linear in log(t) both in the centre and far out;
// and with the curvature. False: the probability is 0, and the step only a direction.
struct Step {
    double first;
    double second;
};

bool NextStep(double t, double q, const TShape& shape, Step* step) {
    constexpr double kSqrtPi = 1.772453850905516;
    constexpr double kClose = 0.1;

    const TArgument argument(t, shape.Df());
    const UnitArgument& at = argument.at;
    const double b = shape.Df() / 2;
    // t times the density of |T|: 2 sqrt(x) (1 - x)^b / B(1/2, b).
    const double slope = 2 * std::sqrt(at.x) * elementary::Exp(b * at.LogComplement()) * shape.GammaRatio() /
                         kSqrtPi * argument.outsideFactor;
    // By the fraction that converges at once; near t = 1 to 3 that is the one of the inside, which is not
    // close to 1 yet.
    const bool outsideFraction = t > 3 || (shape.Df() < 2 && t * t > shape.Df());
    const double found = slope * (outsideFraction ? BetaFractionLimit(b, 0.5, at.Mirrored()) / (2 * b)
                                                  : BetaFractionLimit(0.5, b, at));
    const bool byOutside = q <= 0.25;
    const double target = byOutside ? 2 * q : 1 - 2 * q;
    const double value = byOutside == outsideFraction ? found : 1 - found;
    if (!(value > 0)) {  // by underflow
        step->second = byOutside ? -kLargeStep : kLargeStep;
        return false;
    }
    const double logSlope = (byOutside ? -1 : 1) * slope / value;
    const double excess = (value - target) / target;
    const double logExcess =
        std::abs(excess) < kClose ? elementary::Log1p(excess) : elementary::Log(value / target);
    step->first = -logExcess / logSlope;
    const double fall = (2 * b + 1) * at.x;  // of the density, in log(t)
    const double correction = (fall + logSlope - 1) / 2 * step->first;
    step->second = step->first * (1 + std::clamp(correction, -0.5, 1.0));
    return true;
}

double Fail(frame::ErrorLevel level) {
    ErrorState().level = level;
    return -DBL_MAX;
}

// t > 0 with the upper tail q < 0.5, or -DBL_MAX and the level.
double SolveQuantile(double q, const TShape& shape) {
    constexpr double kLastStep = 5e-5;  // what it leaves is of the order of its cube
    constexpr int kStepLimit = 200;

    const double start = shape.Df() < 1 ? SmallDfQuantile(q, shape) : HillQuantile(q, shape.Df());
    double t = std::min(start, kLargestQuantile);
    double low = 0;
    double high = DBL_MAX;
    for (int count = 0; count < kStepLimit; ++count) {
        Step step{};
        if (NextStep(t, q, shape, &step) && std::abs(step.first) < kLastStep) {
            return t + t * elementary::Expm1(step.second);
        }
        if (step.second > 0 && t >= kLargestQuantile) return Fail(frame::LevelDomain);
        (step.second > 0 ? low : high) = t;
        t = std::min(t * elementary::Exp(std::clamp(step.second, -kLargeStep, kLargeStep)), kLargestQuantile);
        if (!(t > low && t < high)) t = low > 0 ? std::sqrt(low) * std::sqrt(high) : high / 2;
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
    if (df == 2) return (1 - 2 * q) / std::sqrt(2 * q * (1 - q));
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
    return std::sqrt(y) * elementary::Exp(series) * (factor / divisor);
}

TArgument::TArgument(double t, double df) : size(std::abs(t)) {
    constexpr double kFar = 1e140;
    constexpr double kMedium = 1e100;  // neither the squares nor the shares leave the range

    if (size > 1 / kMedium && size < kMedium && df > 1 / kMedium && df < kMedium) {
        const double square = size * size;
        at = {square / (df + square), df / (df + square)};
        if (at.complement > 1 / (kFar * kFar)) return;
    }
    const double root = std::sqrt(df);
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
