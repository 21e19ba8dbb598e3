// All pairs of values, and their median by sorting them.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace zul::test {

// Of each value with itself and with those behind it; of halves, which never overflow.
inline std::vector<double> Averages(const std::vector<double>& x, bool ofHalves) {
    std::vector<double> averages;
    for (std::size_t i = 0; i < x.size(); ++i)
        for (std::size_t j = i; j < x.size(); ++j)
            averages.push_back(ofHalves ? x[i] / 2 + x[j] / 2 : (x[i] + x[j]) / 2);
    return averages;
}

inline std::vector<double> Differences(const std::vector<double>& x, const std::vector<double>& y) {
    std::vector<double> differences;
    for (const double a : x)
        for (const double b : y)
            differences.push_back(a - b);
    return differences;
}

// A zero is positive.
inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const double low = values[(values.size() - 1) / 2];
    const double high = values[values.size() / 2];
    return (std::isinf(low + high) ? low / 2 + high / 2 : (low + high) / 2) + 0.0;
}

}  // namespace zul::test
