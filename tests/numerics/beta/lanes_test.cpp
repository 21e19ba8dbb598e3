// The incomplete beta pair in lanes against the scalar routine around each of its switch points.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "elementary/arguments.h"
#include "numerics/beta/switch_points.h"
#include "processor/level.h"
#include "zul/distributions.h"

namespace zul::numerics {
namespace {

using processor::Level;

void ExpectElements(const std::vector<double>& x, double a, double b, bool upper) {
    std::vector<double> expected(x.size());
    std::vector<double> actual(x.size());
    processor::LimitLevel(Level::One);
    BetaCdf(expected.data(), x.data(), x.size(), a, b, upper);
    for (const Level level : {Level::Four, Level::Eight}) {
        processor::LimitLevel(level);
        BetaCdf(actual.data(), x.data(), x.size(), a, b, upper);
        processor::LimitLevel(Level::Eight);
        for (std::size_t i = 0; i < x.size(); ++i) {
            ASSERT_EQ(std::bit_cast<std::uint64_t>(actual[i]), std::bit_cast<std::uint64_t>(expected[i]))
                << "beta(" << a << ", " << b << ") at " << x[i] << ", level " << static_cast<int>(level);
        }
    }
}

TEST(BetaLanes, HaveTheBitsOfThePairAroundItsSwitchPoints) {
    test::RandomArguments random;
    for (const auto [a, b] : kShapes) {
        std::vector<double> x = SwitchPoints(BetaShapes(a, b));
        for (int k = 0; k < 2000; ++k) {
            x.push_back(random.Uniform(0, 1));
            x.push_back(random.AnyDouble(1e-200, 0.5));
            x.push_back(1 - random.AnyDouble(1e-16, 0.5));
        }
        // Neighbours of all branches beside each other.
        for (std::size_t i = x.size() - 1; i > 0; --i)
            std::swap(x[i], x[random.Bits() % (i + 1)]);
        for (const bool upper : {false, true})
            ASSERT_NO_FATAL_FAILURE(ExpectElements(x, a, b, upper));
    }
}

}  // namespace
}  // namespace zul::numerics
