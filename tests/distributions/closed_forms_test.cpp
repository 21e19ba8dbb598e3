// Rules of the families with closed forms that no table of values shows: ends of the support, special
// parameter values, saturation, failures and what is deliberately odd.
#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <numbers>
#include <stdexcept>

#include "support/reference_table.h"
#include "zul/distributions.h"
#include "zul/frame.h"

namespace zul {
namespace {

using test::ExpectExact;

constexpr double kNA = 1.23456e30;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

class ClosedForms : public testing::Test {
protected:
    void TearDown() override { ResetFpuStates(); }
};

TEST_F(ClosedForms, EndsAndCentres) {
    ExpectExact({
        {CauchyInvCdf(0, 1, 2), kNaN},
        {CauchyInvCdf(1, 1, 2), kNaN},
        {CauchyInvCdf(0.5 + 4e-13, 1, 2), 1},
        {ExponentialPdf(3, 2, 3), 0.5},
        {ExponentialCdf(3, 2, 3, true), 1},
        {ExponentialInvCdf(0, 2, 3), 3},
        {HalfNormalCdf(3, 2, 3, false), 0},
        {HalfNormalInvCdf(0, 2, 3), 3},
        {HalfNormalInvCdf(1, 2, 3), kNaN},
        {LaplaceCdf(1, 1, 2, true), 0.5},
        {LaplaceInvCdf(0, 1, 2), kNaN},
        {LaplaceInvCdf(1, 1, 2), kNaN},
        {LaplaceInvCdf(0.5 - 4e-13, 1, 2), 1},
        {LogisticInvCdf(0.5 + 4e-13, 1, 2), 1},
        {LogLogisticPdf(2, 0, 1, 2), 0},
        {LogLogisticCdf(2, 0, 1, 2, true), 1},
        {LogNormalPdf(2, 0, 1, 2), 0},
        {LogNormalCdf(2, 0, 1, 2, true), 1},
        {LogNormalInvCdf(0, 0, 1, 2), 2},
        {LogNormalInvCdf(1, 0, 1, 2), kNaN},
        {WeibullPdf(2, 0.5, 1, 2), 0},
        {WeibullCdf(2, 0.5, 1, 2, true), 1},
        {WeibullInvCdf(0, 0.5, 1, 2), 2},
        {WeibullInvCdf(1, 0.5, 1, 2), kNaN},
        {TriangularPdf(2, 2, 2, 4), 1},
        {TriangularPdf(4, 2, 4, 4), 1},
        {TriangularCdf(2, 2, 2, 4, false), 0},
        {TriangularCdf(4, 2, 4, 4, true), 0},
        {TriangularInvCdf(1, 0.1, 0.2, 0.3), 0.3},
        {TriangularInvCdf(0.3, 2, 2, 2), 2},
        {TriangularInvCdf(0.75, 3, 1, 0), -std::sqrt(0.75)},
    });
}

TEST_F(ClosedForms, BeyondTheBoundOfTheExponential) {
    for (const double far : {710.0, 1e4, 1e306, kInfinity}) {
        ExpectExact({
            {LogisticPdf(-far, 0, 0.1), 0},
            {LogisticCdf(-far, 0, 0.1, false), 0},
            {LogisticCdf(-far, 0, 0.1, true), 1},
            {LargestExtremeValuePdf(-far, 0, 0.1), 0},
            {LargestExtremeValueCdf(-far, 0, 0.1, false), 0},
            {LargestExtremeValueCdf(-far, 0, 0.1, true), 1},
            {SmallestExtremeValuePdf(far, 0, 0.1), 0},
            {SmallestExtremeValueCdf(far, 0, 0.1, false), 1},
            {SmallestExtremeValueCdf(far, 0, 0.1, true), 0},
            {WeibullCdf(far, 900, 1, 0, false), 1},
            {WeibullCdf(far, 900, 1, 0, true), 0},
            {ExponentialPdf(far, 1e-3, 0), 0},
            {ExponentialCdf(far, 1e-3, 0, true), 0},
            {LaplacePdf(-far, 0, 1e-3), 0},
            {LaplaceCdf(-far, 0, 1e-3, false), 0},
            {LaplaceCdf(-far, 0, 1e-3, true), 1},
        });
    }
    EXPECT_EQ(LogLogisticCdf(5e-324, 0, 1, 0, false), 0);
    EXPECT_TRUE(IsResultNA(WeibullPdf(710, 900, 1, 0)));
    EXPECT_EQ(LargestExtremeValueCdf(1e4, 0, 1, false), 1);
    EXPECT_NEAR(CauchyPdf(1e-40, 0, 1e-200) / (1e-120 / std::numbers::pi), 1, 1e-15);  // z^2 overflows
}

TEST_F(ClosedForms, DensitiesThatCatchFailures) {
    ExpectExact({
        {LaplacePdf(1, 0, 0), kNaN},
        {LaplacePdf(0, 0, 0), kNaN},
        {LaplacePdf(kNaN, 0, 1), kNaN},
        {LaplacePdf(1000, 0, -1), kNaN},
        {LogisticPdf(1, 0, 0), 0},
        {LogisticPdf(0, 0, 0), 0},
        {LogisticPdf(kNaN, 0, 1), 0},
        {LogLogisticPdf(1, 0, 0, 0), 0},
        {WeibullPdf(1, 2, 0, 0), kNaN},
        {WeibullPdf(1, 2.5, -1, 0), kNaN},
        {WeibullPdf(kNaN, 2, 1, 0), kNaN},
    });
}

TEST_F(ClosedForms, FailuresReachTheHost) {
    EXPECT_THROW(ExponentialPdf(1000, -1, 0), std::runtime_error);
    EXPECT_THROW(ExponentialCdf(1000, -1, 0, true), std::runtime_error);
    EXPECT_THROW(CauchyPdf(1, 0, 0), std::runtime_error);
    EXPECT_THROW(CauchyInvCdf(1e6, 0, 1), std::invalid_argument);
    EXPECT_THROW(TriangularInvCdf(-0.1, 0, 1, 2), std::invalid_argument);
    EXPECT_THROW(TriangularInvCdf(0.5, 3, 4, 2), std::invalid_argument);
    EXPECT_THROW(LogLogisticInvCdf(0.9, 0, 1e4, 0), std::runtime_error);
    EXPECT_THROW(LambdaInvCdf(0, -1, 0, 1), std::invalid_argument);
    EXPECT_THROW(LambdaInvCdf(1e-100, -5, 0, 1), std::runtime_error);
    for (const double end : {0.0, 1.0}) {
        EXPECT_THROW(LogisticInvCdf(end, 0, 1), std::runtime_error);
        EXPECT_THROW(LargestExtremeValueInvCdf(end, 0, 1), std::runtime_error);
        EXPECT_THROW(SmallestExtremeValueInvCdf(end, 0, 1), std::runtime_error);
    }
    EXPECT_THROW(ExponentialInvCdf(1, 1, 0), std::runtime_error);
    for (const double p : {-0.1, 1.1}) {
        EXPECT_THROW(LogisticInvCdf(p, 0, 1), std::invalid_argument);
        EXPECT_THROW(LaplaceInvCdf(p, 0, 1), std::invalid_argument);
        EXPECT_THROW(WeibullInvCdf(p, 0.7, 1, 0), std::invalid_argument);
    }
}

TEST_F(ClosedForms, QuantilesFromTheMissingValueOn) {
    EXPECT_EQ(SmallestExtremeValueInvCdf(0.5, -1e31, 1), 1e31);  // keeps the mirrored sign
    EXPECT_LT(SmallestExtremeValueInvCdf(0.5, -1e30, 1), 0);
    EXPECT_EQ(LogLogisticInvCdf(0.5, 2e30, 1, 7), 2e30);
    EXPECT_EQ(LogNormalInvCdf(0.5, 2e30, 1, 7), 2e30);
}

// Both sides of each switch between formulas, against the same quantity by another way.
TEST_F(ClosedForms, TailsKeepTheirDigits) {
    for (const double t : {1e-20, 1e-9, 1.0004e-3, 1.0006e-3, 0.5})
        EXPECT_NEAR(ExponentialCdf(t, 1, 0, false) / -std::expm1(-t), 1, 2e-13) << t;
    for (const double p : {1e-300, 1e-20, 0.1, 0.2499, 0.2501, 0.4}) {
        EXPECT_NEAR(CauchyCdf(CauchyInvCdf(p, 0, 1), 0, 1, false) / p, 1, 1e-15) << p;
        EXPECT_NEAR(LogisticCdf(LogisticInvCdf(p, 0, 1), 0, 1, false) / p, 1, 1e-13) << p;
        EXPECT_NEAR(LaplaceCdf(LaplaceInvCdf(p, 0, 1), 0, 1, false) / p, 1, 1e-13) << p;
    }
    for (const double p : {1e-250, 1e-20, 0.1}) {
        EXPECT_NEAR(ExponentialCdf(ExponentialInvCdf(p, 1, 0), 1, 0, false) / p, 1, 1e-12) << p;
        EXPECT_NEAR(SmallestExtremeValueCdf(SmallestExtremeValueInvCdf(p, 0, 1), 0, 1, false) / p, 1, 1e-12);
        EXPECT_NEAR(WeibullCdf(WeibullInvCdf(p, 40, 1, 0), 40, 1, 0, false) / p, 1, 1e-11) << p;
    }
    EXPECT_NEAR(HalfNormalCdf(10, 1, 0, true) / (2 * NormalCdf(10, 0, 1, true)), 1, 1e-15);
    EXPECT_NEAR(TriangularInvCdf(0.25, -1e300, 0, 1e300) / -2.9289321881345245e299, 1, 1e-15);
    EXPECT_NEAR(TriangularCdf(5e-301, 0, 1e-300, 2e-300, false), 0.125, 1e-15);
}

TEST_F(ClosedForms, TukeyLambda) {
    ExpectExact({
        {LambdaPdf(2, 0.5, 0, 1), 0},
        {LambdaCdf(2, 0.5, 0, 1, true), 0},
        {LambdaCdf(-2, 0.5, 0, 1, true), 1},
        {LambdaPdf(0.5, 1 + 4e-13, 0, 2), 0.25},
        {LambdaCdf(0.25, 2, 0, 1, true), 0.25},
        {LambdaInvCdf(0.25, 2, 1, 4), 0},
        {LambdaCdf(1.5, 1e-13, 0, 1, true), LogisticCdf(-1.5, 0, 1, false)},
        {LambdaInvCdf(0.3, -1e-12, 0, 1), LogisticInvCdf(0.3, 0, 1)},
        {LambdaCdf(0, -1e-310, 0, 1, false), 0.5},
        // Beyond the values at the points nearest to the poles.
        {LambdaCdf(-1e300, -5, 0, 1, false), 0},
        {LambdaCdf(-1e300, -5, 0, 1, true), 1},
        {LambdaPdf(1e300, -5, 0, 1), 0},
        {LambdaCdf(0, -5, 0, 1, false), 0.5},
        {LambdaCdf(3, -1e5, 0, 1, false), 0.5},
    });
    // Every tail comes back, and the density is the slope of the quantile function and even.
    for (const double lambda :
         {-600.0, -5.0, -1.0, -0.14, -1e-4, -1e-11, 1e-11, 0.01, 0.5, 0.99, 1.3, 3.0, 50.0}) {
        for (const double p : {1e-200, 1e-25, 1e-12, 1e-3, 0.2, 0.45}) {
            if (lambda > 0.4 && p < 1e-3) continue;  // where z says little about p
            if (lambda * std::log(p) > 680) continue;
            const double z = LambdaInvCdf(p, lambda, 0, 1);
            const double slope = std::pow(p, lambda - 1) + std::pow(1 - p, lambda - 1);
            const double tolerance = 3e-12 * (1 + std::abs(z) / slope / p);
            EXPECT_NEAR(LambdaCdf(z, lambda, 0, 1, false) / p, 1, tolerance) << lambda << " " << p;
            EXPECT_EQ(LambdaCdf(-z, lambda, 0, 1, true), LambdaCdf(z, lambda, 0, 1, false));
            EXPECT_EQ(LambdaPdf(-z, lambda, 0, 1), LambdaPdf(z, lambda, 0, 1));
            if (!std::isfinite(slope)) continue;
            EXPECT_NEAR(LambdaPdf(z, lambda, 0, 1) * slope, 1, tolerance * (1 + std::abs(lambda)));
        }
    }
}

TEST_F(ClosedForms, IntegerUniform) {
    ExpectExact({
        {IntegerUniformPdf(3 + 1e-12, 1, 6), 1.0 / 6},
        {IntegerUniformPdf(3 + 1e-11, 1, 6), 0},
        {IntegerUniformPdf(3, 6, 1), 0},
        {IntegerUniformCdf(2.5, 1, 6, false), 2.0 / 6},
        {IntegerUniformCdf(2.5, 1, 6, true), 4.0 / 6},
        {IntegerUniformCdf(3, 1, 6, true), 4.0 / 6},
        {IntegerUniformCdf(1000 + 1e-10, 1, 1000, true), 1e-3},
        {IntegerUniformInvCdf(0.07, 1, 100), 7},
        {IntegerUniformCdf(DBL_MAX, 1, 6, false), 1},
        {IntegerUniformInvCdf(0.5, 1, 6), 3},
        {IntegerUniformInvCdf(1e-20, 5, 6), 5},
        {IntegerUniformPdf(0, INT_MIN, INT_MAX), 0x1p-32},
        {IntegerUniformInvCdf(0.5, INT_MIN, INT_MAX), -1},
    });
}

// Without the frame nothing traps, and NA is a number like any other.
TEST_F(ClosedForms, BareFamilies) {
    const double values[] = {2, 1, 3, 2, kNaN};
    const double probabilities[] = {0.5, 0.2, 0.3, 0.9, 0.1};
    const double cumulative[] = {0.7, 0.2, 0.9, 0.8, 0.1};
    const auto cdf = [&](double x, bool upper) { return DiscreteCdf(x, values, cumulative, 5, upper); };
    const auto inverse = [&](double p) { return DiscreteInvCdf(p, values, cumulative, 3); };
    ExpectExact({
        {UniformCdf(1, 1, 1, false), 0},
        {UniformInvCdf(1, 0.1, 0.3), 0.3},
        {UniformInvCdf(0.5, 0, 2 * kNA), kNA},
        {UniformPdf(kNaN, 0, 1), 0},
        {UniformPdf(1, 1, 1), kInfinity},
        {DiscretePdf(2, values, probabilities, 5), 0.5},
        {DiscretePdf(2.5, values, probabilities, 5), 0},
        {DiscretePdf(2, values, probabilities, -1), 0},
        {cdf(0, false), 0},
        {cdf(0, true), 1},
        {cdf(1, true), 1},
        {cdf(2, false), 0.7},
        {cdf(2, true), 0.8},
        {cdf(2.5, false), 0.7},
        {cdf(2.5, true), 1 - 0.7},
        {cdf(4, false), 1},
        {cdf(4, true), 0},
        {cdf(kNaN, true), kNaN},
        {DiscreteCdf(2, values, cumulative, 0, false), kNaN},
        {inverse(0.1), 1},
        {inverse(0.7), 2},
        {inverse(0.95), 1},
        {DiscreteInvCdf(0.5, values, cumulative, 0), kNaN},
    });
    double each[] = {0, 2, 2.5, 3};
    DiscreteCdf(each, each, 4, values, cumulative, 5, false);
    ExpectExact({{each[0], 0}, {each[1], 0.7}, {each[2], 0.7}, {each[3], 0.9}});
}

}  // namespace
}  // namespace zul
