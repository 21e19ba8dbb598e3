#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "zul/clustering.h"

namespace zul::dax::types {

// The library's own array.
class RectangularArray final : public IRectangularArray<double> {
public:
    RectangularArray(std::uint32_t rows, std::uint32_t columns)
        : rows_(rows, std::vector<double>(columns)), rowCount_(rows), columnCount_(columns) {}

    const double& At(int row, int column) const override { return rows_[Index(row)][Index(column)]; }
    double& At(int row, int column) override { return rows_[Index(row)][Index(column)]; }
    double Set(int row, int column, const double& value) override { return At(row, column) = value; }
    int RowCount() const override { return static_cast<int>(rowCount_); }
    int ColumnCount() const override { return static_cast<int>(columnCount_); }
    const std::vector<double>& Row(int row) const { return rows_[Index(row)]; }

private:
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }

    std::vector<std::vector<double>> rows_;
    std::uint32_t rowCount_;
    std::uint32_t columnCount_;
};

}  // namespace zul::dax::types
