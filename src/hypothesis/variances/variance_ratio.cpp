#include "hypothesis/variances/variance_ratio.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "distributions/reference_distributions.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "numerics/roots/root_finder.h"

namespace zul::hypothesis {

using frame::kNA;
using frame::kQuietNaN;

VarianceSample SampleWithKurtosis(double n, double variance, double kurtosis) {
    return {n, variance, kurtosis * (n - 1) * (n - 1) / n};
}

VarianceRatio::VarianceRatio(const VarianceSample& first, const VarianceSample& second)
    : first_(first),
      second_(second),
      log_(elementary::Log(first.variance) - elementary::Log(second.variance)) {}

double VarianceRatio::ErrorAt(double u) const {
    // The second sample's squares are scaled by v, the ratio over that of the samples. Divided by the larger, the sums
    // cannot overflow.
    const double v = u - log_;
    const double scale1 = v > 0 ? elementary::Exp(-v) : 1;
    const double scale2 = v > 0 ? 1 : elementary::Exp(v);
    const double fourth = scale1 * scale1 * first_.fourthPowers + scale2 * scale2 * second_.fourthPowers;
    const double squares = scale1 * (first_.n - 1) + scale2 * (second_.n - 1);
    const double kurtosis = (first_.n + second_.n) * fourth / (squares * squares);
    const auto term = [kurtosis](double n) { return (kurtosis - (n - 3) / n) / (n - 1); };
    return elementary::Sqrt(term(first_.n) + term(second_.n));
}

double VarianceRatio::LogFactor(double z) const {
    if (first_.n == second_.n) return 0;
    return elementary::Log1p(-z / second_.n) - elementary::Log1p(-z / first_.n);
}

namespace {

// The roots are for bounds and p-values of 8 digits.
void SetTolerances(numerics::CmRealFunction* f) {
    constexpr double kTolerance = 1e-14;
    f->absTolX = f->relTolX = f->absTolF = kTolerance;
}

// NaN: the search failed.
double Root(double a, double b, numerics::CmRealFunction* f) {
    int status = kSuccess;
    const double root = numerics::SolveFalsePosition(a, b, *f, &status);
    return root == kNA ? kQuietNaN : root;
}

// The logarithm of the lower bound: the root nearest to where the error would be 0.
double LogLowerBound(const VarianceRatio& ratio, double z) {
    constexpr double kStep = 1.0 / 64;
    constexpr int kEvenSteps = 64;
    constexpr int kMostSteps = 100;

    const bool sameSize = ratio.First().n == ratio.Second().n;
    if (!std::isfinite(z) || (!sameSize && z >= std::min(ratio.First().n, ratio.Second().n)))
        return kQuietNaN;
    CmScaledRatioLCLFunc h(ratio, z);
    double a = h.Start();
    if (z == 0) return a;
    double step = z > 0 ? -kStep : kStep;
    for (int i = 0; i < kMostSteps; ++i) {
        const double b = a + step;
        const double hb = h.Evaluate(b);
        if (z > 0 ? hb >= 0 : hb <= 0) return Root(a, b, &h);
        a = b;
        if (i >= kEvenSteps) step *= 2;
    }
    return kQuietNaN;
}

// The smallest root z of g, for samples of different size: the first is the larger. g falls from infinity to minus
// infinity at the size of the second.
double RootOfLargerFirst(const VarianceRatio& ratio, CmTwoSamplePValueFunction* g) {
    constexpr int kHalvings = 52;
    const double start = g->Distance() / g->Error();  // without the factor
    if (start <= 0) return Root(start, 0, g);
    const double end = ratio.Second().n;
    if (start < end) return Root(0, start, g);
    for (double gap = end / 2; gap > std::ldexp(end, -kHalvings); gap /= 2)
        if (g->Evaluate(end - gap) < 0) return Root(std::max(0.0, end - 2 * gap), end - gap, g);
    return end;
}

// The first is the smaller: g is convex and infinite at its size. Without a root no bound reaches the ratio, and the
// p-value is that of the largest quantile.
double RootOfSmallerFirst(const VarianceRatio& ratio, CmTwoSamplePValueFunction* g) {
    const double n1 = ratio.First().n;
    const double n2 = ratio.Second().n;
    const double difference = n2 - n1;
    const double least =
        (n1 + n2 - elementary::Sqrt(difference * difference + 4 * difference / g->Error())) / 2;
    if (!(g->Evaluate(least) <= 0)) return n1;
    // For negative z the factor is above n1 / n2.
    const double low = (g->Distance() - elementary::Log(n2 / n1)) / g->Error();
    return Root(std::min({low, least, 0.0}) - 1, least, g);
}

// P of a lower bound that reaches ratio0 at most.
double GreaterPValue(const VarianceRatio& ratio, double u0) {
    CmTwoSamplePValueFunction g(ratio, u0);
    const double n1 = ratio.First().n;
    const double n2 = ratio.Second().n;
    const double z = n1 == n2  ? g.Distance() / g.Error()
                     : n1 > n2 ? RootOfLargerFirst(ratio, &g)
                               : RootOfSmallerFirst(ratio, &g);
    return reference::NormalPValue(z, Side::Upper);
}

}  // namespace

CmScaledRatioLCLFunc::CmScaledRatioLCLFunc(const VarianceRatio& ratio, double z)
    : ratio_(ratio), z_(z), start_(ratio.Log() + ratio.LogFactor(z)) {
    SetTolerances(this);
}

double CmScaledRatioLCLFunc::Evaluate(double u) {
    return start_ - u - z_ * ratio_.ErrorAt(u);
}

CmTwoSamplePValueFunction::CmTwoSamplePValueFunction(const VarianceRatio& ratio, double u0)
    : ratio_(ratio), distance_(ratio.Log() - u0), error_(ratio.ErrorAt(u0)) {
    SetTolerances(this);
}

double CmTwoSamplePValueFunction::Evaluate(double z) {
    return distance_ + ratio_.LogFactor(z) - z * error_;
}

void RatioBounds(const VarianceRatio& ratio, double confidence, IntervalType type, double* lower,
                 double* upper) {
    const double z = reference::NormalQuantile(UpperLevel(confidence, type));
    SetBounds(
        type, 0, std::numeric_limits<double>::infinity(),
        [&] { return elementary::Exp(LogLowerBound(ratio, z)); },
        [&] { return elementary::Exp(-LogLowerBound(ratio.Swapped(), z)); }, lower, upper);
}

double RatioPValue(const VarianceRatio& ratio, double ratio0, Side side) {
    const double u0 = elementary::Log(ratio0);
    switch (side) {
        case Side::Lower:
            return GreaterPValue(ratio.Swapped(), -u0);
        case Side::Upper:
            return GreaterPValue(ratio, u0);
        case Side::Both: {
            const double greater = GreaterPValue(ratio, u0);
            const double less = GreaterPValue(ratio.Swapped(), -u0);
            const double p = 2 * std::min(greater, less);
            return p > 1 ? 1 : p;
        }
        case Side::Unknown:
            break;
    }
    return 0;
}

}  // namespace zul::hypothesis
