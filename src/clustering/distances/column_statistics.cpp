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

void ComputeOne(const Panels& columns, std::size_t column, double* mean, double* variance) {
    std::vector<double> values(columns.columns);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = columns.At(column)[i * kLanes];
    v1::GetSampleMeanAndVariance(values.data(), static_cast<unsigned>(values.size()), mean, variance);
}

// The means and variances of the columns of two panels, or of the same one twice.
void ComputeSome(const Panels& columns, std::size_t first, std::size_t other, ColumnStatistics& statistics) {
    const std::size_t n = columns.columns;
    ColumnMoments moments{};
    const bool isComputed =
        frame::RoundsToNearest() && n > 1 &&
        TermSumsOf(processor::CurrentLevel()).moments({columns.At(first), columns.At(other)}, n, moments);
    for (std::size_t panel = 0; panel < 2; ++panel) {
        const std::size_t start = panel == 0 ? first : other;
        for (std::size_t i = 0; i < std::min(kLanes, columns.rows - start); ++i) {
            double mean = moments.means[panel][i];
            double variance = moments.squares[panel][i] / (static_cast<double>(n) - 1.0);
            if (!isComputed) ComputeOne(columns, start + i, &mean, &variance);
            const double deviation = elementary::Sqrt(variance);
            statistics.means[start + i] = mean;
            statistics.deviations[start + i] = deviation == 0 ? 1 : deviation;
        }
    }
}

}  // namespace

ColumnStatistics ComputeColumnMeansAndDeviations(const Panels& columns) {
    ColumnStatistics statistics{std::vector<double>(columns.rows), std::vector<double>(columns.rows)};
    for (std::size_t first = 0; first < columns.rows; first += 2 * kLanes)
        ComputeSome(columns, first, first + kLanes < columns.rows ? first + kLanes : first, statistics);
    return statistics;
}

}  // namespace zul::dax::clustering
