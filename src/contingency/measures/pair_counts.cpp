#include "contingency/measures/pair_counts.h"

#include <new>

#include "descriptive/compensated_sum.h"

namespace zul::contingency {

using descriptive::CompensatedSum;

namespace {

// Four sums of every fourth product, which do not wait for each other.
double SumOfProducts(const double* x, const double* y, std::size_t n) {
    CompensatedSum sums[4];
    std::size_t j = 0;
    for (; j + 4 <= n; j += 4)
        for (std::size_t k = 0; k < 4; ++k)
            sums[k].Add(x[j + k] * y[j + k]);
    for (; j < n; ++j)
        sums[0].Add(x[j] * y[j]);
    for (std::size_t k = 1; k < 4; ++k)
        sums[0].Add(sums[k].Value());
    return sums[0].Value();
}

}  // namespace

bool PairCounts::Count(const Table& table) {
    columns_ = table.Columns();
    const std::size_t rows = table.Rows();
    const std::size_t cells = rows * columns_;
    memory_.reset(new (std::nothrow) double[2 * cells + columns_]);
    if (memory_ == nullptr) return false;
    concordant_ = memory_.get();
    discordant_ = concordant_ + cells;
    columnSums_ = discordant_ + cells;
    std::fill_n(memory_.get(), 2 * cells + columns_, 0.0);

    // With the rows below, then also with those above.
    CompensatedSum allConcordant;
    CompensatedSum allDiscordant;
    for (std::size_t i = rows; i-- > 0;) {
        AddPairs(concordant_ + i * columns_, discordant_ + i * columns_);
        allConcordant.Add(SumOfProducts(table.Row(i), concordant_ + i * columns_, columns_));
        allDiscordant.Add(SumOfProducts(table.Row(i), discordant_ + i * columns_, columns_));
        AddToColumns(table.Row(i));
    }
    allConcordant_ = allConcordant.Value();
    allDiscordant_ = allDiscordant.Value();
    std::fill_n(columnSums_, columns_, 0.0);
    for (std::size_t i = 0; i < rows; ++i) {
        AddPairs(discordant_ + i * columns_, concordant_ + i * columns_);
        AddToColumns(table.Row(i));
    }
    return true;
}

void PairCounts::AddPairs(double* withRight, double* withLeft) const {
    double left = 0;
    double right = 0;
    for (std::size_t j = 0, k = columns_ - 1; j < columns_; ++j, --k) {
        withLeft[j] += left;
        left += columnSums_[j];
        withRight[k] += right;
        right += columnSums_[k];
    }
}

void PairCounts::AddToColumns(const double* counts) {
    for (std::size_t j = 0; j < columns_; ++j)
        columnSums_[j] += counts[j];
}

}  // namespace zul::contingency
