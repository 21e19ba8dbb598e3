// The standard errors of measures of association.
#pragma once

#include <array>

#include "contingency/partial_sums.h"
#include "contingency/table.h"
#include "descriptive/compensated_sum.h"
#include "elementary/root.h"

namespace zul::contingency {

// The moments of a measure's gradient over the observations.
class GradientMoments {
public:
    template <typename Gradient>
    void AddRow(const Table& table, std::size_t i, const Gradient& gradient) {
        const double* const counts = table.Row(i);
        double squares[2] = {};
        first_.Add(SumOfTerms(table.Columns(), [&](std::size_t j) {
            const double derivative = gradient(i, j);
            const double weighted = counts[j] * derivative;
            squares[j % 2] += weighted * derivative;
            return weighted;
        }));
        second_.Add(squares[0] + squares[1]);
    }
    double StandardError(double n) const {
        const double mean = first_.Value() / n;
        return elementary::Sqrt(std::max(0.0, second_.Value() / n - mean * mean) / n);
    }

private:
    descriptive::CompensatedSum first_;
    descriptive::CompensatedSum second_;
};

// Those of measures of the proportions p of the cells, by the delta method, the counts being a multinomial sample:
// sqrt((sum p g^2 - (sum p g)^2) / n), gradient(i, j) = g the derivative by the proportion of a cell. A constant
// added to all derivatives of a measure changes nothing, since the proportions add up to 1: with the one that makes
// sum p g vanish nothing cancels. Row by row for all measures, so that a row is read once.
// Source: M. B. Brown and J. K. Benedetti, Sampling behavior of tests for correlation in two-way contingency
// tables, 1977.
template <typename... Gradients>
std::array<double, sizeof...(Gradients)> StandardErrors(const Table& table, const Gradients&... gradients) {
    std::array<GradientMoments, sizeof...(Gradients)> moments;
    for (std::size_t i = 0; i < table.Rows(); ++i) {
        std::size_t k = 0;
        (moments[k++].AddRow(table, i, gradients), ...);
    }
    std::array<double, sizeof...(Gradients)> errors;
    for (std::size_t k = 0; k < errors.size(); ++k)
        errors[k] = moments[k].StandardError(table.Total());
    return errors;
}

}  // namespace zul::contingency
