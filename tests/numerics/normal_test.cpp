#include "numerics/normal.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <tuple>
#include <vector>

#include "frame/error_state.h"
#include "numerics/gamma/incomplete_gamma_pair.h"
#include "numerics/half_pair.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

// What a refinement leaves.
auto Outcome(double x) {
    const auto& state = ErrorState();
    return std::make_tuple(std::bit_cast<std::uint64_t>(x), state.level, state.routine.View(), state.method,
                           state.count);
}

void ExpectTheFullLoop(double target, double start, Side side) {
    double full = start;
    incomplete_gamma::Newton(target, kOneHalf, &full, side);
    const auto expected = Outcome(full);
    double x = start;
    NewtonOfOneHalf(target, &x, side);
    EXPECT_EQ(Outcome(x), expected) << std::hexfloat << target << ' ' << start;
}

TEST(NormalQuantile, LeavesOutNothingThatMatters) {
    std::vector<double> roots = {1.2e-9, 0.1, 0.495, 0.505, 0.7, 0.98, 2, 10, 29.9999, 30, 30.0001, 200};
    const std::vector<double> points = test::SwitchPoints();
    EXPECT_GT(points.size(), 30u);
    for (const double point : points)
        for (const double distance : {0.0, 3e-16, 1e-9, 5e-7, 1e-6, 2e-6, 9e-6, 1e-5, 1.1e-5, 3e-5})
            for (const double sign : {-1, 1})
                roots.push_back(point * (1 + sign * distance));
    for (const double root : roots) {
        const test::Tails tails = test::PairAt(root);
        for (const double distance : {0.0, 1e-12, 9e-10, 1e-9, 1e-8, 3e-7, 9.9e-7, 1e-6, 1.1e-6, 1e-4, 0.02})
            for (const double sign : {-1, 1}) {
                ExpectTheFullLoop(tails.lower, root * (1 + sign * distance), Side::Lower);
                ExpectTheFullLoop(tails.upper, root * (1 + sign * distance), Side::Upper);
            }
    }
}

}  // namespace
}  // namespace zul::numerics
