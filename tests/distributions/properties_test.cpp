// Rules that hold for every family.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <exception>
#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "distributions/families.h"
#include "support/reference_table.h"
#include "zul/distributions.h"
#include "zul/frame.h"

namespace zul {
namespace {

using test::Applied;
using test::Distribution;
using test::Family;
using test::Kind;
// The incomplete gamma and beta pairs stop at a relative 1e-9; two of them may meet.
constexpr double kSeries = 2e-9;

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
        for (const double p : {0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 0.95}) {
            const double to = d.quantile(p);
            const double expected = d.lower(to) - d.lower(from);
            EXPECT_NEAR(Integral(d.pdf, from, to), expected, kSeries + 1e-8 * expected)
                << from << " to " << to;
            from = to;
        }
    });
}

TEST(Families, MassesSumToTheLowerTailWhichRisesAtWholeNumbers) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        if (family.kind == Kind::Continuous) return;
        // Deliberate: the number of trials is not rounded, and moves the tails between whole numbers too.
        const bool rises = family.name == "NegBinomial" || family.name == "Geometric";
        const double first = d.quantile(1e-6);
        const double last = d.quantile(1 - 1e-6);
        double sum = d.lower(first - 1);
        for (double k = first; k <= last; ++k) {
            const double mass = d.pdf(k);
            const double lower = d.lower(k);
            sum += mass;
            ASSERT_NEAR(lower, sum, kSeries) << k;
            if (mass >= 1e-6 && lower <= 1 - 1e-6) {
                EXPECT_EQ(d.quantile(lower * (1 - 1e-12)), k);
            }
            if (rises) continue;
            EXPECT_EQ(d.pdf(k + 0.25), 0) << k;
            EXPECT_EQ(d.lower(k + 0.25), lower) << k;
            EXPECT_NEAR(d.upper(k + 0.25), d.upper(k + 1), 1e-12) << k;
        }
    });
}

// Over the support and beyond its ends, also in place, and nothing is written behind the last.
TEST(Families, ArraysHaveTheBitsOfTheScalarCalls) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        for (const Applied& f : d.Functions()) {
            std::vector<double> in = {1e-9, 0.01, 0.3, 0.5, 0.77, 0.99};
            if (f.function != &family.invCdf && f.function != &family.tailInvCdf) {
                for (double& p : in)
                    p = d.quantile(p);
                in.insert(in.end(), {-1, 0, 0.25, 1, 3, 1e300});
            }
            const std::size_t count = in.size() - 1;
            std::vector<double> out(in.size(), -7);
            std::vector<double> inPlace = in;
            f(out.data(), in.data(), count);
            f(inPlace.data(), inPlace.data(), count);
            for (std::size_t i = 0; i < in.size(); ++i) {
                EXPECT_TRUE(test::IsNear(out[i], i < count ? f(in[i]) : -7, 0)) << f.Name() << " " << in[i];
                EXPECT_TRUE(test::IsNear(inPlace[i], i < count ? out[i] : in[i], 0))
                    << f.Name() << " " << in[i];
            }
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
            try {
                const double value = f(kNaN);
                EXPECT_TRUE(IsNaN(value)) << f.Name() << " = " << value;
            } catch (const std::invalid_argument&) {
                ResetFpuStates();
            }
        }
    });
}

// The bits of the value, or what the exception says.
template <typename Call>
std::string Outcome(Call call) {
    try {
        return std::to_string(std::bit_cast<std::uint64_t>(call()));
    } catch (const std::exception& error) {
        ResetFpuStates();
        return error.what();
    }
}

TEST(Families, ASignallingNaNGivesScalarAndArrayCallsTheSame) {
    const double signalling = std::bit_cast<double>(std::uint64_t{0x7FF0000000000001});
    ForEachDistribution([&](const Family&, const Distribution& d) {
        for (const Applied& f : d.Functions()) {
            for (std::size_t i = 0; i <= f.parameters.size(); ++i) {
                if (f.function->types[i] != test::Type::Real) continue;
                Applied given = f;
                double x = 0.5;
                (i == 0 ? x : given.parameters[i - 1]) = signalling;
                double out = 0;
                EXPECT_EQ(Outcome([&] { return given(x); }), Outcome([&] {
                              given(&out, &x, 1);
                              return out;
                          }))
                    << f.Name() << " " << i;
            }
        }
    });
}

// What rounding and tolerance of a quantile by the upper tail may come to, relative to the tail.
double ErrorOfUpperTail(const Family& family) {
    // A normal quantile is good to 3e-9, and 36 standard deviations away the tail is 1300 times as sensitive.
    return family.name.ends_with("Normal") ? 5e-6 : kSeries;
}

