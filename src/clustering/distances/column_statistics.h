#pragma once

#include <vector>

#include "clustering/distances/panels.h"

namespace zul::dax::clustering {

struct ColumnStatistics {
    std::vector<double> means;
    std::vector<double> deviations;  // divisor n - 1; 1 where it is 0, so that it can divide
};

ColumnStatistics ComputeColumnMeansAndDeviations(const DataRows& rows);

}  // namespace zul::dax::clustering
