#include "hypothesis/ranks/pair_selection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "hypothesis/ranks/all_pairs.h"

namespace zul::hypothesis {
namespace {

using Values = std::vector<double>;

std::uint64_t Bits(double x) {
    return std::bit_cast<std::uint64_t>(x);
}

// Of kinds that ties, neighbouring doubles, huge and vanishing numbers make hard.
Values Draw(int kind, std::size_t n, std::mt19937_64& engine) {
    constexpr double kHuge = 1.7e308;
    Values x(n);
    for (double& value : x) {
        const auto word = static_cast<std::int64_t>(engine());
        const double unit = static_cast<double>(word >> 11) * 0x1p-52;  // -1 to 1
        const int exponent = static_cast<int>(word & 2047) - 1074;
        const auto few = static_cast<double>(word & 7);
        const bool odd = word % 2 != 0;
        value = kind == 0   ? unit
                : kind == 1 ? few
                : kind == 2 ? 1 + few * 0x1p-52
                : kind == 3 ? std::ldexp(unit, exponent)
                : kind == 4 ? few * 5e-324
                : kind == 5 ? unit * kHuge
                : kind == 6 ? (odd       ? kHuge
                               : few < 4 ? -kHuge
                                         : 0)
                : kind == 7 ? 1 / unit
                            : (odd       ? few * 1e-300
                               : few < 4 ? -0.0
                                         : 1e300);
    }
    std::sort(x.begin(), x.end());
    return x;
}
constexpr int kKinds = 9;

// Some of the order statistics in any order, and the median, with more room and less.
template <typename Pairs>
void ExpectSorted(const Pairs& pairs, Values values, std::mt19937_64& engine) {
    std::sort(values.begin(), values.end());
    const std::size_t count = values.size();
    ASSERT_EQ(pairs.Count(), count);
    for (const std::size_t roomSize : {0U, 1U, 40U, 1000U}) {
        Values room(roomSize);
        PairSelection<Pairs> selection(pairs, room);
        for (int i = 0; i < 12; ++i) {
            const std::size_t k = i == 0 ? 1 : i == 1 ? count : 1 + engine() % count;
            EXPECT_EQ(Bits(selection.Smallest(k)), Bits(values[k - 1] + 0.0)) << k << " of " << count;
        }
        EXPECT_EQ(Bits(selection.Median()), Bits(test::Median(values))) << "median of " << count;
    }
}

TEST(PairSelection, OfAnyArgumentsIsThatOfAllPairsSorted) {
    std::mt19937_64 engine(7);
    for (int round = 0; round < 20; ++round)
        for (int kind = 0; kind < kKinds; ++kind) {
            SCOPED_TRACE(kind);
            const Values x = Draw(kind, 1 + engine() % 60, engine);
            const Values y = Draw(kind, 1 + engine() % 60, engine);
            ExpectSorted(Averages(x.data(), x.size()), test::Averages(x, false), engine);
            ExpectSorted(AveragesOfHalves(x.data(), x.size()), test::Averages(x, true), engine);
            ExpectSorted(Differences(x.data(), x.size(), y.data(), y.size()), test::Differences(x, y),
                         engine);
        }
}

}  // namespace
}  // namespace zul::hypothesis
