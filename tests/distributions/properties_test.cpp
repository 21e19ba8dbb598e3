// Rules that hold for every family.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <exception>
#include <functional>
#include <limits>
#include <stdexcept>
#include <vector>

#include "distributions/families.h"
#include "support/float_mode.h"
#include "zul/distributions.h"
#include "zul/frame.h"

namespace zul {
namespace {

using test::Applied;
using test::Distribution;
using test::Family;
using test::Kind;

constexpr double kNA = 1.23456e30;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
// The incomplete gamma and beta pairs stop at a relative 1e-9; two of them may meet.
constexpr double kSeries = 2e-9;
constexpr double kProbabilities[] = {1e-6, 1e-3, 0.01, 0.05, 0.1,  0.2,  0.3,   0.4,     0.5,
                                     0.6,  0.7,  0.8,  0.9,  0.95, 0.99, 0.999, 1 - 1e-6};

std::uint64_t Bits(double x) {
    return std::bit_cast<std::uint64_t>(x);
}

template <typename Check>
void ForEachDistribution(Check check) {
    for (const Family& family : test::Families()) {
        for (const test::Parameters& parameters : family.parameters) {
            const Distribution distribution = family.With(parameters);
            SCOPED_TRACE(distribution.lower.Name());
            try {
                check(family, distribution);
            } catch (const std::exception& error) {
                ResetFpuStates();
                ADD_FAILURE() << error.what();
            }
        }
    }
}

// Some hundred x over all but 2e-6 of the distribution, rising.
std::vector<double> Points(const Family& family, const Distribution& d) {
    constexpr int kCount = 200;
    std::vector<double> points;
    const double first = d.quantile(1e-6);
    const double last = d.quantile(1 - 1e-6);
    if (family.kind == Kind::Discrete) {
        const double step = std::ceil((last - first + 1) / kCount);
        for (double k = first; k <= last; k += step)
            points.push_back(k);
    } else {
        points.push_back(first);
        for (int i = 1; i < kCount; ++i)
            points.push_back(d.quantile(static_cast<double>(i) / kCount));
        points.push_back(last);
    }
    return points;
}

TEST(Families, TailsAddUpAndAreMonotone) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        const bool discrete = family.kind == Kind::Discrete;
        double lowerBefore = 0;
        double upperBefore = 1;
        double before = -kNA;
        for (const double x : Points(family, d)) {
            const double lower = d.lower(x);
            const double upper = d.upper(x);
            EXPECT_TRUE(lower >= 0 && lower <= 1 && upper >= 0 && upper <= 1) << x;
            EXPECT_NEAR(lower + upper, discrete ? 1 + d.pdf(x) : 1, discrete ? kSeries : 1e-12) << x;
            EXPECT_GT(x, before);
            EXPECT_GE(lower, lowerBefore * (1 - kSeries)) << x;
            EXPECT_LE(upper, upperBefore * (1 + kSeries)) << x;
            lowerBefore = lower;
            upperBefore = upper;
            before = x;
        }
    });
}

TEST(Families, TailsOfADiscreteFamilyBetweenItsPoints) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        // Deliberate: the number of trials is not rounded, and moves the tails between whole numbers too.
        if (family.kind == Kind::Continuous || family.name == "NegBinomial" || family.name == "Geometric")
            return;
        for (const double x : Points(family, d)) {
            EXPECT_EQ(d.pdf(x + 0.25), 0) << x;
            EXPECT_EQ(d.lower(x + 0.25), d.lower(x)) << x;
            EXPECT_NEAR(d.upper(x + 0.25), d.upper(x + 1), 1e-12) << x;
        }
    });
}

TEST(Families, TheSupportHasEnds) {
    ForEachDistribution([](const Family&, const Distribution& d) {
        if (std::isfinite(d.lowest)) {
            const double below = d.lowest - 1;
            EXPECT_EQ(d.pdf(below), 0);
            EXPECT_EQ(d.lower(below), 0);
            EXPECT_EQ(d.upper(below), 1);
        }
        if (std::isfinite(d.highest)) {
            const double above = d.highest + 1;
            EXPECT_EQ(d.pdf(above), 0);
            EXPECT_EQ(d.lower(above), 1);
            EXPECT_EQ(d.upper(above), 0);
        }
    });
}

