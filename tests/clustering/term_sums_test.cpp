#include "clustering/distances/term_sums.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "processor/level.h"

namespace zul::dax::clustering {
namespace {

// Distances must not depend on the processor. What they are is tested through the exported functions.
TEST(TermSums, AreTheSameAtEveryLevel) {
    std::mt19937_64 random(4);
    std::normal_distribution<double> normal(3, 1);
    constexpr std::size_t kColumns = 30;
    std::vector<double> divisors(kColumns);
    std::vector<double> panel(kColumns * kLanes);
    for (double& value : divisors)
        value = std::abs(normal(random));
    for (double& value : panel)
        value = normal(random);
    const auto compute = [&](processor::Level level, SumTerms TermSums::*terms, bool isRoot) {
        std::vector<double> sums(kTile * kLanes);
        double* const out[kTile] = {&sums[0], &sums[kLanes], &sums[2 * kLanes], &sums[3 * kLanes]};
        (TermSumsOf(level).*terms)({kColumns, divisors.data(), isRoot}, panel.data() + kTile, panel.data(), 1,
                                   out);
        return sums;
    };
    using processor::Level;
    for (const Level level : {Level::Two, Level::Four, Level::Eight}) {
        if (level > processor::HighestLevel()) continue;
        for (const auto terms :
             {&TermSums::squares, &TermSums::absolutes, &TermSums::dividedSquares, &TermSums::products})
            for (const bool isRoot : {false, true})
                EXPECT_EQ(compute(level, terms, isRoot), compute(Level::One, terms, isRoot));
    }
}

}  // namespace
}  // namespace zul::dax::clustering
