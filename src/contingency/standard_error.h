// The standard errors of measures of association.
#pragma once

#include <cmath>

#include "contingency/table.h"
#include "descriptive/compensated_sum.h"

namespace zul::contingency {

// That of a measure of the proportions p of the cells, by the delta method, the counts being a multinomial sample:
// sqrt((sum p g^2 - (sum p g)^2) / n), gradient(i, j) = g the derivative by the proportion of a cell. A constant
// added to all derivatives changes nothing, since the proportions add up to 1: with the one that makes sum p g
// vanish nothing cancels.
// Source: M. B. Brown and J. K. Benedetti, Sampling behavior of tests for correlation in two-way contingency
// tables, 1977.
template <typename Gradient>
double StandardError(const Table& table, Gradient gradient) {
    // Plain sums along a row, of which the rounding is far below what the method itself leaves out.
    descriptive::CompensatedSum first;
    descriptive::CompensatedSum second;
    for (std::size_t i = 0; i < table.Rows(); ++i) {
        double ofRow = 0;
        double squaresOfRow = 0;
        for (std::size_t j = 0; j < table.Columns(); ++j) {
            const double derivative = gradient(i, j);
            const double weighted = table.Count(i, j) * derivative;
            ofRow += weighted;
            squaresOfRow += weighted * derivative;
        }
        first.Add(ofRow);
        second.Add(squaresOfRow);
    }
    const double n = table.Total();
    const double mean = first.Value() / n;
    return std::sqrt(std::max(0.0, second.Value() / n - mean * mean) / n);
}

}  // namespace zul::contingency
