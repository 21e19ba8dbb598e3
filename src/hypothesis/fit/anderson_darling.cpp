#include <cmath>
#include <cstddef>

#include "distributions/reference_distributions.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "zul/hypothesis.h"

namespace zul {
namespace {

using frame::kQuietNaN;

// lowerTail(x) is that of the fitted distribution.
template <typename LowerTail>
double Statistic(const double* data, unsigned n, LowerTail lowerTail) {
    double mean = 0;
    for (unsigned index = 0; index < n; ++index) {
        const double i = index + 1.0;
        const double lower = lowerTail(data[index]);
        const double term =
            (2 * i - 1) * elementary::Log(lower) + (2.0 * n + 1 - 2 * i) * elementary::Log1p(-lower);
        // Deliberate: a running mean, which stays of the size of the terms, rather than a sum.
        mean += (term - mean) / i;
    }
    return -mean - n;
}

int Answer(double pValue, int status, double* out) {
    *out = pValue;
    return status;
}

// One range of the modified statistic: the p-value is exp(q), or 1 - exp(q), of a quadratic q.
struct Range {
    double upTo;
    bool complement;
    double constant;
    double linear;
    double quadratic;
};

// The p-value from the range in which the statistic lies; beyond the last one the bound.
template <std::size_t Count>
int PValueFromRanges(double modified, const Range (&ranges)[Count], double bound, double* pValue) {
    if (std::isnan(modified)) return Answer(kQuietNaN, kSuccess, pValue);
    for (const Range& range : ranges) {
        if (!(modified <= range.upTo)) continue;
        const double q = range.constant + range.linear * modified + range.quadratic * (modified * modified);
        return Answer(range.complement ? -elementary::Expm1(q) : elementary::Exp(q), kSuccess, pValue);
    }
    return Answer(bound, kPValueAtMost, pValue);
}

int NormalTablePValue(double aSquared, double n, double* pValue) {
    constexpr Range kRanges[] = {{0.2, true, -13.436, 101.14, -223.73},
                                 {0.34, true, -8.318, 42.796, -59.938},
                                 {0.6, false, 0.9177, -4.279, -1.38},
                                 {1.159, false, 1.2937, -5.709, 0.0186}};
    return PValueFromRanges(aSquared * (1 + 0.75 / n + 2.25 / (n * n)), kRanges, 0.005, pValue);
}

int ExponentialTablePValue(double aSquared, double n, double* pValue) {
    constexpr Range kRanges[] = {{0.26, true, -12.2204, 67.459, -110.3},
                                 {0.51, true, -6.1327, 20.218, -18.663},
                                 {0.95, false, 0.9209, -3.353, 0.3},
                                 {2.534, false, 0.731, -3.009, 0.15}};
    return PValueFromRanges(aSquared * (1 + 0.6 / n), kRanges, 0.0025, pValue);
}

int WeibullTablePValue(double aSquared, double n, double* pValue) {
    constexpr int kPoints = 5;
    constexpr double kCritical[kPoints] = {0.474, 0.637, 0.757, 0.877, 1.038};
    constexpr double kPValues[kPoints] = {0.25, 0.10, 0.05, 0.025, 0.01};
    const double modified = aSquared * (1 + 0.2 / elementary::Sqrt(n));
    if (modified > kCritical[kPoints - 1]) return Answer(kPValues[kPoints - 1], kPValueAtMost, pValue);
    if (modified < kCritical[0]) return Answer(kPValues[0], kPValueAtLeast, pValue);
    for (int k = kPoints - 2; k >= 0; --k) {
        if (!(modified > kCritical[k])) continue;
        const double slope = (kPValues[k + 1] - kPValues[k]) / (kCritical[k] - kCritical[k + 1]);
        return Answer(kPValues[k] + slope * (kCritical[k] - modified), kSuccess, pValue);
    }
    // Deliberate: also for exactly the first critical value.
    return Answer(kQuietNaN, kSuccess, pValue);
}

template <typename Transform>
int NormalTest(const double* data, const double* parameters, double* aSquared, double* pValue, unsigned n,
               Transform transform) {
    *aSquared = *pValue = kQuietNaN;
    if (n < 2) return kSuccess;
    const double mean = parameters[0];
    const double sd = parameters[1];
    *aSquared = Statistic(data, n, [=](double x) {
        const double value = transform(x);
        if (value == mean && sd > 0) return 0.5;
        return reference::NormalLowerTail((value - mean) / sd);
    });
    return NormalTablePValue(*aSquared, n, pValue);
}

}  // namespace

namespace v0 {

int RunKelExponentialADTest(const double* data, double scale, double* aSquared, double* pValue, unsigned n) {
    *aSquared = *pValue = kQuietNaN;
    if (n == 0) return kSuccess;
    *aSquared = Statistic(data, n, [=](double x) { return reference::ExponentialLowerTail(x, scale); });
    return ExponentialTablePValue(*aSquared, n, pValue);
}

// Deliberate: without values A^2 is -0, and the p-value still comes out of the table, as NaN.
int RunKelWeibullADTest(const double* data, const double* parameters, double* aSquared, double* pValue,
                        unsigned n) {
    *aSquared = *pValue = kQuietNaN;
    const double shape = n == 0 ? 0 : parameters[0];
    const double scale = n == 0 ? 0 : parameters[1];
    *aSquared = Statistic(data, n, [=](double x) { return reference::WeibullLowerTail(x, shape, scale); });
    return WeibullTablePValue(*aSquared, n, pValue);
}

}  // namespace v0

namespace v1 {

int RunKelNormalADTest(const double* data, const double* parameters, double* aSquared, double* pValue,
                       unsigned n) {
    return NormalTest(data, parameters, aSquared, pValue, n, [](double x) { return x; });
}

int RunKelLogNormalADTest(const double* data, const double* parameters, double* aSquared, double* pValue,
                          unsigned n) {
    return NormalTest(data, parameters, aSquared, pValue, n, [](double x) { return elementary::Log(x); });
}

}  // namespace v1
}  // namespace zul
