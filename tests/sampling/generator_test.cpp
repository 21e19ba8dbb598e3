#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "frame/clock.h"
#include "frame/platform.h"
#include "processor/processor.h"
#include "sampling/alias_table.h"
#include "sampling/combined_block.h"
#include "sampling/combined_generator.h"
#include "sampling/seeder.h"

namespace zul::sampling {
namespace {

double NextLiterally(CombinedState* state) {
    state->Step();
    const auto& m = state->moduli;
    const double sum = state->s[1] / m[1] + state->s[0] / m[0] + state->s[2] / m[2];
    return sum - std::floor(sum);
}

// Uniforms wait for calls that may come in another mode.
TEST(CombinedBlock, DoesNotDependOnTheRoundingOfTheHost) {
    constexpr unsigned kUpwards = 0x5F80;
    States states = {1, 1, 1};
    double expected[8];
    double upwards[8];
    FillBlock(expected, 8, {}, &states);
    states = {1, 1, 1};
    frame::SetControl(kUpwards);
    FillBlock(upwards, 8, {}, &states);
    EXPECT_EQ(frame::GetControl() & ~0x3Fu, kUpwards);
    frame::SetControl(frame::kDefaultControl);
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(upwards[i], expected[i]);
}

// Each component runs through all of its states: every quotient is met, though not every sum.
TEST(CombinedBlock, GivesTheBitsOfSingleSteps) {
    constexpr std::size_t kCount = 32768;
    std::vector<void (*)(double*, std::size_t, Line, States*)> ways = {FillBlockByTwos};
    if (processor::HasFusedMultiplyAdd()) ways.push_back(FillBlockByFours);
    for (const auto fill : ways) {
        for (const double seed : {0.0, 1234567890123.0, 32362.0 * 31726 * 31656 - 1}) {
            CombinedState expected;
            expected.Seed(seed);
            States states = expected.s;
            std::vector<double> out(kCount);
            fill(out.data(), kCount, {}, &states);
            for (std::size_t i = 0; i < kCount; ++i)
                ASSERT_EQ(out[i], NextLiterally(&expected)) << seed << " " << i;
            EXPECT_EQ(states, expected.s);
            fill(out.data(), 8, {7.25, -3.5}, &states);
            for (std::size_t i = 0; i < 8; ++i)
                EXPECT_EQ(out[i], 7.25 * NextLiterally(&expected) - 3.5);
        }
    }
}

TEST(Seeder, ReadsTheHundredthsBackwards) {
    EXPECT_EQ(SeedOfTime({0, 0, 0, 9}), 0);
    EXPECT_EQ(SeedOfTime({0, 0, 0, 10}), 1000000 * 3250000.0);
    EXPECT_EQ(SeedOfTime({23, 59, 59, 999}), 9999368 * 3250000.0);
    EXPECT_EQ(SeedOfTime({12, 34, 56, 789}), 8769254 * 3250000.0);
    const frame::TimeOfDay now = frame::LocalTimeOfDay();
    EXPECT_TRUE(now.hour >= 0 && now.hour < 24 && now.minute < 60 && now.second <= 60 &&
                now.millisecond < 1000);
}

class OneUniform final : public objects::UniformSource {
public:
    explicit OneUniform(double u) : u_(u) { SetBlock(&u_, &u_ + 1); }

private:
    void Refill() override { SetBlock(&u_, &u_ + 1); }
    double u_;
};

// Every index gets its share of the unit interval.
TEST(AliasTable, SharesAreTheProbabilities) {
    constexpr unsigned kSize = 6;
    constexpr int kSteps = 120'000;
    const double probabilities[kSize] = {4, 0, 1, 9, 0.5, 5.5};
    AliasTable table(kSize);
    ASSERT_TRUE(table.Obtained());
    table.Prepare(probabilities);
    int counts[kSize] = {};
    for (int i = 0; i < kSteps; ++i) {
        OneUniform source((i + 0.5) / kSteps);
        ++counts[table.Draw(&source)];
    }
    for (unsigned i = 0; i < kSize; ++i)
        EXPECT_NEAR(counts[i], probabilities[i] / 20 * kSteps, kSize) << i;
    const double quarters[] = {1, 3};
    AliasTable halves(2);  // one half of the first is the second's
    halves.Prepare(quarters);
    OneUniform at(0.25);
    OneUniform below(0.2499);
    EXPECT_EQ(halves.Draw(&at), 0U);
    EXPECT_EQ(halves.Draw(&below), 1U);
}

}  // namespace
}  // namespace zul::sampling
