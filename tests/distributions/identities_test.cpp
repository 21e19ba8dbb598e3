// Identities between families that compute in different ways, each at some points.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "support/reference_table.h"
#include "zul/distributions.h"

namespace zul {
namespace {

// The incomplete gamma and beta pairs stop at a relative 1e-9; two of them may meet.
constexpr double kSeries = 2e-9;

const std::vector<double> kUnit = {1e-6, 0.003, 0.1, 0.37, 0.5, 0.81, 0.99, 0.9999};
const std::vector<double> kPositive = {1e-4, 0.02, 0.3, 0.99, 1, 2.6, 9, 33};
const std::vector<double> kReal = {-33, -2.6, -0.99, -0.02, 0, 1e-4, 0.3, 1, 9};
const std::vector<double> kCounts = {0, 1, 2, 5, 9, 17, 24, 25};

struct Identity {
    std::string name;
    std::vector<double> points;
    double tolerance;
    double (*left)(double x);
    double (*right)(double x);
};

const std::vector<Identity> kIdentities = {
    {"binomial of very many trials and Poisson", kCounts, 1e-7,
     [](double k) { return BinomialCdf(k, 2.147e9, 7 / 2.147e9, false); },
     [](double k) { return PoissonCdf(k, 7, false); }},
    {"negative binomial and binomial, lower tail",
     {5, 6, 9, 17, 40},
     kSeries,
     [](double x) { return NegBinomialCdf(x, 0.3, 5, false); },
     [](double x) { return BinomialCdf(5, x, 0.3, true); }},
    {"Poisson and gamma, lower tail", kCounts, kSeries, [](double k) { return PoissonCdf(k, 6.5, false); },
     [](double k) { return GammaCdf(6.5, k + 1, 1, 0, true); }},
    {"hypergeometric, the two samples exchanged",
     {0, 1, 5, 9, 12},
     kSeries,
     [](double k) { return HypergeometricCdf(k, 60, 25, 12, false); },
     [](double k) { return HypergeometricCdf(k, 60, 12, 25, false); }},
    {"chi-square and half-normal", kPositive, 1e-8,
     [](double x) { return HalfNormalCdf(x / 6, 1.5, 0, false); },
     [](double x) { return ChiSqCdf(x * x / 81, 1, 0, false); }},
    {"F and beta, inverse", kUnit, 1e-8, [](double p) { return 5 / (8 / FInvCdf(p, 5, 8, 0) + 5); },
     [](double p) { return BetaInvCdf(p, 2.5, 4); }},
    {"t squared and F", kPositive, kSeries, [](double x) { return 2 * TCdf(std::sqrt(x), 7, 0, true); },
     [](double x) { return FCdf(x, 1, 7, 0, true); }},
    {"noncentral t squared and F", kPositive, 1e-10,
     [](double x) { return TCdf(std::sqrt(x), 7, 1.5, false) - TCdf(-std::sqrt(x), 7, 1.5, false); },
     [](double x) { return FCdf(x, 1, 7, 2.25, false); }},
    {"noncentral F and chi-square", kPositive, 1e-6, [](double x) { return FCdf(x, 3, 1e8, 4, false); },
     [](double x) { return ChiSqCdf(3 * x, 3, 4, false); }},
    {"t and Cauchy, inverse", kUnit, kSeries, [](double p) { return TInvCdf(p, 1, 0); },
     [](double p) { return CauchyInvCdf(p, 0, 1); }},
    {"t mirrored, density", kReal, 1e-9, [](double x) { return TPdf(x, 6, 1.5); },
     [](double x) { return TPdf(-x, 6, -1.5); }},
    {"t mirrored, inverse",
     {0.003, 0.1, 0.37, 0.5, 0.81, 0.99},
     1e-9,
     [](double p) { return TInvCdf(p, 6, 1.5); },
     [](double p) { return -TInvCdf(1 - p, 6, -1.5); }},
    {"beta mirrored", kUnit, kSeries, [](double x) { return BetaCdf(x, 3, 0.7, false); },
     [](double x) { return BetaCdf(1 - x, 0.7, 3, true); }},
    {"Weibull and smallest extreme value, tail", kPositive, 1e-11,
     [](double x) { return WeibullCdf(x, 2.5, 3, 0, true); },
     [](double x) { return SmallestExtremeValueCdf(std::log(x), std::log(3), 0.4, true); }},
    {"Tukey lambda near 0 and logistic", kReal, 1e-6, [](double x) { return LambdaCdf(x, 1e-9, 1, 2, true); },
     [](double x) { return LogisticCdf(x, 1, 2, true); }},
    {"Tukey lambda near 1 and uniform, density",
     {-0.9, -0.3, 0, 0.8},
     1e-6,
     [](double x) { return LambdaPdf(x, 1 + 1e-9, 0, 1); },
     [](double x) { return UniformPdf(x, -1, 1); }},
    {"Tukey lambda near 2 and uniform, tail",
     {-0.4, -0.3, 0, 0.4},
     1e-6,
     [](double x) { return LambdaCdf(x, 2 - 1e-9, 0, 1, true); },
     [](double x) { return UniformCdf(x, -0.5, 0.5, true); }},
};

TEST(Identities, Hold) {
    for (const auto& [name, points, tolerance, left, right] : kIdentities)
        for (const double x : points)
            EXPECT_TRUE(test::IsNear(left(x), right(x), tolerance)) << name << " at " << x;
}

}  // namespace
}  // namespace zul
