#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "clustering/distances/term_sums.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {

// Rows of values in panels of kLanes, the last one filled up with zeros.
struct Panels {
    // The values are to be written.
    Panels(std::size_t rowCount, std::size_t columnCount)
        : rows(rowCount),
          columns(columnCount),
          size((rows + kLanes - 1) / kLanes * kLanes * columns),
          values(std::make_unique_for_overwrite<double[]>(size)) {}

    // The row in the first column; the other columns are at distances of kLanes.
    const double* At(std::size_t row) const {
        return &values[row / kLanes * kLanes * columns + row % kLanes];
    }
    double* At(std::size_t row) { return &values[row / kLanes * kLanes * columns + row % kLanes]; }

    std::size_t rows;
    std::size_t columns;
    std::size_t size;  // of the values
    std::unique_ptr<double[]> values;
};

// The rows of the data, each with as many values as it has columns and at least kLanes: those of the library's own array
// where they are, others as copies, filled up with zeros.
class DataRows {
public:
    DataRows(const types::IRectangularArray<double>& data, int rows, int columns);
    DataRows(const DataRows&) = delete;
    DataRows& operator=(const DataRows&) = delete;
    std::size_t Count() const { return rows_.size(); }
    std::size_t Columns() const { return columns_; }
    // Where the values of a row and of those after it are.
    const double* const* From(std::size_t row) const { return rows_.data() + row; }

private:
    std::size_t columns_;
    std::vector<const double*> rows_;
    std::vector<double> copies_;
};

Panels PanelsOf(const DataRows& rows);

}  // namespace zul::dax::clustering
