#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "zul/descriptive.h"

namespace zul {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

v1::KelBoxplotHelper Boxplot(const std::vector<double>& x, double confidence) {
    v1::KelBoxplotHelper box;
    EXPECT_EQ(v1::RunKelBoxplotHelper(&box, confidence, x.data(), static_cast<unsigned>(x.size())), 0);
    return box;
}

// P(X <= k) for n throws of a coin: by the rows of Pascal's triangle, or by the normal distribution.
double CoinTail(int n, double k, bool exact) {
    if (!exact) return std::erfc(-(k + 0.5 - n / 2.0) / std::sqrt(n / 2.0)) / 2;
    double mass = std::pow(0.5, n);
    double tail = 0;
    for (int i = 0; i <= k; ++i) {
        tail += mass;
        mass *= (n - i) / (i + 1.0);
    }
    return tail;
}

// By steps from the definition: the deepest interval that covers more than the confidence, and the next.
TEST(Boxplot, MedianIntervalOnBothSidesOfTheExactRule) {
    for (int n = 2; n <= 120; ++n) {
        std::vector<double> x;
        for (int i = 1; i <= n; ++i)
            x.push_back(i + 0.3 * std::sin(i * i));
        const bool exact = n <= 50;
        const double median =
            (x[static_cast<std::size_t>(n - 1) / 2] + x[static_cast<std::size_t>(n) / 2]) / 2;
        for (const double confidence : {0.1, 0.5, 0.8, 0.9, 0.95, 0.99}) {
            const auto coverage = [&](int d) { return 1 - 2 * CoinTail(n, d - 1, exact); };
            int d = 0;
            while (2 * d < n && coverage(d + 1) > confidence)
                ++d;
            const v1::KelBoxplotHelper box = Boxplot(x, confidence);
            if (d == 0) {
                EXPECT_TRUE(std::isnan(box.medianLowerBound) && std::isnan(box.medianUpperBound)) << n;
                continue;
            }
            const auto at = [&](int k) { return x[static_cast<std::size_t>(k - 1)]; };
            const bool middle = d >= n / 2;
            const double share =
                (coverage(d) - confidence) / (middle ? coverage(d) : coverage(d) - coverage(d + 1));
            const double weight = (n - d) * share / (d + (n - 2 * d) * share);
            const double lower = at(d) + weight * ((middle ? median : at(d + 1)) - at(d));
            const double upper = at(n - d + 1) + weight * ((middle ? median : at(n - d)) - at(n - d + 1));
            EXPECT_NEAR(box.medianLowerBound, lower, 1e-8) << n << " " << confidence;
            EXPECT_NEAR(box.medianUpperBound, upper, 1e-8) << n << " " << confidence;
        }
    }
}

TEST(Boxplot, FieldsOfSmallSamples) {
    const v1::KelBoxplotHelper none = Boxplot({}, 0.95);
    EXPECT_TRUE(std::isnan(none.minimum) && std::isnan(none.upperHinge) && std::isnan(none.mean) &&
                std::isnan(none.standardDeviation) && std::isnan(none.medianLowerBound));
    const v1::KelBoxplotHelper one = Boxplot({5}, 0.95);
    EXPECT_TRUE(one.medianLowerBound == 5 && one.medianUpperBound == 5 && one.standardDeviation == 0);
    EXPECT_TRUE(one.lowerHinge == 5 && one.upperHinge == 5 && one.firstQuartile == 5);
    const v1::KelBoxplotHelper five = Boxplot({9, 1, 3, 5, 2}, 0.9);
    EXPECT_TRUE(five.minimum == 1 && five.maximum == 9 && five.median == 3 && five.mean == 4);
    EXPECT_DOUBLE_EQ(five.lowerHinge, 2);
    EXPECT_DOUBLE_EQ(five.upperHinge, 5);
    EXPECT_TRUE(five.firstQuartile == 1.5 && five.thirdQuartile == 7);
    EXPECT_DOUBLE_EQ(five.standardDeviation, std::sqrt(10));
    // The coverage at the middle is confidence enough for none: the median alone.
    const v1::KelBoxplotHelper zero = Boxplot({1, 2, 3, 4}, 0);
    EXPECT_TRUE(zero.medianLowerBound == 2.5 && zero.medianUpperBound == 2.5);
}

TEST(Boxplot, MeaninglessConfidenceSparesTheOtherFields) {
    for (const std::size_t n : {10u, 50u, 51u, 200u}) {
        std::vector<double> x(n, 4);
        x[0] = 2;
        for (const double confidence : {1.0, 1.5, -1.5, kNaN, kInf, -kInf}) {
            const v1::KelBoxplotHelper box = Boxplot(x, confidence);
            EXPECT_TRUE(std::isnan(box.medianLowerBound) && std::isnan(box.medianUpperBound)) << confidence;
            EXPECT_TRUE(box.minimum == 2 && box.median == 4 && box.mean > 3.7);
        }
    }
}

}  // namespace
}  // namespace zul
