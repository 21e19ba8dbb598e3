// Many quantiles of one distribution on whole numbers: from a table of its lower tails, where these tell the quantile
// without a doubt.
#pragma once

#include <cstddef>
#include <cstdint>

#include "numerics/counts/mass_sum.h"

namespace zul::numerics {

// A distribution on the whole numbers from first to last; of no numbers by default.
struct CountDistribution {
    double first = 0;
    double last = -1;
    double mean = 0;
    double sd = 0;
    // As of a MassWalk that begins at 0.
    double odds = 0;
    double falling[2] = {kEndlessCount, kEndlessCount};
    double rising[2] = {0, kEndlessCount};

    // The mass at the number after k as a multiple of that at k.
    double Step(double k) const {
        return odds * (falling[0] - k) * (falling[1] - k) / ((rising[0] + 1 + k) * (rising[1] + 1 + k));
    }
};

// Source: H.-C. Chen and Y. Asau, On generating random variates from an empirical distribution, 1974 (the guide).
class QuantileTable {
public:
    // Of the sums of the masses around the mean, each from the one before, to 1e-9 of them all. Empty where so many
    // masses do not do.
    QuantileTable(const CountDistribution& distribution, std::size_t masses);
    bool IsEmpty() const { return count_ == 0; }
    // The number whose lower tail is above p while that of the number before is below p. NA within 1e-8 of either, where
    // the digits of the family's own tails decide, and of 0 and 1; and for what is no probability.
    double At(double p) const;

private:
    static constexpr std::size_t kNodes = 1024;
    static constexpr std::size_t kCells = 512;
    // The sum of the masses up to a number, and its own mass.
    struct Node {
        double sum;
        double mass;
    };

    void Add(const Node& node);
    void MakeGuide();

    CountDistribution distribution_;
    double start_ = 0;
    double total_ = 0;
    // The nodes are the numbers start_, start_ + stride_, ... and the end of the table.
    std::size_t stride_ = 1;
    std::size_t count_ = 0;
    Node nodes_[kNodes];
    // The first node whose sum is above c / kCells of the total.
    std::uint16_t guide_[kCells];
};

}  // namespace zul::numerics
