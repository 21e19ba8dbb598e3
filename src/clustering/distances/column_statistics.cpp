#include "clustering/distances/column_statistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "zul/descriptive.h"

namespace zul::dax::clustering {

ColumnStatistics ComputeColumnMeansAndDeviations(const types::IRectangularArray<double>& data, int rows,
                                                 int columns) {
    std::vector<double> values(static_cast<std::size_t>(std::max(0, rows)));
    ColumnStatistics statistics;
    statistics.means.reserve(static_cast<std::size_t>(columns));
    statistics.deviations.reserve(static_cast<std::size_t>(columns));
    for (int column = 0; column < columns; ++column) {
        for (std::size_t row = 0; row < values.size(); ++row)
            values[row] = data.At(static_cast<int>(row), column);
        double mean = 0;
        double variance = 0;
        v1::GetSampleMeanAndVariance(values.data(), static_cast<unsigned>(values.size()), &mean, &variance);
        const double deviation = std::sqrt(variance);
        statistics.means.push_back(mean);
        statistics.deviations.push_back(deviation == 0 ? 1 : deviation);
    }
    return statistics;
}

}  // namespace zul::dax::clustering
