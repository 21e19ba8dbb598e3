// The incomplete beta pair in lanes against the scalar routine around each of its switch points.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

#include "elementary/arguments.h"
#include "frame/error_state.h"
#include "numerics/beta/beta_shapes.h"
#include "numerics/beta/incomplete_beta.h"
#include "processor/level.h"
#include "zul/distributions.h"

namespace zul::numerics {
namespace {

using processor::Level;

struct Shapes {
    double a;
    double b;
};

// Every branch on both sides of 0.5: whole and other shapes, small ones, those whose density takes the deviances,
// series that end by themselves or are too long for the lanes.
constexpr Shapes kShapes[] = {{0.5, 0.5},   {2, 5},         {30, 4},      {400, 600},    {2.5, 3.7},
                              {12.3, 40.6}, {0.3, 7},       {0.02, 0.7},  {300.5, 1.5},  {1, 3},
                              {0.1, 80},    {499.5, 500.5}, {700, 700.5}, {2.5, 5000.5}, {1e-3, 1e-3},
                              {4e4, 5.5e4}, {0.99, 1.01},   {1e5, 1e-3}};

// Where the count of terms or the branch of the scalar routine is about to change, x is between the two.
void AddSwitchPoints(const BetaShapes& shapes, std::vector<double>& points) {
    struct Path {
        int method;
        int count;
        bool operator==(const Path&) const = default;
    };
    const auto pathAt = [&](double x) {
        double lower = 0;
        double upper = 0;
        beta_df(x, shapes, &lower, &upper, nullptr);
        return Path{frame::ErrorState().method, frame::ErrorState().count};
    };
    constexpr int kSteps = 250;
    for (int k = 1; k < kSteps; ++k) {
        double low = static_cast<double>(k) / kSteps;
        double high = static_cast<double>(k + 1) / kSteps;
        const Path path = pathAt(low);
        if (pathAt(high) == path) continue;
        while (std::nextafter(low, high) < high) {
            const double middle = low + (high - low) / 2;
            (pathAt(middle) == path ? low : high) = middle;
        }
        points.insert(points.end(), {low, high, low * (1 - 1e-15), high * (1 + 1e-13)});
    }
}

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
        std::vector<double> x;
        AddSwitchPoints(BetaShapes(a, b), x);
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
