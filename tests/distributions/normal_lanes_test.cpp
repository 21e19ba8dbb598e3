// The normal family's lanes on both sides of each point at which the elements take other operations.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <vector>

#include "elementary/arguments.h"
#include "frame/error_state.h"
#include "numerics/half_pair.h"
#include "processor/level.h"
#include "zul/distributions.h"

namespace zul::test {
namespace {

using processor::Level;

// Every call begins elsewhere in its block, and has other neighbours.
std::vector<double> Shuffled(std::vector<double> values, RandomArguments* random) {
    for (std::size_t k = values.size(); k > 1; --k)
        std::swap(values[k - 1], values[random->Bits() % k]);
    return values;
}

template <typename Call>
void ExpectAlikeAtEveryLevel(const std::vector<double>& in, Call call) {
    const auto results = [&](Level level) {
        std::vector<double> out(in.size());
        processor::LimitLevel(level);
        call(out.data(), in.data(), in.size());
        processor::LimitLevel(Level::Eight);
        return out;
    };
    const std::vector<double> expected = results(Level::One);
    const int terms = frame::ErrorState().count;
    for (const Level level : {Level::Two, Level::Four, Level::Eight}) {
        if (level > processor::HighestLevel()) break;
        const std::vector<double> actual = results(level);
        EXPECT_EQ(frame::ErrorState().count, terms);
        for (std::size_t i = 0; i < in.size(); ++i)
            ASSERT_EQ(std::bit_cast<std::uint64_t>(actual[i]), std::bit_cast<std::uint64_t>(expected[i]))
                << std::hexfloat << in[i] << " at level " << static_cast<int>(level);
    }
}

TEST(NormalLanes, TakeTheSameTermsBesideEverySwitchPoint) {
    std::vector<double> points = SwitchPoints();
    ASSERT_GT(points.size(), 30U);
    // The forms of the logarithm and the exponential; ends of the cells, of the lanes, of the normal densities.
    for (const double x :
         {0.495, 0.5, 0.505, 0.9801986, 0.25, 2.0, 4.0625, 30.0, 0x1p-40, 288.0, 512.0, 684.5})
        points.push_back(x);
    std::vector<double> deviates;
    std::vector<double> probabilities;
    for (const double point : points)
        for (const double distance : {0.0, 2e-16, 4e-16, 1e-15, 1e-9, 4e-7, 1e-6, 3e-6, 1e-5, 1e-3})
            for (const double sign : {-1, 1}) {
                const double x = point * (1 + sign * distance);
                deviates.push_back(sign * std::sqrt(2 * x));
                const Tails tails = PairAt(x);
                probabilities.insert(probabilities.end(), {tails.upper / 2, 1 - tails.upper / 2});
                probabilities.insert(probabilities.end(), {0.5 - tails.lower / 2, tails.upper});
            }
    RandomArguments random;
    for (int round = 0; round < 4; ++round) {
        for (const bool upper : {false, true}) {
            ExpectAlikeAtEveryLevel(
                Shuffled(deviates, &random),
                [&](double* out, const double* in, std::size_t n) { NormalCdf(out, in, n, 0, 1, upper); });
            ExpectAlikeAtEveryLevel(
                Shuffled(probabilities, &random),
                [&](double* out, const double* in, std::size_t n) { NormalInvCdf(out, in, n, 0, 1, upper); });
        }
        ExpectAlikeAtEveryLevel(
            Shuffled(deviates, &random),
            [](double* out, const double* in, std::size_t n) { NormalPdf(out, in, n, 0, 1); });
    }
}

}  // namespace
}  // namespace zul::test
