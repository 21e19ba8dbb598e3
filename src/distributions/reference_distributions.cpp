#include "distributions/reference_distributions.h"

#include <cfloat>
#include <climits>
#include <cmath>

#include "distributions/counts/binomial_p_value.h"
#include "distributions/normal/normal.h"
#include "distributions/p_values.h"
#include "frame/call_frame.h"
#include "frame/missing_value.h"
#include "zul/distributions.h"

namespace zul::reference {

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

double NormalQuantile(double p) {
    return std::isfinite(p) ? NormalInvCdf(p, 0, 1) : kQuietNaN;
}

double TQuantile(double p, double df) {
    return std::isfinite(p) && df > 0 && df <= DBL_MAX ? TInvCdf(p, df, 0) : kQuietNaN;
}

double ChiSqQuantile(double p, double df) {
    return std::isfinite(p) && df > 0 ? ChiSqInvCdf(p, df, 0) : kQuietNaN;
}

double FQuantile(double p, double df1, double df2) {
    return p > 0 && p < 1 && df1 > 0 && df2 > 0 ? FInvCdf(p, df1, df2, 0) : kQuietNaN;
}

double BetaQuantile(double p, double a, double b) {
    if (AnyNaN(a, b) || !IsProbability(p)) return kQuietNaN;
    if (a == 0) return 0;
    if (b == 0) return 1;
    return BetaInvCdf(p, a, b);
}

double NormalPValue(double z, Side side) {
    if (std::isnan(z)) return kQuietNaN;
    if (std::isinf(z)) return 0;
    return frame::FramedCall(&kernels::StandardNormalTail, z, side);
}

double TPValue(double t, double df, Side side) {
    if (AnyNaN(t, df)) return kQuietNaN;
    if (std::isinf(t)) return 0;
    if (std::isinf(df)) return NormalPValue(t, side);
    return df > 0 ? frame::FramedCall(&kernels::TPValue, t, df, side) : kQuietNaN;
}

double ChiSqPValue(double x, double df, Side side) {
    if (std::isnan(x) || !(df > 0)) return kQuietNaN;
    return frame::FramedCall(&kernels::ChiSqPValue, x, df, side);
}

double FPValue(double x, double df1, double df2, Side side) {
    if (!std::isfinite(x) || !(df1 > 0 && df2 > 0)) return kQuietNaN;
    return frame::FramedCall(&kernels::FPValue, x, df1, df2, side);
}

double NormalLowerTail(double z) {
    return std::isnan(z) ? kQuietNaN : NormalCdf(z, 0, 1, false);
}

double ExponentialLowerTail(double x, double scale) {
    return AnyNaN(x, scale) ? kQuietNaN : ExponentialCdf(x, scale, 0, false);
}

double WeibullLowerTail(double x, double shape, double scale) {
    return AnyNaN(x, shape, scale) ? kQuietNaN : WeibullCdf(x, shape, scale, 0, false);
}

double BinomialTail(double x, double n, double p, bool upper) {
    return IsProbability(p) ? BinomialCdf(x, n, p, upper) : kQuietNaN;
}

double BinomialPValue(double x, double n, double p0, Side side) {
    if (!IsProbability(p0) || n > INT_MAX) return kQuietNaN;
    return frame::FramedCall(&kernels::BinomialPValue, x, static_cast<int>(n), p0, side);
}

double HypergeometricTail(double x, double population, double successes, double sample, bool upper) {
    if (population > INT_MAX) return kQuietNaN;
    return HypergeometricCdf(x, static_cast<int>(population), static_cast<int>(successes),
                             static_cast<int>(sample), upper);
}

}  // namespace zul::reference
