#include "numerics/beta/beta_shapes.h"

#include <algorithm>
#include <numbers>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "numerics/limits.h"

namespace zul::numerics {
namespace {

// Where Stirling's series reaches full precision.
constexpr double kStirlingStart = 10;

// StirlingTerm where log(a) is known: from that of the raised argument y, with one logarithm of the product
// of a + 1 to y, in half the time.
double StirlingTermWithLog(double a, double logA) {
    constexpr double kSmallShape = 0.01;  // below it the terms cancel
    if (a < kSmallShape || a >= kStirlingStart) return StirlingTerm(a);
    double y = a + 1;
    double product = y;
    while (y < kStirlingStart) {
        y += 1;
        product *= y;
    }
    return StirlingTerm(y) + y * elementary::Log(y) - elementary::Log(product) - a * logA - (y - a);
}

// c(y + p) - c(y) for Stirling's correction c(y) = sum of B_2k / (2k (2k - 1) y^(2k - 1)), relative to p: by
// divided differences of the polynomial in 1 / y^2.
double StirlingCorrectionDifference(double y, double p) {
    constexpr double kCoefficients[] = {0.006410256410256411,   -0.0019175269175269174, 0.0008417508417508418,
                                        -0.0005952380952380952, 0.0007936507936507937,  -0.002777777777777778,
                                        0.08333333333333333};
    const double t0 = 1 / y;
    const double t1 = 1 / (y + p);
    const double difference = -p * t0 * t1;  // t1 - t0
    const double s0 = t0 * t0;
    const double s1 = t1 * t1;
    double value = 0;     // the polynomial at s0
    double quotient = 0;  // its divided difference
    for (const double coefficient : kCoefficients) {
        quotient = quotient * s1 + value;
        value = value * s0 + coefficient;
    }
    return difference * (value + quotient * (t0 + t1) * t1);
}

// delta(p, q) = log(gamma(q + p) / gamma(q)), relative to p as well, for 0 < p < 1.
double LogGammaIncrement(double p, double q) {
    double growth = 0;  // the product of (1 + p / y) over the raised arguments, less 1
    double y = q;
    for (; y < kStirlingStart; y += 1) {
        const double step = p / y;
        growth += step + growth * step;
    }
    return (y + p - 0.5) * elementary::Log1p(p / y) + p * (elementary::Log(y) - 1) +
           StirlingCorrectionDifference(y, p) - elementary::Log1p(growth);
}

}  // namespace

double BetaMedianSplit(double p, double q) {
    constexpr double kMediumShape = 0.6;  // from here on, with q >= 1, two terms of the median's expansion do
    constexpr double kLargeShape = 100;   // beyond it gamma(p + q) / gamma(q) is near enough to q^p
    constexpr double kSurelyZero = -750;  // the exponential of it

    const double sum = p + q;
    if (q >= 1 && p >= kMediumShape) return p / sum - (q - p) / (3 * sum * sum);
    const double v = LogGammaFn(p + 1) - std::numbers::ln2 +
                     (q <= kLargeShape ? LogGammaFn(q) - LogGammaFn(sum) : -p * elementary::Log(q));
    // Neither quotient is formed where it would overflow.
    if (v >= -p * std::numbers::ln2) return 0.5;
    if (v < kSurelyZero * p) return 0;
    return std::min(elementary::Exp(v / p), 0.5);
}

double BetaOrientation::GammaRatioDefect() const {
    return shapes_.sides_[index_].gammaRatioDefect.Get(
        [this] { return p_ * LogQ() - LogGammaIncrement(p_, q_); });
}

double BetaOrientation::GammaRatioFactor() const {
    return shapes_.sides_[index_].gammaRatioFactor.Get(
        [this] { return elementary::Exp(GammaRatioDefect()); });
}

double BetaOrientation::SmallShapeConstant() const {
    return shapes_.sides_[index_].smallShapeConstant.Get(
        [this] { return elementary::Expm1(GammaRatioDefect() + LogGammaIncrement(p_, 1)); });
}

double BetaOrientation::LogFirstDivisor() const {
    constexpr double kSmallShape = 0.01;         // up to here the logarithm cancels
    constexpr double kReciprocalRange = 1e-300;  // p / q may overflow below it
    return shapes_.sides_[index_].logFirstDivisor.Get([this] {
        if (p_ > kSmallShape || q_ < kReciprocalRange) return LogP() - shapes_.MinusLogBeta();
        return LogGammaIncrement(p_, 1) - LogGammaIncrement(p_, q_);
    });
}

BetaShapes::Kind BetaShapes::ClassOf(double a, double b) {
    // Shapes that are both below it leave nothing between the ends.
    constexpr double kSmallShapeLimit = 1.50978783374313e-12;
    if (!(a >= 0 && a <= kShapeLimit && b >= 0 && b <= kShapeLimit && a + b > 0)) return Kind::Outside;
    if (a == 0 || b == 0 || (a < kSmallShapeLimit && b < kSmallShapeLimit)) return Kind::Limit;
    return Kind::Ordinary;
}

double BetaShapes::DensityConstant() const {
    return densityConstant_.Get([this] {
        const double sum = A() + B();
        const double larger = std::max(A(), B());
        const double logOfSmaller = A() <= B() ? Log(0) : Log(1);
        return StirlingTermWithLog(sum, elementary::Log(sum)) -
               (StirlingTermWithLog(A(), Log(0)) + StirlingTermWithLog(B(), Log(1))) + logOfSmaller +
               elementary::Log(larger / sum);
    });
}

double BetaShapes::MinusLogBeta() const {
    return minusLogBeta_.Get([this] {
        const double sum = A() + B();
        const double smaller = std::min(A(), B());
        const double logOfSmaller = A() <= B() ? Log(0) : Log(1);
        return DensityConstant() - smaller * (logOfSmaller - elementary::Log(sum)) -
               std::max(A(), B()) * elementary::Log1p(-smaller / sum);
    });
}

}  // namespace zul::numerics
