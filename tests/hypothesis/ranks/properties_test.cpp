// Laws against enumeration, tests against their intervals, mirror images.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>
#include <random>
#include <vector>

#include "support/reference_table.h"
#include "zul/rank_tests.h"

namespace zul {
namespace {

using Values = std::vector<double>;
using Alternative = AlternativeHypothesis;
constexpr auto kTwoSided = IntervalType::TwoSided;

// Multiples of 1/16, with ties where `kinds` are few: their shifts and differences are exact.
Values Draw(std::size_t n, unsigned kinds, std::mt19937_64& engine) {
    Values x(n);
    for (double& value : x)
        value = static_cast<double>(static_cast<int>(engine() % kinds) - static_cast<int>(kinds / 3)) / 16;
    return x;
}

v0::Wilcoxon Signed(const Values& x, double median0, bool normal = false, double confidence = 0.9,
                    Alternative alternative = Alternative::NotEqual) {
    v0::Wilcoxon r;
    r.n = static_cast<unsigned>(x.size());
    EXPECT_EQ(RunWilcoxon(&r, x.data(), normal, confidence, kTwoSided, alternative, median0), 0);
    return r;
}

v0::MannWhitney RankSum(const Values& x, const Values& y, bool normal = false, double confidence = 0.9,
                        Alternative alternative = Alternative::NotEqual) {
    v0::MannWhitney r;
    r.n1 = static_cast<unsigned>(x.size());
    r.n2 = static_cast<unsigned>(y.size());
    EXPECT_EQ(RunMannWhitney(&r, x.data(), y.data(), normal, confidence, kTwoSided, alternative) % 30023, 0);
    return r;
}

// Twice the mean rank of each value by its size.
std::vector<int> DoubledRanks(const Values& x) {
    std::vector<int> ranks;
    for (const double a : x) {
        const auto smaller = std::count_if(x.begin(), x.end(), [a](double b) { return b < a; });
        ranks.push_back(static_cast<int>(2 * smaller + std::count(x.begin(), x.end(), a) + 1));
    }
    return ranks;
}

// The shares of the subsets whose rank sum is up to, and from, that of `subset`; accepts(subset) are possible ones.
template <typename Accepts>
void ExpectTails(const std::vector<int>& ranks, unsigned subset, Accepts accepts, double less,
                 double greater) {
    const auto sum = [&](unsigned of) {
        int total = 0;
        for (std::size_t i = 0; i < ranks.size(); ++i)
            total += (of >> i & 1U) != 0 ? ranks[i] : 0;
        return total;
    };
    double all = 0;
    double upTo = 0;
    double from = 0;
    for (unsigned of = 0; of < 1U << ranks.size(); ++of) {
        if (!accepts(of)) continue;
        ++all;
        upTo += sum(of) <= sum(subset) ? 1 : 0;
        from += sum(of) >= sum(subset) ? 1 : 0;
    }
    EXPECT_TRUE(test::IsNear(less, upTo / all, 1e-14));
    EXPECT_TRUE(test::IsNear(greater, from / all, 1e-14));
}

TEST(RankTests, ExactLawsAreThoseOfAllSubsets) {
    std::mt19937_64 engine(5);
    for (int round = 0; round < 200; ++round) {
        const unsigned kinds = round % 3 == 0 ? 5 : round % 3 == 1 ? 9 : 400;
        const Values x = Draw(1 + engine() % 10, kinds, engine);
        Values used;
        unsigned positive = 0;
        for (const double value : x) {
            if (value > 0) positive |= 1U << used.size();
            if (value != 0) used.push_back(std::abs(value));
        }
        ExpectTails(
            DoubledRanks(used), positive, [](unsigned) { return true; },
            Signed(x, 0, false, 0.9, Alternative::LessThan).pValue,
            Signed(x, 0, false, 0.9, Alternative::GreaterThan).pValue);

        Values both = Draw(2 + engine() % 10, kinds, engine);
        both.push_back(100);  // not all equal
        const auto n1 = static_cast<int>(1 + engine() % (both.size() - 1));
        const Values first(both.begin(), both.begin() + n1);
        const Values second(both.begin() + n1, both.end());
        ExpectTails(
            DoubledRanks(both), (1U << n1) - 1, [n1](unsigned of) { return std::popcount(of) == n1; },
            RankSum(first, second, false, 0.9, Alternative::LessThan).pValue,
            RankSum(first, second, false, 0.9, Alternative::GreaterThan).pValue);
    }
}

// Between two neighbouring pairs a hypothesis is rejected at the achieved level exactly where it is outside.
TEST(RankTests, RejectWhatTheIntervalExcludes) {
    std::mt19937_64 engine(6);
    for (int round = 0; round < 60; ++round) {
        const bool normal = round % 2 == 1;
        Values x(5 + engine() % 8);
        Values y(5 + engine() % 8);
        for (Values* const values : {&x, &y})
            for (double& value : *values)
                value = std::ldexp(static_cast<double>(engine() >> 40), -20);  // no two pairs alike, nearly
        const v0::Wilcoxon w = Signed(x, 0, normal);
        const v0::MannWhitney m = RankSum(x, y, normal);
        for (int i = 0; i < 40; ++i) {
            const double at = std::ldexp(static_cast<double>(engine() >> 38), -21) - 16;
            const bool isOutside = at < w.lowerBound || at > w.upperBound;
            EXPECT_EQ(Signed(x, at, normal).pValue <= 1 - w.achievedConfidence + 1e-12, isOutside);
            Values shifted = x;
            for (double& value : shifted)
                value -= at - 8;
            const bool excludes = at - 8 < m.lowerBound || at - 8 > m.upperBound;
            EXPECT_EQ(RankSum(shifted, y, normal).pValue <= 1 - m.achievedConfidence + 1e-12, excludes);
        }
    }
}

TEST(RankTests, MirrorImagesAndShifts) {
    std::mt19937_64 engine(8);
    for (int round = 0; round < 60; ++round) {
        const bool normal = round % 2 == 1;
        const Values x = Draw(2 + engine() % 120, round % 3 == 0 ? 20 : 4000, engine);
        const Values y = Draw(2 + engine() % 120, round % 3 == 0 ? 20 : 4000, engine);
        Values negated = x;
        Values moved = x;
        for (std::size_t i = 0; i < x.size(); ++i) {
            negated[i] = -x[i];
            moved[i] = x[i] + 1024;
        }
        const v0::Wilcoxon w = Signed(x, 1.25, normal);
        const v0::Wilcoxon v = Signed(negated, -1.25, normal);
        const v0::Wilcoxon up = Signed(moved, 1025.25, normal);
        const v0::MannWhitney a = RankSum(x, y, normal);
        const v0::MannWhitney b = RankSum(y, x, normal);
        const v0::MannWhitney high = RankSum(moved, y, normal);
        test::ExpectExact({{v.estimate, -w.estimate},
                           {v.lowerBound, -w.upperBound},
                           {up.estimate, w.estimate + 1024},
                           {up.statistic, w.statistic},
                           {up.lowerBound, w.lowerBound + 1024},
                           {up.pValue, w.pValue},
                           {b.estimate, -a.estimate},
                           {b.lowerBound, -a.upperBound},
                           {b.u, static_cast<double>(x.size() * y.size()) - a.u},
                           {high.estimate, a.estimate + 1024},
                           {high.upperBound, a.upperBound + 1024}});
        test::ExpectExact({{v.pValue, w.pValue}, {b.pValue, a.pValue}, {b.pValueTies, a.pValueTies}}, 1e-13);
    }
}

// The differences of two of these do not overflow, but their sum over the treatments would.
TEST(RankTests, EffectsOfHugeValuesAreFinite) {
    Values x(20, -1e307);
    x[0] = 1e307;
    Values effects(20);
    v0::Friedman r;
    r.blocks = 1;
    r.treatments = 20;
    EXPECT_EQ(RunFriedman(&r, x.data(), nullptr, effects.data()), 0);
    EXPECT_DOUBLE_EQ(effects[0], 1.9e307);
    EXPECT_DOUBLE_EQ(r.grandMedian, -9e306);
}

TEST(RankTests, GroupsOfMoreValuesThanACount) {
    const unsigned sizes[] = {3'000'000'000, 3'000'000'000};
    v0::KruskalWallis kruskal;
    v0::MoodMedian mood;
    kruskal.groups = mood.groups = 2;
    EXPECT_EQ(RunKruskalWallis(&kruskal, nullptr, sizes, nullptr, nullptr, nullptr), 30011);
    EXPECT_EQ(RunMoodMedian(&mood, nullptr, sizes, nullptr, nullptr, nullptr, nullptr), 30011);
}

}  // namespace
}  // namespace zul
