// The standard errors of measures of association.
#pragma once

#include <cmath>

#include "contingency/partial_sums.h"
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
    descriptive::CompensatedSum first;
    descriptive::CompensatedSum second;
    for (std::size_t i = 0; i < table.Rows(); ++i) {
        const double* const counts = table.Row(i);
        double squares[2] = {};
        first.Add(SumOfTerms(table.Columns(), [&](std::size_t j) {
            const double derivative = gradient(i, j);
            const double weighted = counts[j] * derivative;
            squares[j % 2] += weighted * derivative;
            return weighted;
        }));
        second.Add(squares[0] + squares[1]);
    }
    const double n = table.Total();
    const double mean = first.Value() / n;
    return std::sqrt(std::max(0.0, second.Value() / n - mean * mean) / n);
}

}  // namespace zul::contingency