// The normal deviate is good to a relative 3e-9, which costs a far tail z^2 times that; the root finder stops
// at an absolute 1e-12; x itself is rounded.
void ExpectRoundTrip(const Distribution& d, double p) {
    const double x = d.quantile(p);
    EXPECT_GE(x, d.lowest);
    EXPECT_LE(x, d.highest);
    const double rounding = 2e-12 + d.pdf(x) * std::abs(x) * std::numeric_limits<double>::epsilon();
    const auto tolerance = [=](double tail) { return std::min(1e-9, 1e-7 * tail + rounding); };
    EXPECT_NEAR(d.lower(x), p, tolerance(p)) << p;
    EXPECT_NEAR(d.upper(x), 1 - p, tolerance(1 - p)) << p;
}

// The smallest k with a lower tail of p or more, but for the accuracy of the tails.
void ExpectSmallest(const Distribution& d, double p) {
    const double k = d.quantile(p);
    EXPECT_EQ(k, std::floor(k));
    EXPECT_GE(d.lower(k), p * (1 - kSeries)) << p;
    EXPECT_LT(d.lower(k - 1), p * (1 + kSeries)) << p;
}

TEST(Families, QuantilesInvertTheLowerTail) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        for (const double p : kProbabilities)
            family.kind == Kind::Continuous ? ExpectRoundTrip(d, p) : ExpectSmallest(d, p);
        if (family.kind == Kind::Continuous) return;
        for (const double k : Points(family, d)) {
            if (d.pdf(k) < 1e-6 || d.lower(k) > 1 - 1e-6) continue;
            EXPECT_EQ(d.quantile(d.lower(k) * (1 - 1e-12)), k);
        }
    });
}

// Gauss's rule of five points on each of sixteen panels.
double Integral(const Applied& f, double from, double to) {
    constexpr double kNodes[] = {0, 0.5384693101056831, 0.9061798459386640};
    constexpr double kWeights[] = {0.5688888888888889, 0.4786286704993665, 0.2369268850561891};
    constexpr int kPanels = 16;
    const double half = (to - from) / (2 * kPanels);
    double sum = 0;
    for (int panel = 0; panel < kPanels; ++panel) {
        const double centre = from + (2 * panel + 1) * half;
        sum += kWeights[0] * f(centre);
        for (int i : {1, 2})
            sum += kWeights[i] * (f(centre - kNodes[i] * half) + f(centre + kNodes[i] * half));
    }
    return sum * half;
}

TEST(Families, DensitiesIntegrateToTheLowerTail) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        if (family.kind == Kind::Discrete) return;
        const bool noncentral =
            (family.name == "ChiSq" || family.name == "F") && d.lower.parameters.end()[-2] != 0;
        if (noncentral) return;  // Deliberate: these densities are those of the central distribution.
        double from = d.quantile(0.05);
        for (const double p : kProbabilities) {
            if (p <= 0.05 || p > 0.95) continue;
            const double to = d.quantile(p);
            const double expected = d.lower(to) - d.lower(from);
            EXPECT_NEAR(Integral(d.pdf, from, to), expected, kSeries + 1e-8 * expected)
                << from << " to " << to;
            from = to;
        }
    });
}

TEST(Families, MassesSumToTheLowerTail) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        if (family.kind == Kind::Continuous) return;
        const double first = d.quantile(1e-6);
        const double last = d.quantile(1 - 1e-6);
        double sum = d.lower(first - 1);
        for (double k = first; k <= last; ++k) {
            sum += d.pdf(k);
            ASSERT_NEAR(d.lower(k), sum, kSeries) << k;
        }
    });
}

// What the scalar function does: its result, or an exception.
struct Outcome {
    bool throws;
    double value;
};

Outcome Evaluate(const Applied& f, double x) {
    try {
        return {false, f(x)};
    } catch (const std::exception&) {
        ResetFpuStates();
        return {true, 0};
    }
}

