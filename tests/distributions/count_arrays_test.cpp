// Array calls that compute each whole number once for a block, against one element after the other.
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <exception>
#include <limits>
#include <string>
#include <vector>

#include "elementary/arguments.h"
#include "frame/error_state.h"
#include "processor/level.h"
#include "support/float_mode.h"
#include "zul/distributions.h"

namespace zul::test {
namespace {

using processor::Level;

template <typename Call>
void ExpectElements(const std::vector<double>& in, Call call) {
    std::vector<double> results[2];
    frame::NumericErrorState states[2];
    std::string exceptions[2];
    unsigned modes[2];
    for (const int kept : {0, 1}) {
        results[kept].resize(in.size());
        processor::LimitLevel(kept ? Level::Eight : Level::One);
        frame::ErrorState() = {};
        try {
            call(results[kept].data(), in.data(), in.size());
        } catch (const std::exception& error) {
            exceptions[kept] = error.what();
        }
        modes[kept] = ModeWithoutFlags();
        _mm_setcsr(kDefaultMode);
        states[kept] = frame::ErrorState();
    }
    for (std::size_t i = 0; i < in.size(); ++i) {
        ASSERT_EQ(std::bit_cast<std::uint64_t>(results[1][i]), std::bit_cast<std::uint64_t>(results[0][i]))
            << in[i];
    }
    EXPECT_EQ(exceptions[1], exceptions[0]);
    EXPECT_EQ(modes[1], modes[0]);
    EXPECT_EQ(states[1].level, states[0].level);
    EXPECT_EQ(states[1].routine.View(), states[0].routine.View());
    EXPECT_EQ(states[1].method, states[0].method);
    EXPECT_EQ(states[1].count, states[0].count);
}

TEST(RepeatedCounts, AreComputedAsTheyStand) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kBinomials[][2] = {{10, 0.5}, {40, 0.03}, {1000, 0.7}, {3000, 0.001}, {5, 1}, {0, 0.5}};
    constexpr double kWaits[][2] = {{0.5, 1}, {0.2, 1}, {0.03, 7}, {0.9, 40}, {0.3, 2.5}, {1, 3}};
    constexpr double kOthers[] = {-1, -1e10, 0, 0.5, 7.5, 1e10, 1e300, kNaN, -0.0};
    RandomArguments random;
    for (int round = 0; round < 20; ++round) {
        const std::uint64_t limit = round % 2 ? 4000 : 50;
        std::vector<double> in(1500);
        for (double& x : in)
            x = static_cast<double>(random.Bits() % limit);
        for (int k = 0; k < round; ++k)
            in[random.Bits() % in.size()] = kOthers[random.Bits() % std::size(kOthers)];
        // Outside of the range last: the state is that of the one before.
        if (round % 3 == 0) in.back() = -1;
        for (const auto [n, prob] : kBinomials) {
            const int trials = static_cast<int>(n);
            const auto each = [&, n = n, prob = prob](auto... upper) {
                ExpectElements(in, [&](double* out, const double* x, std::size_t count) {
                    if constexpr (sizeof...(upper) == 0)
                        BinomialPdf(out, x, count, trials, prob);
                    else
                        BinomialCdf(out, x, count, n, prob, upper...);
                });
            };
            ASSERT_NO_FATAL_FAILURE((each(), each(false), each(true)));
        }
        for (const auto [prob, r] : kWaits) {
            const auto each = [&, prob = prob, r = r](auto... upper) {
                ExpectElements(in, [&](double* out, const double* x, std::size_t count) {
                    if constexpr (sizeof...(upper) == 0)
                        NegBinomialPdf(out, x, count, prob, r);
                    else
                        NegBinomialCdf(out, x, count, prob, r, upper...);
                });
            };
            ASSERT_NO_FATAL_FAILURE((each(), each(false), each(true)));
        }
    }
}

}  // namespace
}  // namespace zul::test
