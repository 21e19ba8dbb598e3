#include "contingency/pair_counts.h"

#include <new>

#include "descriptive/compensated_sum.h"

namespace zul::contingency {

using descriptive::CompensatedSum;

bool PairCounts::Count(const Table& table) {
    columns_ = table.Columns();
    const std::size_t cells = table.Rows() * columns_;
    memory_.reset(new (std::nothrow) double[2 * cells + columns_]);
    if (memory_ == nullptr) return false;
    concordant_ = memory_.get();
    discordant_ = concordant_ + cells;
    columnSums_ = discordant_ + cells;
    CountWithRowsBelow(table);
    AddThoseWithRowsAbove(table);
    return true;
}

void PairCounts::CountWithRowsBelow(const Table& table) {
    CompensatedSum allConcordant;
    CompensatedSum allDiscordant;
    std::fill_n(columnSums_, columns_, 0.0);
    for (std::size_t i = table.Rows(); i-- > 0;) {
        const double* const counts = table.Row(i);
        double* const concordant = concordant_ + i * columns_;
        double* const discordant = discordant_ + i * columns_;
        double sum = 0;
        for (std::size_t j = columns_; j-- > 0;) {
            concordant[j] = sum;
            sum += columnSums_[j];
        }
        sum = 0;
        for (std::size_t j = 0; j < columns_; ++j) {
            discordant[j] = sum;
            sum += columnSums_[j];
            allConcordant.Add(counts[j] * concordant[j]);
            allDiscordant.Add(counts[j] * discordant[j]);
        }
        for (std::size_t j = 0; j < columns_; ++j)
            columnSums_[j] += counts[j];
    }
    allConcordant_ = allConcordant.Value();
    allDiscordant_ = allDiscordant.Value();
}

void PairCounts::AddThoseWithRowsAbove(const Table& table) {
    std::fill_n(columnSums_, columns_, 0.0);
    for (std::size_t i = 0; i < table.Rows(); ++i) {
        const double* const counts = table.Row(i);
        double* const concordant = concordant_ + i * columns_;
        double* const discordant = discordant_ + i * columns_;
        double sum = 0;
        for (std::size_t j = 0; j < columns_; ++j) {
            concordant[j] += sum;
            sum += columnSums_[j];
        }
        sum = 0;
        for (std::size_t j = columns_; j-- > 0;) {
            discordant[j] += sum;
            sum += columnSums_[j];
        }
        for (std::size_t j = 0; j < columns_; ++j)
            columnSums_[j] += counts[j];
    }
}

}  // namespace zul::contingency
