#include "zul/sampler.h"

#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "sampling/slots.h"
#include "support/reference_table.h"
#include "zul/frame.h"

namespace zul {
namespace {

using test::MakeSampler;
using test::SamplerPtr;
constexpr double kStates = 32362.0 * 31726.0 * 31656.0;
constexpr unsigned kTrapping = 0x1900;
constexpr unsigned kDefault = 0x1F80;

class Sampler : public testing::Test {
protected:
    void TearDown() override { ResetFpuStates(); }
};

std::vector<double> Draw(ISampler& sampler, const test::Case& call, unsigned count) {
    std::vector<double> out(count);
    EXPECT_EQ(test::Slots().at(call.slot).draw(sampler, out.data(), count, call.parameters), 0) << call.slot;
    return out;
}

// "Normal 0 1".
std::vector<double> Draw(ISampler& sampler, const std::string& call, unsigned count) {
    return Draw(sampler, test::ReadCase(call), count);
}

// "Normal 0 1 x3; Uniform 0 1 x2": calls in a row.
std::vector<double> DrawChain(ISampler& sampler, const std::string& calls) {
    std::vector<double> out;
    std::istringstream text(calls);
    for (std::string call; std::getline(text >> std::ws, call, ';');) {
        const std::size_t count = call.rfind('x');
        const auto drawn =
            Draw(sampler, call.substr(0, count), static_cast<unsigned>(std::stoul(call.substr(count + 1))));
        out.insert(out.end(), drawn.begin(), drawn.end());
    }
    return out;
}

TEST_F(Sampler, GivesTheExactUniforms) {
    test::ForEachRow("sampling/uniform.csv", [](const std::vector<double>& row) {
        const SamplerPtr sampler = MakeSampler(row[0]);
        EXPECT_EQ(sampler->GetSeed(), row[4]);
        const std::vector<double> expected(row.begin() + 5, row.end());
        EXPECT_EQ(Draw(*sampler, "Uniform 0 1", static_cast<unsigned>(expected.size())), expected);
    });
}

// The last values of each call, and by the state how many uniforms it took.
TEST_F(Sampler, MatchesReference) {
    for (const char* file : {"sampling/deviates.csv", "sampling/long_runs.csv"}) {
        for (const test::Row& row : test::ReadTable(file, ',')) {
            const SamplerPtr sampler = MakeSampler(test::Number(row.at(1)));
            const auto count = static_cast<unsigned>(std::stoul(row.at(3)));
            const std::vector<double> out = row[0] == "CallChain"
                                                ? DrawChain(*sampler, row.at(2))
                                                : Draw(*sampler, {row[0], test::Numbers(row.at(2))}, count);
            const std::vector<double> expected = test::Numbers(row.at(5));
            ASSERT_LE(expected.size(), out.size());
            for (std::size_t i = 0; i < expected.size(); ++i)
                EXPECT_TRUE(test::IsNear(out[out.size() - expected.size() + i], expected[i], 1e-12))
                    << row[0] << " " << row[2] << " " << i;
            EXPECT_EQ(sampler->GetSeed(), test::Number(row.at(4))) << row[0] << " " << row[2];
            EXPECT_EQ(_mm_getcsr() & ~0x3FU, kDefault) << row[0] << " " << row[2];
        }
    }
}

TEST_F(Sampler, SeedsRoundTrip) {
    test::ForEachRow("sampling/get_seed.csv", [](const std::vector<double>& row) {
        const SamplerPtr sampler = MakeSampler(row[0]);
        Draw(*sampler, "Uniform 0 1", static_cast<unsigned>(row[1]));
        EXPECT_EQ(sampler->GetSeed(), row[2]);
    });
    const SamplerPtr sampler = MakeSampler(1);
    for (const double seed : {0.0, 0.9, -5.7, 31655.0, 31656.0, kStates - 1, kStates, kStates * 3 + 17.5,
                              32361.0 * 31726 * 31656 - 0.00390625, 1e300, -1e300}) {
        sampler->Reseed(seed);
        EXPECT_EQ(sampler->GetSeed(), std::floor(std::fmod(std::abs(seed), kStates))) << seed;
    }
    for (const double seed : {kNaN, kInf, -kInf}) {
        sampler->Reseed(seed);
        EXPECT_EQ(sampler->GetSeed(), 0);
    }
    EXPECT_EQ(Draw(*sampler, "Uniform 0 1", 1)[0],
              std::fmod(146 / 31727.0 + 157 / 32363.0 + 142 / 31657.0, 1));
}

TEST_F(Sampler, DoesNotDependOnHowTheCallsAreDivided) {
    const auto whole = Draw(*MakeSampler(7), "Uniform -2 3", 2000);
    const SamplerPtr divided = MakeSampler(7);
    const SamplerPtr other = MakeSampler(8);
    const auto othersFirst = Draw(*MakeSampler(8), "Uniform 0 1", 40);
    std::vector<double> parts;
    for (const unsigned count : {1U, 0U, 300U, 3U, 252U, 1U, 1024U, 400U, 19U}) {
        const auto part = Draw(*divided, "Uniform -2 3", count);
        parts.insert(parts.end(), part.begin(), part.end());
        divided->Reseed(divided->GetSeed());
    }
    EXPECT_EQ(parts, whole);
    EXPECT_EQ(Draw(*other, "Uniform 0 1", 40), othersFirst);
}

TEST_F(Sampler, NoSeedIsTheTimeOfDay) {
    for (const double seed : {0.0, -0.0, kNaN, kInf}) {
        const double before = Seeder();
        const double drawn = MakeSampler(seed)->GetSeed();
        EXPECT_TRUE(drawn != 0 || before == 0) << seed;
        EXPECT_EQ(std::fmod(drawn, 3250000.0), 0);
    }
    DeleteISampler(nullptr);
}

// Against the shuffle told with a map of the places that changed, on both sides of where the method changes.
TEST_F(Sampler, IndicesWithoutReplacementAreThoseOfAShuffle) {
    for (const auto& [population, count] : std::vector<std::pair<unsigned, unsigned>>{
             {64, 1}, {6399, 100}, {6400, 100}, {128000, 2000}, {200, 200}, {4294967295, 3000}}) {
        const SamplerPtr sampler = MakeSampler(population);
        const double seed = sampler->GetSeed();
        std::vector<unsigned> indices(count);
        EXPECT_EQ(sampler->SampleIndices(indices.data(), population, count, true), 0);
        const double state = sampler->GetSeed();
        sampler->Reseed(seed);
        std::map<unsigned, unsigned> changed;
        const auto at = [&](unsigned place) { return changed.contains(place) ? changed[place] : place; };
        for (unsigned i = 0; i < count; ++i) {
            const unsigned left = population - i;
            const auto place = static_cast<unsigned>(Draw(*sampler, "Uniform 0 1", 1)[0] * left);
            ASSERT_EQ(indices[i], at(place)) << population << " " << i;
            changed[place] = at(left - 1);
        }
        EXPECT_EQ(sampler->GetSeed(), state);
    }
}

TEST_F(Sampler, IndicesOfNothingAreZeros) {
    const SamplerPtr sampler = MakeSampler(2);
    std::vector<unsigned> indices(3, 7);
    EXPECT_EQ(sampler->SampleIndices(indices.data(), 0, 3, true), 30011);
    EXPECT_EQ(sampler->GetSeed(), 2);
    EXPECT_EQ(sampler->SampleIndices(indices.data(), 0, 3, false), 0);
    EXPECT_EQ(indices, std::vector<unsigned>(3));
    const SamplerPtr other = MakeSampler(2);
    Draw(*other, "Uniform 0 1", 3);
    EXPECT_EQ(sampler->GetSeed(), other->GetSeed());
}

TEST_F(Sampler, MultivariateNormal) {
    const SamplerPtr sampler = MakeSampler(4);
    const double mean[] = {1, -2, 3};
    const auto draw = [&](const std::vector<double>& covariance, unsigned count) {
        std::vector<double> out(std::size_t{3} * count);
        EXPECT_EQ(sampler->SampleMVNormal(out.data(), count, 3, mean, covariance.data()), 0);
        return out;
    };
    // L = (2; 1 3; -1 0.5 1.5): the rows follow from the standard normal deviates; what lies above the
    // diagonal is not read.
    const double state = sampler->GetSeed();
    const auto rows = draw({4, kNaN, kNaN, 2, 10, kNaN, -2, 0.5, 3.5}, 5);
    sampler->Reseed(state);
    const auto z = Draw(*sampler, "Normal 0 1", 15);
    for (std::size_t i = 0; i < 15; i += 3) {
        EXPECT_DOUBLE_EQ(rows[i], 1 + 2 * z[i]);
        EXPECT_DOUBLE_EQ(rows[i + 1], -2 + (z[i] + 3 * z[i + 1]));
        EXPECT_DOUBLE_EQ(rows[i + 2], 3 + (-z[i] + 0.5 * z[i + 1] + 1.5 * z[i + 2]));
    }
    // Rank 2: the third variable is the sum of the others, less their means.
    const double a = 1.0 / 3;
    const auto flat = draw({a, 0, a, 0, 0.7, 0.7, a, 0.7, a + 0.7}, 5);
    for (std::size_t i = 0; i < 15; i += 3)
        EXPECT_NEAR(flat[i + 2] - 3, flat[i] - 1 + flat[i + 1] + 2, 1e-14);
    const double seed = sampler->GetSeed();
    for (const auto& bad : {std::vector<double>{1, 0, 0, 2, 1, 0, 0, 0, 1}, {1, 0, 0, 0, 1, 0, kInf, 0, 1}})
        for (const double value : draw(bad, 2))
            EXPECT_TRUE(std::isnan(value));
    EXPECT_EQ(sampler->GetSeed(), seed);
}

// By inversion the deviates before it are written. The state is that after the uniforms drawn; the mode stays.
TEST_F(Sampler, AnExceptionEndsTheCall) {
    const SamplerPtr sampler = MakeSampler(1);
    std::vector<double> out(20, -7);
    const auto uniforms = Draw(*MakeSampler(1), "Uniform 0 1", 20);
    EXPECT_THROW(sampler->SampleExponential(out.data(), 20, 1e308, 0), std::overflow_error);
    EXPECT_EQ(_mm_getcsr() & ~0x3Fu, kTrapping);
    // -log(1 - u) = 1.797... is the first too large one.
    const auto drawn = std::find(out.begin(), out.end(), -7) - out.begin();
    const auto large = std::find_if(uniforms.begin(), uniforms.end(), [](double u) { return u > 0.8343; });
    EXPECT_EQ(drawn, large - uniforms.begin());
    const SamplerPtr expected = MakeSampler(1);
    Draw(*expected, "Uniform 0 1", static_cast<unsigned>(drawn) + 1);
    EXPECT_EQ(sampler->GetSeed(), expected->GetSeed());
    ResetFpuStates();
    for (const double seed : {1.0, 2.0, 3.0, 4.0}) {
        const auto logarithms = Draw(*MakeSampler(seed), "Normal 700 10", 20);
        std::fill(out.begin(), out.end(), -7);
        sampler->Reseed(seed);
        EXPECT_THROW(sampler->SampleLognormal(out.data(), 20, 700, 10, 0), std::runtime_error);
        ResetFpuStates();
        std::size_t i = 0;
        for (; i < 20 && logarithms[i] < 709.78; ++i)
            EXPECT_EQ(out[i], std::exp(logarithms[i]));
        EXPECT_EQ(std::count(out.begin(), out.end(), -7), 20 - static_cast<std::ptrdiff_t>(i));
        expected->Reseed(seed);
        Draw(*expected, "Normal 0 1", static_cast<unsigned>(i) + 1);
        EXPECT_EQ(sampler->GetSeed(), expected->GetSeed());
    }
    // Of each sort the deviate that is the first too large one when the largest of twenty is.
    using Scaled = std::function<int(double scale)>;
    const std::pair<std::string, Scaled> scaled[] = {
        {"Normal 0 1", [&](double scale) { return sampler->SampleNormal(out.data(), 20, 0, scale); }},
        {"Gamma 0.5 1 0", [&](double scale) { return sampler->SampleGamma(out.data(), 20, 0.5, scale, 0); }},
        {"Gamma 2 1 0", [&](double scale) { return sampler->SampleGamma(out.data(), 20, 2, scale, 0); }},
        {"Gamma 5 1 0", [&](double scale) { return sampler->SampleGamma(out.data(), 20, 5, scale, 0); }}};
    for (const auto& [call, draw] : scaled) {
        const auto standard = Draw(*MakeSampler(1), call, 20);
        const double scale = DBL_MAX / *std::max_element(standard.begin(), standard.end()) * 1.001;
        std::fill(out.begin(), out.end(), -7);
        sampler->Reseed(1);
        EXPECT_THROW(draw(scale), std::overflow_error) << call;
        ResetFpuStates();
        unsigned i = 0;
        for (; std::isfinite(standard[i] * scale); ++i)
            EXPECT_EQ(out[i], standard[i] * scale) << call;
        EXPECT_EQ(std::count(out.begin(), out.end(), -7), 20 - static_cast<std::ptrdiff_t>(i)) << call;
        expected->Reseed(1);
        Draw(*expected, call, i + 1);
        EXPECT_EQ(sampler->GetSeed(), expected->GetSeed()) << call;
    }
    // Bare: bad parameters go through, and the mode is left alone.
    SetKelFpuStates();
    EXPECT_EQ(sampler->SampleWeibull(out.data(), 1, 1.5, 1, 0), 0);
    EXPECT_EQ(_mm_getcsr() & ~0x3Fu, kTrapping);
    ResetFpuStates();
    sampler->SampleWeibull(out.data(), 1, kNaN, 1, 0);
    EXPECT_TRUE(std::isnan(out[0]));
}

}  // namespace
}  // namespace zul
