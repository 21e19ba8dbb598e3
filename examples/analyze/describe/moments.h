/// @file
/// Size, mean and standard deviation: what the tests of means need of a sample.
#pragma once

#include <vector>

namespace analyze {

struct Moments {
    unsigned n;
    double mean;
    double sd;  ///< divisor n - 1; NaN for a single value
};

/// The standard deviation has all digits of values that are nearly equal too.
Moments MomentsOf(const std::vector<double>& values);

inline constexpr const char* kTooFewForSd = "two values are needed";

}  // namespace analyze
