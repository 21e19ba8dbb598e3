#include "clustering/distances/column_statistics.h"

#include <algorithm>
#include <cstddef>

#include "clustering/distances/term_sums.h"
#include "elementary/root.h"
#include "frame/platform.h"
#include "processor/level.h"
#include "zul/descriptive.h"

namespace zul::dax::clustering {
namespace {

void ComputeOne(const DataRows& rows, std::size_t column, double* mean, double* variance) {
    std::vector<double> values(rows.Count());
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = (*rows.From(i))[column];
    v1::GetSampleMeanAndVariance(values.data(), static_cast<unsigned>(values.size()), mean, variance);
}

// The means and variances of kLanes columns from each of two on, which may overlap, or of all where there are fewer.
void ComputeSome(const DataRows& rows, const std::size_t (&columns)[2], ColumnStatistics& statistics) {
    const std::size_t n = rows.Count();
    ColumnMoments moments{};
    const bool isComputed = frame::RoundsToNearest() && n > 1 &&
                            TermSumsOf(processor::CurrentLevel()).moments(rows.From(0), n, columns, moments);
    for (std::size_t k = 0; k < 2; ++k) {
        for (std::size_t i = 0; i < std::min(kLanes, rows.Columns()); ++i) {
            const std::size_t column = columns[k] + i;
            double mean = moments.means[k][i];
            double variance = moments.squares[k][i] / (static_cast<double>(n) - 1.0);
            if (!isComputed) ComputeOne(rows, column, &mean, &variance);
            const double deviation = elementary::Sqrt(variance);
            statistics.means[column] = mean;
            statistics.deviations[column] = deviation == 0 ? 1 : deviation;
        }
    }
}

}  // namespace

ColumnStatistics ComputeColumnMeansAndDeviations(const DataRows& rows) {
    const std::size_t columns = rows.Columns();
    ColumnStatistics statistics{std::vector<double>(columns), std::vector<double>(columns)};
    const std::size_t last = std::max(columns, kLanes) - kLanes;
    for (std::size_t first = 0; first < columns; first += 2 * kLanes)
        ComputeSome(rows, {std::min(first, last), std::min(first + kLanes, last)}, statistics);
    return statistics;
}

}  // namespace zul::dax::clustering
