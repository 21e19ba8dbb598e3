// A two-way table of counts with its margins.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>

#include "frame/missing_value.h"

namespace zul::contingency {

class Table {
public:
    // A table of zeros. False without memory: the table is not to be used then.
    bool Allocate(unsigned rows, unsigned columns);
    // To be written before SumMargins().
    double* Counts() { return counts_; }
    // False if the total is not finite.
    bool SumMargins();

    std::size_t Rows() const { return rows_; }
    std::size_t Columns() const { return columns_; }
    // Those with a total above 0: the others have no part in degrees of freedom and the like.
    std::size_t UsedRows() const { return usedRows_; }
    std::size_t UsedColumns() const { return usedColumns_; }
    std::size_t FewerUsed() const { return std::min(usedRows_, usedColumns_); }
    bool Is(std::size_t rows, std::size_t columns) const { return rows_ == rows && columns_ == columns; }

    const double* Row(std::size_t i) const { return counts_ + i * columns_; }
    double Count(std::size_t i, std::size_t j) const { return Row(i)[j]; }
    double RowTotal(std::size_t i) const { return rowTotals_[i]; }
    double ColumnTotal(std::size_t j) const { return columnTotals_[j]; }
    const double* RowTotals() const { return rowTotals_; }
    const double* ColumnTotals() const { return columnTotals_; }
    double Total() const { return total_; }
    bool IsEmpty() const { return total_ == 0; }

    // Under independence of rows and columns.
    double Expected(std::size_t i, std::size_t j) const {
        return IsEmpty() ? 0 : rowTotals_[i] * columnTotals_[j] / total_;
    }
    // The count less the expected one, as a fraction whose numerator is exact for whole counts of moderate size.
    double Residual(std::size_t i, std::size_t j) const {
        return IsEmpty() ? 0 : (Count(i, j) * total_ - rowTotals_[i] * columnTotals_[j]) / total_;
    }

private:
    std::size_t rows_ = 0;
    std::size_t columns_ = 0;
    std::size_t usedRows_ = 0;
    std::size_t usedColumns_ = 0;
    std::unique_ptr<double[]> memory_;
    double* counts_ = nullptr;
    double* rowTotals_ = nullptr;
    double* columnTotals_ = nullptr;
    double total_ = 0;
};

// Whether the values can be counts: neither negative nor infinite nor NaN.
inline bool AreCounts(const double* values, std::size_t n) {
    return std::all_of(values, values + n, [](double x) { return std::isfinite(x) && x >= 0; });
}

// The quotient of two sums of the table; NaN for 0/0.
inline double Quotient(double numerator, double denominator) {
    if (denominator == 0 && numerator == 0) return frame::kQuietNaN;
    return numerator / denominator;
}

}  // namespace zul::contingency
