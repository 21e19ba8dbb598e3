#pragma once

#include <vector>

#include "zul/clustering.h"

namespace zul::dax::clustering {

struct ColumnStatistics {
    std::vector<double> means;
    std::vector<double> deviations;  // divisor n - 1; 1 where it is 0, so that it can divide
};

ColumnStatistics ComputeColumnMeansAndDeviations(const types::IRectangularArray<double>& data, int rows,
                                                 int columns);

}  // namespace zul::dax::clustering
