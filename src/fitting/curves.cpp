#include <algorithm>
#include <cmath>

#include "fitting/distribution.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul::v2 {
namespace {

// The i-th of so many points from low to high, which is the last one.
double PointAt(double low, double high, unsigned i, unsigned points) {
    if (i == 0) return low;
    if (i == points - 1) return high;
    const double part = i / (points - 1.0);
    const double range = high - low;
    return std::isfinite(range) ? low + range * part : low * (1 - part) + high * part;
}

}  // namespace

int RunKelGrCurveFit(const DistributionFit* fit, DistributionFamily family, unsigned n, double binWidth,
                     double low, double high, unsigned points, double* x, double* y) {
    for (double* const out : {x, y})
        if (out != nullptr) std::fill_n(out, points, frame::kQuietNaN);
    if (!fitting::IsFamily(family)) return kUnknownOption;
    fitting::Distribution distribution{};
    if (!fitting::MakeDistribution(family, fit->parameter, &distribution)) return kUnusableData;
    if (!(binWidth >= 0 && std::isfinite(binWidth) && std::isfinite(low) && std::isfinite(high)))
        return kUnusableData;
    for (unsigned i = 0; i < points; ++i) {
        const double at = PointAt(low, high, i, points);
        if (x != nullptr) x[i] = at;
        if (y != nullptr)
            y[i] = binWidth > 0 ? fitting::DensityAt(distribution, at) * n * binWidth
                                : fitting::LowerTailAt(distribution, at) * n;
    }
    return kSuccess;
}

}  // namespace zul::v2
