#include "contingency/table.h"

#include <cmath>
#include <new>

#include "descriptive/compensated_sum.h"
#include "frame/missing_value.h"

namespace zul::contingency {
namespace {

using descriptive::CompensatedSum;

std::size_t CountUsed(const double* totals, std::size_t n) {
    return n - static_cast<std::size_t>(std::count(totals, totals + n, 0.0));
}

}  // namespace

// One block of memory, whose size does not wrap: (2^32 - 1)^2 + 2 (2^32 - 1) = 2^64 - 1.
bool Table::Allocate(unsigned rows, unsigned columns) {
    rows_ = rows;
    columns_ = columns;
    const std::size_t cells = rows_ * columns_;
    memory_.reset(new (std::nothrow) double[cells + rows_ + columns_]);
    if (memory_ == nullptr) return false;
    counts_ = memory_.get();
    rowTotals_ = counts_ + cells;
    columnTotals_ = rowTotals_ + rows_;
    std::fill_n(counts_, cells + rows_ + columns_, 0.0);
    return true;
}

// Margin by margin in the same order, so that the total of the only row or column with counts is the total of
// the table to the last bit.
bool Table::SumMargins() {
    // Sums of some columns at a time, which hide the time that each takes for the next row.
    constexpr std::size_t kStrip = 64;
    CompensatedSum total;
    for (std::size_t i = 0; i < rows_; ++i) {
        CompensatedSum sum;
        for (std::size_t j = 0; j < columns_; ++j)
            sum.Add(Row(i)[j]);
        rowTotals_[i] = sum.Value();
        total.Add(rowTotals_[i]);
    }
    for (std::size_t first = 0; first < columns_; first += kStrip) {
        const std::size_t width = std::min(kStrip, columns_ - first);
        CompensatedSum sums[kStrip];
        for (std::size_t i = 0; i < rows_; ++i)
            for (std::size_t j = 0; j < width; ++j)
                sums[j].Add(Row(i)[first + j]);
        for (std::size_t j = 0; j < width; ++j)
            columnTotals_[first + j] = sums[j].Value();
    }
    total_ = total.Value();
    usedRows_ = CountUsed(rowTotals_, rows_);
    usedColumns_ = CountUsed(columnTotals_, columns_);
    return std::isfinite(total_);
}

bool AreCounts(const double* values, std::size_t n) {
    return std::all_of(values, values + n, [](double x) { return std::isfinite(x) && x >= 0; });
}

double Quotient(double numerator, double denominator) {
    if (denominator == 0 && numerator == 0) return frame::kQuietNaN;
    return numerator / denominator;
}

}  // namespace zul::contingency
