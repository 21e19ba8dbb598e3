#include "numerics/gamma/gamma.h"

#include <algorithm>
#include <limits>
#include <numbers>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "elementary/root.h"
#include "numerics/limits.h"

namespace zul::numerics {
namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr double kLogTwoPi = 1.8378770664093453;

// Where the seven terms of the series reach full precision.
constexpr double kStirlingStart = 10;
// Below it 1 / a, the pole of both functions, would overflow.
constexpr double kReciprocalLimit = 1 / DBL_MAX;
// Above it log(y) * y overflows.
constexpr double kLogGammaLimit = 2.5e305;

// gamma(a) = factor * gamma(argument), with the argument where the series holds.
struct Raised {
    double argument;
    double factor;
};

Raised RaiseArgument(double a) {
    Raised raised{a, 1};
    while (raised.argument < kStirlingStart) {
        raised.factor *= 1 / raised.argument;
        raised.argument += 1;
    }
    return raised;
}

}  // namespace

double StirlingCorrection(double y) {
    // From here the first term has all bits; the square would overflow far beyond it.
    constexpr double kFirstTermAlone = 1e8;
    if (y > kFirstTermAlone) return 0.08333333333333333 / y;
    const double s = 1 / (y * y);
    return ((((((0.006410256410256411 * s - 0.0019175269175269174) * s + 0.0008417508417508418) * s -
               0.0005952380952380952) *
                  s +
              0.0007936507936507937) *
                 s -
             0.002777777777777778) *
                s +
            0.08333333333333333) /
           y;
}

double GammaFn(double a) {
    constexpr double kPoleRange = 2.220446049250313e-16;  // below it gamma(a) rounds to 1 / a
    constexpr double kSurelyTooLarge = 200;

    if (a <= 0) return DomainError(0);
    if (a <= kReciprocalLimit || a > kSurelyTooLarge) return RangeError(DBL_MAX);
    if (a < kPoleRange) return 1 / a;
    const auto [y, factor] = RaiseArgument(a);
    const double correction = StirlingCorrection(y);
    const double logOfResult = elementary::Log(factor) + (elementary::Log(y) - 1) * y +
                               (kLogTwoPi - elementary::Log(y)) / 2 + correction;
    if (logOfResult > kLogOverflow) return RangeError(DBL_MAX);
    return elementary::Pow(y / std::numbers::e, y) * elementary::Sqrt(kTwoPi / y) *
           elementary::Exp(correction) * factor;
}

double LogGammaFn(double a) {
    if (a <= 0) return DomainError(-DBL_MAX);
    if (a <= kReciprocalLimit) return -elementary::Log(a);
    if (a > kLogGammaLimit) return RangeError(DBL_MAX);
    const auto [y, factor] = RaiseArgument(a);
    return (y - 0.5) * elementary::Log(y) + elementary::Log(factor) - y + kLogTwoPi / 2 +
           StirlingCorrection(y);
}

double StirlingTerm(double a) {
    constexpr double kSmallShape = 1e-5;  // up to here two terms of the expansion at 0 are exact
    constexpr double kMediumShape = 9;    // from here Stirling's series itself

    if (a < 0) return DomainError(DBL_MAX);
    if (a == 0) return 0;
    if (a <= kSmallShape) return a * 0.8224670334241132 * a + (0.42278433509846713 - elementary::Log(a)) * a;
    if (a <= kMediumShape)
        return LogGammaFn(a + 1) - elementary::Log(elementary::Pow(a / std::numbers::e, a));
    // Only beyond the first bound would the product overflow.
    const double logRoot = a < kLogGammaLimit ? elementary::Log(elementary::Sqrt(kTwoPi * a))
                                              : (kLogTwoPi + elementary::Log(a)) / 2;
    return logRoot + StirlingCorrection(a);
}

double LogBinomialCoefficient(double p, double q) {
    if (q > p) return -std::numeric_limits<double>::infinity();
    q = std::min(q, p - q);
    if (q == 0) return 0;
    return LogGammaFn(p + 1) - LogGammaFn(q + 1) - LogGammaFn(p - q + 1);
}

}  // namespace zul::numerics
