#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <vector>

#include "support/reference_table.h"
#include "zul/descriptive.h"

namespace zul {
namespace {

using Sample = std::vector<double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

unsigned Size(const Sample& x) {
    return static_cast<unsigned>(x.size());
}

bool Same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

// Ties, both zeros and infinities, NaN of either sign where allowed, and numbers of every size. The counts lie
// on both sides of the one from which on the values are sorted by their digits.
template <typename Check>
void ForRandomSamples(bool withNaN, Check check) {
    std::mt19937_64 generator(17);
    for (int round = 0; round < 300; ++round) {
        Sample x(round < 130 ? static_cast<std::size_t>(round) : generator() % 700);
        const std::uint64_t kinds = generator() % 3;
        for (double& value : x) {
            const double special[] = {
                0, -0.0, kInf, -kInf, 1.23456e30, 5e-324, withNaN ? kNaN : 1, withNaN ? -kNaN : -1};
            const double any = std::bit_cast<double>(generator());
            const double tied = static_cast<double>(generator() % 20) - 10;
            value = kinds == 0 && !std::isnan(any) ? any : tied;
            if (generator() % 8 == 0) value = special[generator() % std::size(special)];
        }
        check(x, generator);
        if (testing::Test::HasFailure()) break;
    }
}

Sample Sorted(Sample x) {
    std::sort(x.begin(), x.end(),
              [](double a, double b) { return a < b || (!std::isnan(a) && std::isnan(b)); });
    return x;
}

TEST(Ranks, AgreeWithCounting) {
    ForRandomSamples(true, [](const Sample& x, auto&) {
        Sample ranks(x.size());
        ASSERT_EQ(v1::GetRank(x.data(), Size(x), ranks.data()), 0);
        Sample ranksOfNaN;
        double numbers = 0;
        for (std::size_t i = 0; i < x.size(); ++i) {
            double smaller = 0;
            double equal = 0;
            for (const double other : x) {
                smaller += other < x[i] ? 1 : 0;
                equal += other == x[i] ? 1 : 0;
            }
            if (std::isnan(x[i]))
                ranksOfNaN.push_back(ranks[i]);
            else
                ASSERT_EQ(ranks[i], smaller + (equal + 1) / 2);
            numbers += std::isnan(x[i]) ? 0 : 1;
        }
        std::sort(ranksOfNaN.begin(), ranksOfNaN.end());
        for (const double rank : ranksOfNaN)
            ASSERT_EQ(rank, ++numbers);
    });
}

TEST(Order, IsASortingPermutation) {
    ForRandomSamples(true, [](const Sample& x, auto&) {
        std::vector<unsigned> order(x.size());
        v1::GetOrder(x.data(), Size(x), order.data());
        const Sample sorted = Sorted(x);
        std::vector<bool> seen(x.size());
        for (std::size_t k = 0; k < x.size(); ++k) {
            ASSERT_FALSE(seen.at(order[k]));
            seen[order[k]] = true;
            ASSERT_TRUE(Same(x[order[k]], sorted[k])) << k << " of " << x.size();
        }
    });
}

// The definitions in words, for probabilities that are multiples of 1/64: n p is exact then.
double QuantileByDefinition(const Sample& sorted, int method, double p) {
    const auto n = static_cast<double>(sorted.size());
    const auto value = [&](double k) { return sorted[static_cast<std::size_t>(std::clamp(k, 1.0, n)) - 1]; };
    const double positions[] = {n * p,           n * p + 0.5,         n * p + p,
                                n * p + (1 - p), n * p + (p + 1) / 3, n * p + (p + 1.5) * 0.25};
    switch (method) {
        case 1:
            return value(std::ceil(n * p));
        case 2:
            if (n * p != std::floor(n * p)) return value(std::ceil(n * p));
            return (value(n * p) + value(n * p + 1)) / 2;
        case 3:
            return value(std::nearbyint(n * p));
        default: {
            const double h = positions[method - 4];
            if (h < 1 || h >= n) return value(h);
            const double g = h - std::floor(h);
            return (1 - g) * value(h) + g * value(h + 1);
        }
    }
}

TEST(Quantiles, AgreeWithTheirDefinitions) {
    ForRandomSamples(true, [](const Sample& x, auto& generator) {
        if (x.empty()) return;
        const Sample sorted = Sorted(x);
        const double p[] = {0, 1, static_cast<double>(1 + generator() % 63) / 64, 1.0 / 64, 0.5, 63.0 / 64};
        for (int method = 1; method <= 9; ++method) {
            double out[6];
            ASSERT_EQ(v1::GetSampleQuantiles(x.data(), Size(x), method, out, p, 6), 0);
            ASSERT_TRUE(Same(out[0], sorted.front()) && Same(out[1], sorted.back()));
            for (int j = 2; j < 6; ++j)
                ASSERT_TRUE(Same(out[j], QuantileByDefinition(sorted, method, p[j])))
                    << method << " " << p[j] << " of " << x.size();
        }
    });
}

TEST(Quantiles, ChecksInTheirOrder) {
    const double x[] = {3, 1, 2, 4};
    const double p[] = {-1e-300, 1.5, kNaN, 1 - 0x1p-53, 5e-324};
    for (int method = 1; method <= 9; ++method) {
        double out[5];
        EXPECT_EQ(v1::GetSampleQuantiles(x, 4, method, out, p, 5), 0);
        EXPECT_TRUE(std::isnan(out[0]) && std::isnan(out[1]) && std::isnan(out[2]));
        EXPECT_NEAR(out[3], 4, 1e-15);
        EXPECT_EQ(out[4], 1);
        EXPECT_EQ(v1::GetSampleQuantiles(nullptr, 0, method, out, p, 5), 0);
        EXPECT_TRUE(std::isnan(out[3]) && std::isnan(out[4]));
    }
    for (const int method : {0, 10, -1}) {
        double out = -7;
        EXPECT_EQ(v1::GetSampleQuantiles(x, 4, method, &out, p, 1), 30017);
        EXPECT_EQ(v1::GetSampleQuantiles(x, 0, method, &out, p, 1), 30017);
        EXPECT_EQ(out, -7);
    }
}

TEST(TrimmedMeans, CutAndRefuse) {
    const double x[] = {100, 2, 3, 4, 5, 6, 7, 8, 9, -50};
    int status = 77;
    EXPECT_EQ(v1::GetKelTrimmedMean(x, 10, &status), 5.5);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(v1::GetKelTrimmedMean(x, 9, &status), 16);
    EXPECT_EQ(v1::GetTrimmedMean(x + 1, 3, 0.34, &status), 3);
    EXPECT_EQ(v1::GetTrimmedMean(x, 2, 0.4999, &status), 51);
    EXPECT_TRUE(std::isnan(v1::GetTrimmedMean(x, 2, 0.5, &status)));
    EXPECT_TRUE(std::isnan(v1::GetTrimmedMean(x, 9, 1e300, &status)));
    EXPECT_TRUE(std::isnan(v1::GetTrimmedMean(x, 0, kInf, &status)));
    EXPECT_TRUE(std::isnan(v1::GetKelTrimmedMean(x, 0, &status)));
    for (const double fraction : {-1e-300, kNaN}) {
        status = 77;
        EXPECT_TRUE(std::isnan(v1::GetTrimmedMean(x, 10, fraction, &status)));
        EXPECT_EQ(status, 0);
    }
}

TEST(Modes, AgreeWithCounting) {
    ForRandomSamples(true, [](const Sample& x, auto& generator) {
        const auto room = static_cast<unsigned>(1 + generator() % 6);
        std::map<double, unsigned> frequencies;
        unsigned best = 1;
        for (const double value : x)
            if (!std::isnan(value)) best = std::max(best, ++frequencies[value]);
        Sample expected;
        for (const auto& [value, frequency] : frequencies)
            if (best > 1 && frequency == best && expected.size() < room) expected.push_back(value);
        Sample modes(room + 1, -7);
        unsigned count = 77;
        unsigned frequency = 77;
        ASSERT_EQ(v1::GetMode(x.data(), Size(x), modes.data(), room, &count, &frequency), 0);
        ASSERT_EQ(count, expected.size());
        ASSERT_EQ(frequency, best > 1 ? best : 0);
        expected.resize(room, kNaN);
        expected.push_back(-7);
        ASSERT_TRUE(std::equal(modes.begin(), modes.end(), expected.begin(), Same));
    });
    unsigned counts[] = {77, 77};
    const double twice[] = {1, 1};
    EXPECT_EQ(v1::GetMode(twice, 2, nullptr, 0, &counts[0], &counts[1]), 0);
    EXPECT_EQ(counts[0] + counts[1], 0u);
}

TEST(Summaries, AgreeWithTheFunctionsTheyJoin) {
    ForRandomSamples(false, [](const Sample& x, auto&) {
        const unsigned n = Size(x);
        v1::SecondSampleMoments moments;
        moments.count = n;
        v1::FiveNumberSummary five;
        v1::FiveNumberSummary alone;
        double modes[6] = {0, 0, 0, 0, 0, -7};
        double modesAlone[5];
        unsigned counts[4];
        ASSERT_EQ(v1::GetKel2013ExtendedSummary(&moments, &five, modes, &counts[0], &counts[1], x.data()), 0);
        ASSERT_EQ(v1::GetKelFiveNumberSummary(&alone, x.data(), n), 0);
        ASSERT_EQ(v1::GetMode(x.data(), n, modesAlone, 5, &counts[2], &counts[3]), 0);
        ASSERT_TRUE(counts[0] == counts[2] && counts[1] == counts[3] && modes[5] == -7);
        ASSERT_TRUE(std::equal(modes, modes + 5, modesAlone, Same));
        ASSERT_TRUE(Same(five.minimum, alone.minimum) && Same(five.firstQuartile, alone.firstQuartile));
        ASSERT_TRUE(Same(five.maximum, alone.maximum) && Same(five.thirdQuartile, alone.thirdQuartile));
        ASSERT_TRUE(Same(five.median, alone.median));
        ASSERT_TRUE(Same(moments.mean, v1::GetSampleMean(x.data(), n)));
        ASSERT_TRUE(Same(moments.variance, v1::GetSampleVariance(x.data(), n)));
    });
}

TEST(Spearman, IsOneForAnyIncreasingRelation) {
    Sample x(500);
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] = static_cast<double>(i * 101 % 499);
    Sample y(x);
    for (double& value : y)
        value = -std::exp(-value);
    int status = 77;
    EXPECT_NEAR(v1::GetSpearmanCorrelation(x.data(), y.data(), 500, &status), 1, 1e-14);
    EXPECT_EQ(status, 0);
    for (const unsigned n : {0u, 1u}) {
        status = 77;
        EXPECT_TRUE(std::isnan(v1::GetSpearmanCorrelation(x.data(), y.data(), n, &status)));
        EXPECT_EQ(status, 0);
    }
}

}  // namespace
}  // namespace zul
