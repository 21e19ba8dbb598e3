// The check that the tests of two and of several variances make of each sample, and its variance.
#pragma once

#include <algorithm>
#include <cmath>

#include "zul/descriptive.h"

namespace zul::hypothesis {

// Two values and more, all of them finite.
inline bool IsUsableSample(const double* data, unsigned n) {
    constexpr unsigned kFewest = 2;
    return n >= kFewest && std::all_of(data, data + n, [](double x) { return std::isfinite(x); });
}

// Exactly 0 where all values are equal, which the sums may not see.
inline double UsableVariance(const double* data, unsigned n) {
    if (std::all_of(data, data + n, [data](double x) { return x == data[0]; })) return 0;
    double mean = 0;
    double variance = 0;
    v1::GetSampleMeanAndVariance(data, n, &mean, &variance);
    return variance;
}

}  // namespace zul::hypothesis
