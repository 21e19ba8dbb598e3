#include <cmath>

#include "descriptive/power_sums.h"
#include "frame/missing_value.h"
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
    const double r = std::sqrt(sxy * sxy / (syy * sxx));
    return sxy < 0 ? -r : r;
}

}  // namespace zul::v1
