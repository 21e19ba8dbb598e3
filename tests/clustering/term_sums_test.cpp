#include "clustering/distances/term_sums.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "processor/level.h"
#include "support/reference_table.h"
#include "zul/descriptive.h"

namespace zul::dax::clustering {
namespace {

// Distances must not depend on the processor. What they are is tested through the exported functions.
TEST(TermSums, AreTheSameAtEveryLevel) {
    std::mt19937_64 random(4);
    std::normal_distribution<double> normal(3, 1);
    constexpr std::size_t kColumns = 30;
    std::vector<double> divisors(kColumns);
    std::vector<double> panel(kColumns * kLanes);
    std::vector<double> reciprocals;
    for (double& value : divisors) {
        value = std::abs(normal(random));
        reciprocals.push_back(1 / value);
    }
    for (double& value : panel)
        value = normal(random);
    const auto compute = [&](processor::Level level, SumTerms TermSums::*terms, bool isRoot) {
        std::vector<double> sums(kTile * kLanes, 1.5);  // products are added to it
        double* const out[kTile] = {&sums[0], &sums[kLanes], &sums[2 * kLanes], &sums[3 * kLanes]};
        (TermSumsOf(level).*terms)({kColumns, divisors.data(), reciprocals.data(), isRoot, true},
                                   panel.data() + kTile, panel.data(), 1, out);
        return sums;
    };
    const auto deviate = [&](processor::Level level) {
        std::vector<double> deviations(panel.size());
        constexpr double kMeans[kLanes] = {3, 2.9, 3.1, 0, -1, 0.3, 1e10, 3};
        TermSumsOf(level).deviations(panel.data(), kMeans, kColumns, deviations.data());
        return deviations;
    };
    using processor::Level;
    for (const Level level : {Level::One, Level::Two, Level::Four, Level::Eight}) {
        if (level > processor::HighestLevel()) continue;
        for (const auto terms :
             {&TermSums::squares, &TermSums::absolutes, &TermSums::dividedSquares, &TermSums::products})
            for (const bool isRoot : {false, true})
                EXPECT_EQ(compute(level, terms, isRoot), compute(Level::One, terms, isRoot));
        EXPECT_EQ(deviate(level), deviate(Level::One));
        EXPECT_EQ(compute(level, &TermSums::squaresByReciprocals, false),
                  compute(Level::One, &TermSums::dividedSquares, false));
    }
}

// Those of two panels, of which the last column of the second one may have a strange value.
TEST(ColumnMoments, AreThoseOfOneColumnUnlessTheyAreRefusedForAnyArgument) {
    constexpr std::size_t kCount = 300;
    using processor::Level;
    for (const Level level : {Level::One, Level::Two, Level::Four, Level::Eight}) {
        if (level > processor::HighestLevel()) continue;
        for (const double strange : {0.0, 1e100, 1e260, -1e-260, kInf, kNaN}) {
            std::mt19937_64 random(6);
            std::normal_distribution<double> normal(3, 1);
            std::vector<double> values(2 * kLanes * kCount);
            for (double& value : values)
                value = normal(random);
            for (std::size_t i = 0; i < kCount; ++i)
                values[i * kLanes] = 5;
            for (std::size_t i = 1; i <= kCount; ++i)
                values[(kCount + i) * kLanes - 1] = i == 2 ? strange : 0;
            const double* const panels[2] = {values.data(), &values[kLanes * kCount]};
            ColumnMoments moments{};
            const bool isModerate = strange == 0 || strange == 1e100;
            ASSERT_EQ(TermSumsOf(level).moments(panels, kCount, moments), isModerate) << strange;
            if (!isModerate) continue;
            for (std::size_t row = 0; row < 2 * kLanes; ++row) {
                std::vector<double> column;
                for (std::size_t i = 0; i < kCount; ++i)
                    column.push_back(panels[row / kLanes][i * kLanes + row % kLanes]);
                double mean = 0;
                double variance = 0;
                v1::GetSampleMeanAndVariance(column.data(), kCount, &mean, &variance);
                EXPECT_EQ(moments.means[row / kLanes][row % kLanes], mean);
                EXPECT_EQ(moments.squares[row / kLanes][row % kLanes] / (kCount - 1.0), variance);
            }
        }
    }
}

}  // namespace
}  // namespace zul::dax::clustering
