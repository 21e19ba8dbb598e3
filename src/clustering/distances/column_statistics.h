#pragma once

#include <vector>

#include "clustering/distances/panels.h"

namespace zul::dax::clustering {

struct ColumnStatistics {
    std::vector<double> means;
    std::vector<double> deviations;  // divisor n - 1; 1 where it is 0, so that it can divide
};

// Of each row of the panels, which is a column of the data.
ColumnStatistics ComputeColumnMeansAndDeviations(const Panels& columns);

}  // namespace zul::dax::clustering