double LeastUpperTail(const Family& family, const Distribution& d) {
    const std::set<std::string> closed = {"Cauchy",         "Exponential", "Geometric",
                                          "IntegerUniform", "Lambda",      "Laplace",
                                          "Logistic",       "LogLogistic", "SmallestExtremeValue",
                                          "Triangular",     "Uniform",     "Weibull"};
    if (family.name == "Hypergeometric") return 1e-280;  // where its tail underflows
    const bool noncentral = (family.name == "F" || family.name == "T") && d.quantile.parameters.back() != 0;
    if (noncentral) return 1e-100;  // the quantile itself ends at 1e30
    return closed.contains(family.name) ? 1e-300 : 1e-280;
}

void ExpectCount(const Distribution& d, double p, double k) {
    const double beyond = d.upper(k + 1);
    EXPECT_LE(beyond, p * (1 + kSeries)) << p << " " << k;
    EXPECT_TRUE(k == d.lowest || d.upper(k) > p) << p << " " << k;
    if (beyond > 0 && beyond < 0.5) {
        EXPECT_EQ(d.upperQuantile(beyond), k) << p;
    }
}

TEST(Families, AnUpperTailComesBackFromItsQuantile) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        if (d.upperQuantile.function == nullptr) return;
        const double tolerance = ErrorOfUpperTail(family);
        // The tails of Tukey's family are found to no more digits.
        const double rounding = family.name == "Lambda" ? 1e-12 : 2e-15;
        for (const double p : {1e-300, 1e-280, 1e-200, 1e-100, 1e-40, 1e-20, 1e-10, 1e-3, 0.1, 0.25, 0.4, 0.5,
                               0.75, 0.9, 0.9999}) {
            if (p < LeastUpperTail(family, d)) continue;
            const double x = d.upperQuantile(p);
            if (family.kind == Kind::Discrete) {
                ExpectCount(d, p, x);
                continue;
            }
            if (x > 1e290) continue;  // nearly no double
            double size = std::abs(x);
            for (const double parameter : d.quantile.parameters)
                size = std::max(size, std::abs(parameter));
            EXPECT_GE(d.upper(x - rounding * size), p * (1 - tolerance)) << p << " " << x;
            EXPECT_LE(d.upper(x + rounding * size), p * (1 + tolerance)) << p << " " << x;
        }
    });
}

TEST(Families, TheQuantilesByBothTailsAreTheSame) {
    ForEachDistribution([](const Family& family, const Distribution& d) {
        if (d.upperQuantile.function == nullptr) return;
        for (double p = 0.5; p > 1e-9; p /= 2) {
            EXPECT_EQ(d.upperQuantile(1 - p), d.quantile(p)) << p;
            const double x = d.quantile(1 - p);
            const double byUpperTail = d.upperQuantile(p);
            if (family.kind == Kind::Discrete) {
                EXPECT_EQ(byUpperTail, x) << p;
            } else {
                // A search for a lower tail stops at 1e-12 of that.
                EXPECT_NEAR(d.upper(byUpperTail), d.upper(x), ErrorOfUpperTail(family) * p + 2e-12) << p;
            }
        }
    });
}

TEST(Families, TheFlagOfAQuantileLeavesTheRestAsItIs) {
    ForEachDistribution([](const Family&, const Distribution& d) {
        if (d.upperQuantile.function == nullptr) return;
        Applied byLowerTail = d.upperQuantile;
        byLowerTail.parameters.back() = 0;
        for (const double p : {0.0, 1e-300, 0.3, 0.5, 0.9, 1.0, -1.0, -1e-20, 1.5, kNaN}) {
            const std::string plain = Outcome([&] { return d.quantile(p); });
            EXPECT_EQ(Outcome([&] { return byLowerTail(p); }), plain) << p;
            const auto ofArray = [p](const Applied& quantile) {
                return Outcome([&] {
                    double out = p;
                    quantile(&out, &out, 1);
                    return out;
                });
            };
            EXPECT_EQ(ofArray(byLowerTail), plain) << p;
            EXPECT_EQ(ofArray(d.upperQuantile), Outcome([&] { return d.upperQuantile(p); })) << p;
        }
        // A p below 0 is no 0, however close.
        for (const double p : {0.0, 1.0, 1.5, -1.0, -1e-20}) {
            const double complement = p == -1e-20 ? 1 + 0x1p-52 : 1 - p;
            EXPECT_EQ(Outcome([&] { return d.upperQuantile(p); }),
                      Outcome([&] { return d.quantile(complement); }))
                << p;
        }
    });
}

}  // namespace
}  // namespace zul
