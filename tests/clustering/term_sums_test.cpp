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
    using processor::Level;
    for (const Level level : {Level::One, Level::Two, Level::Four, Level::Eight}) {
        if (level > processor::HighestLevel()) continue;
        for (const auto terms :
             {&TermSums::squares, &TermSums::absolutes, &TermSums::dividedSquares, &TermSums::products})
            for (const bool isRoot : {false, true})
                EXPECT_EQ(compute(level, terms, isRoot), compute(Level::One, terms, isRoot));
        EXPECT_EQ(compute(level, &TermSums::squaresByReciprocals, false),
                  compute(Level::One, &TermSums::dividedSquares, false));
    }
}

// Rows of numbers behind each other, and where they begin.
struct RandomRows {
    static constexpr std::size_t kWidth = 2 * kLanes;
    explicit RandomRows(std::size_t count) : values(kWidth * count) {
        std::mt19937_64 random(6);
        std::normal_distribution<double> normal(3, 1);
        for (double& value : values)
            value = normal(random);
        for (std::size_t i = 0; i < count; ++i)
            rows.push_back(&values[i * kWidth]);
    }

    std::vector<double> values;
    std::vector<double*> rows;
};

struct Strange {
    double value;
    std::size_t row;
};

// The first column is constant, the last one may have a strange value.
TEST(ColumnMoments, AreThoseOfOneColumnUnlessTheyAreRefusedForAnyArgument) {
    constexpr std::size_t kCount = 300;
    using processor::Level;
    for (const Level level : {Level::One, Level::Two, Level::Four, Level::Eight}) {
        if (level > processor::HighestLevel()) continue;
        for (const auto& [strange, row] : {Strange{0, 1},
                                           {1e100, 1},
                                           {-1e300, 1},
                                           {-1e-260, 1},
                                           {kInf, 1},
                                           {kNaN, 1},
                                           {1e-260, kCount - 1},
                                           {-kInf, kCount - 1}}) {
            const RandomRows data(kCount);
            for (std::size_t i = 0; i < kCount; ++i) {
                data.rows[i][0] = 5;
                data.rows[i][RandomRows::kWidth - 1] = i == row ? strange : 0;
            }
            ColumnMoments moments{};
            const bool isModerate = strange == 0 || strange == 1e100 || strange == -1e300;
            ASSERT_EQ(TermSumsOf(level).moments(data.rows.data(), kCount, {0, kLanes}, moments), isModerate)
                << strange;
            if (!isModerate) continue;
            for (std::size_t column = 0; column < RandomRows::kWidth; ++column) {
                std::vector<double> values;
                for (const double* const numbers : data.rows)
                    values.push_back(numbers[column]);
                double mean = 0;
                double variance = 0;
                v1::GetSampleMeanAndVariance(values.data(), kCount, &mean, &variance);
                EXPECT_EQ(moments.means[column / kLanes][column % kLanes], mean);
                const double ours = moments.squares[column / kLanes][column % kLanes] / (kCount - 1.0);
                EXPECT_TRUE(ours == variance || (std::isnan(ours) && std::isnan(variance)));
            }
        }
    }
}

TEST(ColumnDeviations, AreThoseFromTheMeansUpToTheLastColumn) {
    constexpr std::size_t kCount = 5;
    constexpr double kMeans[kLanes] = {3, 2.9, 3.1, 0, -1, 0.3, 1e10, 3};
    const RandomRows data(kCount);
    using processor::Level;
    for (const Level level : {Level::One, Level::Two, Level::Four, Level::Eight}) {
        if (level > processor::HighestLevel()) continue;
        for (const std::size_t count : {1u, 2u, 7u, 8u}) {
            double panel[kCount][kLanes] = {};
            TermSumsOf(level).deviations(data.rows.data(), kCount, 5, count, kMeans, panel[0]);
            for (std::size_t i = 0; i < kCount; ++i)
                for (std::size_t k = 0; k < kLanes; ++k)
                    EXPECT_EQ(panel[i][k], k < count ? data.rows[i][5 + k] - kMeans[k] : 0);
        }
    }
}

// The later column of a pair times the earlier one, summed plainly in the order of the rows.
double SumOfProducts(const RandomRows& data, std::size_t n, const double* means, std::size_t i,
                     std::size_t j) {
    double sum = 0;
    for (std::size_t row = 0; row < n; ++row)
        sum += (data.rows[row][i] - means[i]) * (data.rows[row][j] - means[j]);
    return sum;
}

TEST(DeviationProducts, AreSummedPlainlyWhereTheRegistersHoldTheSums) {
    constexpr double kMeans[2 * kLanes] = {3, 2.9, 3.1, 0, -1, 0.3, 1e10, 3, 1, 2, 3, 4, 5, 6, 7, 8};
    const RandomRows data(29);
    using processor::Level;
    for (const Level level : {Level::One, Level::Two, Level::Four, Level::Eight}) {
        if (level > processor::HighestLevel()) continue;
        const std::size_t most = level == Level::Eight ? 16 : level == Level::Four ? 10 : 0;
        for (std::size_t columns = kLanes; columns <= 2 * kLanes; ++columns) {
            const SumProducts sumProducts = TermSumsOf(level).deviationProducts[columns - kLanes];
            ASSERT_EQ(sumProducts != nullptr, columns <= most);
            for (const std::size_t n : {0u, 1u, 8u, 29u}) {
                if (sumProducts == nullptr) continue;
                double sums[2 * kLanes][2 * kLanes];
                sumProducts(data.rows.data(), n, kMeans, sums);
                for (std::size_t j = 0; j < columns; ++j)
                    for (std::size_t i = 0; i < j; ++i)
                        ASSERT_EQ(sums[j][i], SumOfProducts(data, n, kMeans, i, j)) << i << " " << j;
            }
        }
    }
}

}  // namespace
}  // namespace zul::dax::clustering
