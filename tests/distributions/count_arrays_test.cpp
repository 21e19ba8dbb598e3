// Array calls that compute each whole number once for a block, or quantiles by a table, against one element after the
// other.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <string>
#include <vector>

#include "distributions/families.h"
#include "elementary/arguments.h"
#include "frame/error_state.h"
#include "frame/missing_value.h"
#include "numerics/counts/quantile_table.h"
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

template <typename Density, typename Tail>
void ExpectDensityAndTails(const std::vector<double>& in, Density density, Tail tail) {
    ExpectElements(in, density);
    for (const bool upper : {false, true})
        ExpectElements(in, [&](double* out, const double* x, std::size_t n) { tail(out, x, n, upper); });
}

TEST(CountArrays, OfDensitiesAndTailsAreTheirElements) {
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
        for (const auto [n, prob] : kBinomials)
            ExpectDensityAndTails(
                in, [n = static_cast<int>(n), prob = prob](auto... x) { BinomialPdf(x..., n, prob); },
                [n = n, prob = prob](auto* out, auto* x, auto count, bool upper) {
                    BinomialCdf(out, x, count, n, prob, upper);
                });
        for (const auto [prob, r] : kWaits)
            ExpectDensityAndTails(
                in, [prob = prob, r = r](auto... x) { NegBinomialPdf(x..., prob, r); },
                [prob = prob, r = r](auto* out, auto* x, auto count, bool upper) {
                    NegBinomialCdf(out, x, count, prob, r, upper);
                });
    }
}

double Quietly(const Function& function, double x, const Parameters& parameters) {
    double result = 0;
    try {
        function.each(&result, &x, 1, parameters);
    } catch (const std::exception&) {
        _mm_setcsr(kDefaultMode);
    }
    return result;
}

// Probabilities at random, at the tails of whole numbers and beside them, in runs of small ones, which give the first
// number, and others outside (0, 1).
std::vector<double> ProbabilitiesFor(const std::string& family, const Parameters& parameters,
                                     RandomArguments& random) {
    std::vector<double> p(1500);
    for (double& value : p)
        value = random.Uniform(0, 1);
    for (std::size_t i = random.Bits() % 50; i < p.size(); i += 1 + random.Bits() % 50) {
        const double k = Quietly(FunctionOf(family + "InvCdf", parameters.size() + 1), p[i], parameters);
        const double tail = Quietly(FunctionOf(family + "Cdf"), k, parameters);
        p[i] = random.Bits() % 2 ? std::nextafter(tail, static_cast<double>(random.Bits() % 2))
                                 : tail + static_cast<double>(random.Bits() % 5) * 0.5e-8 - 1e-8;
    }
    constexpr double kOthers[] = {0, 1, -0.1, 1.5, 1e-300, 1e-9, 1 - 1e-9, 5e-324};
    for (std::size_t k = 0; k < 8; ++k) {
        const std::size_t begin = random.Bits() % 1400;
        std::fill_n(p.begin() + static_cast<std::ptrdiff_t>(begin), random.Bits() % 100, 1e-7);
        p[random.Bits() % p.size()] = kOthers[random.Bits() % std::size(kOthers)];
    }
    std::fill_n(p.end() - 40, random.Bits() % 41, 1e-7);
    return p;
}

TEST(CountArrays, OfQuantilesAreTheirElements) {
    const struct {
        std::string family;
        std::vector<Parameters> parameters;
    } kFamilies[] = {
        {"Binomial",
         {{100, 0.3}, {1'000'000, 0.2}, {3, 0.999}, {1, 0.5}, {0, 0.5}, {9, 0}, {9, 1}, {40, 1e-9}}},
        {"Poisson", {{10}, {1e-3}, {250}, {1e5}, {1e9}, {0}, {-1}}},
        {"NegBinomial", {{0.3, 5}, {0.9, 2}, {0.99, 40}, {0.3, 1}, {0.3, 2.5}, {0.01, 50}, {1, 3}, {0, 3}}},
        {"Geometric", {{0.3}, {0.01}, {1 - 1e-9}, {1e-5}, {1}}},
        {"Hypergeometric",
         {{500, 200, 50}, {100, 80, 70}, {1'000'000, 200'000, 50'000}, {10, 10, 4}, {5, 6, 7}}},
    };
    RandomArguments random;
    for (const auto& tested : kFamilies)
        for (const Parameters& parameters : tested.parameters)
            for (int round = 0; round < 20; ++round) {
                const std::string& family = tested.family;
                SCOPED_TRACE(family + " " + std::to_string(parameters[0]));
                const std::vector<double> in = ProbabilitiesFor(family, parameters, random);
                Parameters withTail = parameters;
                withTail.push_back(round % 2);
                ASSERT_NO_FATAL_FAILURE(
                    ExpectElements(in, [&](double* out, const double* p, std::size_t count) {
                        FunctionOf(family + "InvCdf", withTail.size() + 1).each(out, p, count, withTail);
                    }));
            }
}

TEST(QuantileTable, LeavesWhatRoundingDecides) {
    const numerics::CountDistribution coins{
        .last = 3, .mean = 1.5, .sd = 0.87, .odds = 1, .falling = {3, numerics::kEndlessCount}};
    const numerics::QuantileTable table(coins, 100);
    EXPECT_EQ(table.At(0.1), 0);
    EXPECT_EQ(table.At(0.125 + 2e-8), 1);
    EXPECT_EQ(table.At(0.5 - 2e-8), 1);
    EXPECT_EQ(table.At(0.9), 3);
    for (const double p : {0.0, 0.125 - 0.9e-8, 0.125, 0.125 + 0.9e-8, 0.5, 0.875, 1.0, -1.0, 2.0})
        EXPECT_EQ(table.At(p), frame::kNA) << p;
    EXPECT_TRUE(numerics::QuantileTable(coins, 2).IsEmpty());
    EXPECT_TRUE(numerics::QuantileTable({}, 100).IsEmpty());
    // More numbers than the table has nodes.
    const numerics::CountDistribution many{
        .last = 9999, .mean = 4999.5, .sd = 2887, .odds = -1, .falling = {-1, numerics::kEndlessCount}};
    const numerics::QuantileTable uniform(many, 10'000);
    for (const double k : {0.0, 1.0, 1023.0, 1024.0, 7777.0, 9999.0})
        EXPECT_EQ(uniform.At((k + 0.5) / 10'000), k);
}

}  // namespace
}  // namespace zul::test