// Good and bad x, or probabilities, on which the scalar function gives a result.
std::vector<double> Inputs(const Family& family, const Distribution& d, const Applied& f) {
    std::vector<double> inputs = {0,    1,     -1,  0.5,  1.5,    2.5,  -1e10,
                                  1e10, 1e300, kNA, -kNA, 1e-300, 0.75, 1e-12};
    if (f.function == &family.invCdf)
        inputs.insert(inputs.end(), std::begin(kProbabilities), std::end(kProbabilities));
    else
        for (const double x : Points(family, d))
            inputs.push_back(x);
    std::erase_if(inputs, [&](double x) { return Evaluate(f, x).throws; });
    return inputs;
}

TEST(FamilyArrays, GiveTheBitsOfTheScalarCallsAlsoInPlace) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        for (const Applied& f : d.Functions()) {
            std::vector<double> in = Inputs(family, d, f);
            std::vector<double> out(in.size());
            f(out.data(), in.data(), in.size());
            for (std::size_t i = 0; i < in.size(); ++i)
                EXPECT_EQ(Bits(out[i]), Bits(f(in[i]))) << f.Name() << " at " << in[i];
            f(in.data(), in.data(), in.size());
            for (std::size_t i = 0; i < in.size(); ++i)
                EXPECT_EQ(Bits(in[i]), Bits(out[i])) << f.Name() << " in place";
            f(nullptr, nullptr, 0);
        }
    });
}

TEST(FamilyArrays, AnExceptionLeavesTheElementsBeforeIt) {
    ForEachDistribution([](const Family&, const Distribution& d) {
        for (const Applied& f : d.Functions()) {
            const double in[] = {0.25, 0.75, kNaN, 0.5};
            double out[] = {-7, -7, -7, -7};
            if (!Evaluate(f, kNaN).throws) continue;
            EXPECT_THROW(f(out, in, 4), std::invalid_argument) << f.Name();
            ResetFpuStates();
            EXPECT_EQ(Bits(out[0]), Bits(f(0.25))) << f.Name();
            EXPECT_EQ(Bits(out[1]), Bits(f(0.75))) << f.Name();
            EXPECT_TRUE(out[2] == -7 && out[3] == -7) << f.Name();
        }
    });
}

TEST(Families, ANaNIsNeverANumber) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        if (family.bare) return;
        // Deliberate: the logistic density turns every failure into 0.
        const bool logistic =
            family.name == "Logistic" || (family.name == "Lambda" && d.pdf.parameters[0] == 0);
        for (const Applied& f : d.Functions()) {
            if (logistic && f.function == &family.pdf) continue;
            const Outcome outcome = Evaluate(f, kNaN);
            EXPECT_TRUE(outcome.throws || IsNaN(outcome.value)) << f.Name() << " = " << outcome.value;
        }
    });
}

// The frame ends in the default mode, whatever was before; without the frame the mode stays.
void ExpectMode(bool bare, const std::string& name, const std::function<void()>& call) {
    _mm_setcsr(bare ? test::kTrappingMode : 0xFFC0);  // round towards zero, denormals flushed
    call();
    const unsigned mode = _mm_getcsr();
    ResetFpuStates();
    if (bare)
        EXPECT_EQ(mode & ~test::kFlags, test::kTrappingMode) << name;
    else
        EXPECT_EQ(mode, test::kDefaultMode) << name;
}

TEST(Families, TheFrameHoldsDuringACallAlone) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        double out[2];
        const double in[] = {0.25, 0.5};
        for (const Applied& f : d.Functions()) {
            ExpectMode(family.bare, f.Name(), [&] { f(0.5); });
            ExpectMode(family.bare, f.Name() + " array", [&] { f(out, in, 2); });
            ExpectMode(family.bare, f.Name() + " empty array", [&] { f(out, in, 0); });
        }
    });
    for (const test::Statistic& statistic : test::Statistics()) {
        const test::Function& function = statistic.function;
        ExpectMode(function.name == "Psi", function.name, [&] { function.call(statistic.arguments); });
    }
}

}  // namespace
}  // namespace zul
