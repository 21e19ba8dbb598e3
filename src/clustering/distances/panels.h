#pragma once

#include <cstddef>
#include <vector>

#include "clustering/distances/term_sums.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {

// Rows of values in panels of kLanes, the last one filled up with zeros.
struct Panels {
    Panels(std::size_t rowCount, std::size_t columnCount)
        : rows(rowCount), columns(columnCount), values((rows + kLanes - 1) / kLanes * kLanes * columns) {}

    // The row in the first column; the other columns are at distances of kLanes.
    const double* At(std::size_t row) const {
        return &values[row / kLanes * kLanes * columns + row % kLanes];
    }
    double* At(std::size_t row) { return &values[row / kLanes * kLanes * columns + row % kLanes]; }

    std::size_t rows;
    std::size_t columns;
    std::vector<double> values;
};

// The rows of the data.
Panels PanelsOfRows(const types::IRectangularArray<double>& data, int rows, int columns);
// Their columns: each is a row of the panels.
Panels PanelsOfColumns(const types::IRectangularArray<double>& data, int rows, int columns);

}  // namespace zul::dax::clustering
