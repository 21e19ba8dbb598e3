#include <memory>
#include <new>

#include "descriptive/power_sums.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "zul/descriptive.h"

namespace zul::v1 {

using descriptive::AccumulateCoMoments;

double GetCovariance(const double* x, const double* y, unsigned n, double* varianceX, double* varianceY) {
    if (n < 2) return frame::kQuietNaN;
    const auto [sxx, syy, sxy] = AccumulateCoMoments(x, y, n);
    *varianceX = sxx / (n - 1.0);
    *varianceY = syy / (n - 1.0);
    return sxy / (n - 1.0);
}

double GetPearsonCorrelation(const double* x, const double* y, unsigned n) {
    if (n < 2) return frame::kQuietNaN;
    const auto [sxx, syy, sxy] = AccumulateCoMoments(x, y, n);
    // Deliberate: the root of the squared ratio with the sign put back, not sxy / sqrt(sxx * syy).
    const double r = elementary::Sqrt(sxy * sxy / (syy * sxx));
    return sxy < 0 ? -r : r;
}

// Source: C. Spearman, The proof and measurement of association between two things, 1904.
double GetSpearmanCorrelation(const double* x, const double* y, unsigned n, int* status) {
    const std::unique_ptr<double[]> ranksX(new (std::nothrow) double[n]);
    const std::unique_ptr<double[]> ranksY(new (std::nothrow) double[n]);
    if (!ranksX || !ranksY) {
        *status = kOutOfMemory;
        return frame::kQuietNaN;
    }
    const bool ranked = GetRank(x, n, ranksX.get()) == kSuccess && GetRank(y, n, ranksY.get()) == kSuccess;
    // Deliberate: a ranking that fails leaves the status as it was.
    if (!ranked) return frame::kQuietNaN;
    *status = kSuccess;
    return GetPearsonCorrelation(ranksX.get(), ranksY.get(), n);
}

}  // namespace zul::v1
