#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

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

// Ties, both zeros and infinities, NaN of either sign, and numbers of every size. The counts lie on both sides
// of the one from which on the values are sorted by their digits.
template <typename Check>
void ForRandomSamples(Check check) {
    std::mt19937_64 generator(17);
    for (int round = 0; round < 300; ++round) {
        Sample x(round < 130 ? static_cast<std::size_t>(round) : generator() % 700);
        const std::uint64_t kinds = generator() % 3;
        for (double& value : x) {
            const double special[] = {0, -0.0, kInf, -kInf, 1.23456e30, 5e-324, kNaN, -kNaN};
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

// NaN come after all others and are tied with none; equal values keep their order.
TEST(RanksAndOrder, AgreeWithCounting) {
    ForRandomSamples([](const Sample& x, auto&) {
        Sample ranks(x.size());
        std::vector<unsigned> order(x.size());
        ASSERT_EQ(v1::GetRank(x.data(), Size(x), ranks.data()), 0);
        v1::GetOrder(x.data(), Size(x), order.data());
        for (std::size_t i = 0; i < x.size(); ++i) {
            double rank = 1;
            for (std::size_t j = 0; j < x.size(); ++j) {
                if (x[j] < x[i] || (std::isnan(x[i]) && (!std::isnan(x[j]) || j < i))) rank += 1;
                if (x[j] == x[i] && j != i) rank += 0.5;
            }
            ASSERT_EQ(ranks[i], rank);
        }
        const Sample sorted = Sorted(x);
        for (std::size_t k = 0; k < x.size(); ++k)
            ASSERT_TRUE(Same(x.at(order[k]), sorted[k])) << k << " of " << x.size();
        ASSERT_EQ(std::set<unsigned>(order.begin(), order.end()).size(), x.size());
    });
}

// Values that the estimates of a sort by places find easy or hard, so many that it is used.
Sample DrawMany(const char* kind, std::size_t n) {
    std::mt19937_64 generator(n);
    std::normal_distribution<double> normal(100, 1);
    const auto is = [name = std::string_view(kind)](std::string_view other) { return name == other; };
    Sample x(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double special[] = {0, -0.0, kInf, -kInf, kNaN, -kNaN};
        const double drawn = normal(generator);
        const double down = static_cast<double>(n - i);
        x[i] = is("normal")       ? drawn
               : is("any bits")   ? std::bit_cast<double>(generator())  // NaN of many kinds among them
               : is("ties")       ? std::round(drawn)
               : is("constant")   ? 7
               : is("descending") ? down
               // A tenth are so near each other that all have one estimate, and the wrong way round.
               : is("crowded") && i % 10 == 0 ? 100 + down * 0x1p-46
               // The middle of most samples is one value.
               : is("half zero") && i % 2 == 0 ? 0
               : is("special") && i % 3 == 0   ? special[generator() % std::size(special)]
               : is("outliers")                ? std::copysign(std::exp(drawn * drawn / 20), drawn - 100)
                                               : drawn;
    }
    return x;
}

bool IsBefore(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return !std::isnan(a) && std::isnan(b);
    return a < b || (a == b && std::signbit(a) && !std::signbit(b));
}

// Bit for bit, down to which NaN stands where. The counts are those from which estimates are used for places of
// indices and for values alone.
TEST(RanksAndOrder, AreThoseOfAStableSort) {
    for (const std::size_t n : {4095u, 4096u, 30000u, 1u << 18}) {
        for (const char* const kind : {"normal", "any bits", "ties", "constant", "descending", "crowded",
                                       "half zero", "special", "outliers"}) {
            SCOPED_TRACE(std::string(kind) + ", " + std::to_string(n));
            const Sample x = DrawMany(kind, n);
            std::vector<unsigned> expected(n);
            std::iota(expected.begin(), expected.end(), 0u);
            std::stable_sort(expected.begin(), expected.end(),
                             [&x](unsigned a, unsigned b) { return IsBefore(x[a], x[b]); });
            std::vector<unsigned> order(n);
            v1::GetOrder(x.data(), Size(x), order.data());
            ASSERT_EQ(order, expected);

            Sample probabilities(n / 7);
            for (std::size_t j = 0; j < probabilities.size(); ++j)
                probabilities[j] = (static_cast<double>(7 * j) + 0.5) / static_cast<double>(n);
            Sample out(probabilities.size());
            v1::GetSampleQuantiles(x.data(), Size(x), 1, out.data(), probabilities.data(),
                                   Size(probabilities));
            for (std::size_t j = 0; j < out.size(); ++j)
                ASSERT_EQ(std::bit_cast<std::uint64_t>(out[j]),
                          std::bit_cast<std::uint64_t>(x[expected[7 * j]]));
        }
    }
}

// The inverse of the empirical distribution shows which values stand where.
TEST(Quantiles, SortTheValues) {
    ForRandomSamples([](const Sample& x, auto& generator) {
        const double p = static_cast<double>(1 + generator() % 63) / 64;  // n p is exact
        double out = 0;
        ASSERT_EQ(v1::GetSampleQuantiles(x.data(), Size(x), 1, &out, &p, 1), 0);
        const auto place = static_cast<std::size_t>(std::ceil(p * static_cast<double>(x.size())));
        ASSERT_TRUE(Same(out, x.empty() ? kNaN : Sorted(x)[place - 1])) << p << " of " << x.size();
    });
}

TEST(ExtendedSummary, JoinsTheOthersAndFiveModes) {
    const double x[] = {7, 1, 7, 2, 3, 1, 5, 2, 3, 6, 5, 6, 0};
    v1::SecondSampleMoments moments;
    moments.count = 13;
    v1::FiveNumberSummary five;
    double modes[6] = {0, 0, 0, 0, 0, -7};
    unsigned count = 0;
    unsigned frequency = 0;
    EXPECT_EQ(v1::GetKel2013ExtendedSummary(&moments, &five, modes, &count, &frequency, x), 0);
    EXPECT_TRUE(moments.sum == 48 && five.minimum == 0 && five.firstQuartile == 1.5 && five.maximum == 7);
    EXPECT_TRUE(count == 5 && frequency == 2 && modes[0] == 1 && modes[4] == 6 && modes[5] == -7);
    const double highest[] = {4, 1, 4};
    EXPECT_EQ(v1::GetMode(highest, 3, modes, 5, &count, &frequency), 0);
    EXPECT_TRUE(count == 1 && frequency == 2 && modes[0] == 4);
}

}  // namespace
}  // namespace zul
