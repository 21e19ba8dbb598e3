#include "describe/moments.h"

#include <zul/descriptive.h>

#include <cmath>
#include <limits>

#include "input/counts.h"

namespace analyze {

Moments MomentsOf(const std::vector<double>& values) {
    const unsigned n = CountOf(values);
    const double mean = zul::v1::GetSampleMean(values.data(), n);
    // The library's variance of a single value is 0, which a reader would take for a measured one.
    const double sd = n > 1 ? std::sqrt(zul::v1::GetSampleVariance(values.data(), n, mean))
                            : std::numeric_limits<double>::quiet_NaN();
    return {n, mean, sd};
}

}  // namespace analyze
