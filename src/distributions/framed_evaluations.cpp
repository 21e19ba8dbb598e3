#include "distributions/framed_evaluations.h"

#include <cfloat>
#include <climits>
#include <cmath>

#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul {

using frame::kQuietNaN;

namespace {

template <typename... Numbers>
bool AnyNaN(Numbers... numbers) {
    return (std::isnan(numbers) || ...);
}

bool IsProbability(double p) {
    return p >= 0 && p <= 1;
}

}  // namespace

double FramedNormalQuantile(double p) {
    return std::isfinite(p) ? NormalInvCdf(p, 0, 1) : kQuietNaN;
}

double FramedTQuantile(double p, double df) {
    return std::isfinite(p) && df > 0 && df <= DBL_MAX ? TInvCdf(p, df, 0) : kQuietNaN;
}

double FramedChiSqQuantile(double p, double df) {
    return std::isfinite(p) && df > 0 ? ChiSqInvCdf(p, df, 0) : kQuietNaN;
}

double FramedBetaQuantile(double p, double a, double b) {
    if (AnyNaN(a, b) || !IsProbability(p)) return kQuietNaN;
    if (a == 0) return 0;
    if (b == 0) return 1;
    return BetaInvCdf(p, a, b);
}

double FramedNormalTail(double z, int alternative) {
    if (std::isnan(z)) return kQuietNaN;
    if (std::isinf(z)) return 0;
    return NormalPValue(z, static_cast<EAlternative>(alternative));
}

double FramedTTail(double t, double df, int alternative) {
    if (AnyNaN(t, df)) return kQuietNaN;
    if (std::isinf(t)) return 0;
    if (std::isinf(df)) return FramedNormalTail(t, alternative);
    return df > 0 ? TPValue(t, df, static_cast<EAlternative>(alternative)) : kQuietNaN;
}

double FramedChiSqTail(double x, double df, int alternative) {
    if (std::isnan(x) || !(df > 0)) return kQuietNaN;
    return ChiSqPValue(x, df, static_cast<EAlternative>(alternative));
}

double FramedNormalLowerTail(double z) {
    return std::isnan(z) ? kQuietNaN : NormalCdf(z, 0, 1, false);
}

double FramedExponentialLowerTail(double x, double scale) {
    return AnyNaN(x, scale) ? kQuietNaN : ExponentialCdf(x, scale, 0, false);
}

double FramedWeibullLowerTail(double x, double shape, double scale) {
    return AnyNaN(x, shape, scale) ? kQuietNaN : WeibullCdf(x, shape, scale, 0, false);
}

double FramedBinomialTail(double x, double n, double p, bool upper) {
    return IsProbability(p) ? BinomialCdf(x, n, p, upper) : kQuietNaN;
}

double FramedBinomialPValue(double x, double n, double p0, int alternative) {
    if (!IsProbability(p0) || n > INT_MAX) return kQuietNaN;
    return BinomialPValue(x, static_cast<int>(n), p0, static_cast<EAlternative>(alternative));
}

double FramedHypergeometricTail(double x, double population, double successes, double sample, bool upper) {
    if (population > INT_MAX) return kQuietNaN;
    return HypergeometricCdf(x, static_cast<int>(population), static_cast<int>(successes),
                             static_cast<int>(sample), upper);
}

}  // namespace zul
