#include "contingency/table.h"

#include <cmath>
#include <limits>
#include <new>

#include "descriptive/compensated_sum.h"

namespace zul::contingency {
namespace {

using descriptive::CompensatedSum;

// The totals of lines of counts, each line in order. Some lines at a time, which hide the time that each takes for
// its next count.
void SumLines(const double* counts, std::size_t lines, std::size_t toNextLine, std::size_t length,
              std::size_t toNextCount, double* totals) {
    constexpr std::size_t kTogether = 64;
    for (std::size_t first = 0; first < lines; first += kTogether) {
        const std::size_t width = std::min(kTogether, lines - first);
        CompensatedSum sums[kTogether];
        for (std::size_t i = 0; i < length; ++i)
            for (std::size_t k = 0; k < width; ++k)
                sums[k].Add(counts[(first + k) * toNextLine + i * toNextCount]);
        for (std::size_t k = 0; k < width; ++k)
            totals[first + k] = sums[k].Value();
    }
}

std::size_t CountUsed(const double* totals, std::size_t n) {
    return n - static_cast<std::size_t>(std::count(totals, totals + n, 0.0));
}

}  // namespace

// One block of memory, whose number of doubles does not wrap: (2^32 - 1)^2 + 2 (2^32 - 1) = 2^64 - 1. One whose bytes
// would is refused: new throws there, for all its std::nothrow.
bool Table::Allocate(unsigned rows, unsigned columns) {
    constexpr std::size_t kMost = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(double);
    rows_ = rows;
    columns_ = columns;
    const std::size_t cells = rows_ * columns_;
    if (cells + rows_ + columns_ > kMost) return false;
    memory_.reset(new (std::nothrow) double[cells + rows_ + columns_]);
    if (memory_ == nullptr) return false;
    counts_ = memory_.get();
    rowTotals_ = counts_ + cells;
    columnTotals_ = rowTotals_ + rows_;
    std::fill_n(counts_, cells + rows_ + columns_, 0.0);
    return true;
}

// Rows, columns and their total in the same way, so that the total of the only row or column with counts is the
// total of the table to the last bit.
bool Table::SumMargins() {
    SumLines(counts_, rows_, columns_, columns_, 1, rowTotals_);
    SumLines(counts_, columns_, 1, rows_, columns_, columnTotals_);
    SumLines(rowTotals_, 1, 0, rows_, 1, &total_);
    usedRows_ = CountUsed(rowTotals_, rows_);
    usedColumns_ = CountUsed(columnTotals_, columns_);
    return std::isfinite(total_);
}

}  // namespace zul::contingency
