// The pairs of observations that rows and columns put into the same order, and into opposite orders.
#pragma once

#include <cstddef>
#include <memory>

#include "contingency/table.h"

namespace zul::contingency {

// In a time in proportion to the cells, by sums over the corners of the table that lie beyond a cell, which are
// sums of the columns beside it. Whole numbers below 2^53 are exact.
class PairCounts {
public:
    // False without memory: there are no pairs then.
    bool Count(const Table& table);

    // Of all pairs, each once.
    double Concordant() const { return allConcordant_; }
    double Discordant() const { return allDiscordant_; }
    // Of the pairs with an observation of a cell.
    double Concordant(std::size_t i, std::size_t j) const { return concordant_[i * columns_ + j]; }
    double Discordant(std::size_t i, std::size_t j) const { return discordant_[i * columns_ + j]; }

private:
    // Adds to the cells of a row what the columns to their right, and to their left, have in columnSums_.
    void AddPairs(double* withRight, double* withLeft) const;
    void AddToColumns(const double* counts);

    std::size_t columns_ = 0;
    std::unique_ptr<double[]> memory_;
    double* concordant_ = nullptr;
    double* discordant_ = nullptr;
    double* columnSums_ = nullptr;  // of the rows gone through
    double allConcordant_ = 0;
    double allDiscordant_ = 0;
};

}  // namespace zul::contingency
