// Levene's test in the median form: a one-way analysis of the distances from the medians. Source: M. B. Brown, A. B.
// Forsythe, Robust tests for the equality of variances, 1974.
#pragma once

#include <cstddef>

namespace zul::hypothesis {

// The distances of the values of one group from its median.
struct Distances {
    double n;
    double mean;
    double sumOfSquares;  // about their mean
    bool areEqual;        // all of them
};

// Takes them from n >= 1 finite values. kOutOfMemory: nothing is written.
int MeasureDistances(const double* data, unsigned n, Distances* distances);

// The F statistic of the groups with its degrees of freedom. No spread in any group: NaN.
struct LeveneTest {
    double statistic;
    double df1;
    double df2;
};
LeveneTest CompareDistances(const Distances* groups, std::size_t count);

}  // namespace zul::hypothesis
