// Rules of the families with closed forms that no table of values shows.
#include <gtest/gtest.h>

#include <cmath>

#include "support/reference_table.h"
#include "zul/distributions.h"

namespace zul {
namespace {

using test::ExpectExact;

// Both sides of each switch between formulas, against the same quantity by another way.
TEST(ClosedForms, TailsKeepTheirDigits) {
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
    for (const double p : {0.99e-100, 1e-150, 4.3e-284})  // by search
        EXPECT_NEAR(NormalCdf(NormalInvCdf(p, 0, 1), 0, 1, false) / p, 1, 1e-8) << p;
}

// Every tail comes back, and the density is the slope of the quantile function and even.
TEST(ClosedForms, TukeyLambda) {
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

// A table need not be sorted nor add up.
TEST(ClosedForms, UserDefinedTable) {
    const double values[] = {2, 1, 3, 2, kNaN};
    const double probabilities[] = {0.5, 0.2, 0.3, 0.9, 0.1};
    const double cumulative[] = {0.7, 0.2, 0.9, 0.8, 0.1};
    const auto cdf = [&](double x, bool upper) { return DiscreteCdf(x, values, cumulative, 5, upper); };
    const auto inverse = [&](double p) { return DiscreteInvCdf(p, values, cumulative, 3); };
    ExpectExact({
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
