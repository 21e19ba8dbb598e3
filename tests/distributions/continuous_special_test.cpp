// The families beta, chi-square, F, gamma and t around the switch points of their densities and searches.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "support/reference_table.h"
#include "zul/distributions.h"

namespace zul {
namespace {

// What a quantile gives back, relative to p; where the distribution is narrow, within 1e-12 of the quantile.
void ExpectInverse(double p, double x, const std::function<double(double)>& lowerTail) {
    const double step = 2e-12 * std::abs(x);
    EXPECT_LE(lowerTail(x - step), p * (1 + 3e-12)) << p << " " << x;
    EXPECT_GE(lowerTail(x + step), p * (1 - 3e-12)) << p << " " << x;
}

TEST(ContinuousSpecial, NoncentralQuantilesInvertTheTail) {
    for (const double p : {1e-250, 1e-40, 1e-9, 0.003, 0.4, 0.7, 0.9999, 1 - 1e-12}) {
        for (const double noncentrality : {1e-3, 2.0, 300.0, 1e7}) {
            for (const double df : {2.0, 7.5, 4000.0}) {
                ExpectInverse(p, ChiSqInvCdf(p, df, noncentrality),
                              [=](double x) { return ChiSqCdf(x, df, noncentrality, false); });
                ExpectInverse(p, FInvCdf(p, 4, df, noncentrality),
                              [=](double x) { return FCdf(x, 4, df, noncentrality, false); });
            }
        }
        for (const double noncentrality : {-900.0, -4.0, 1e-3, 3.0, 20.0})
            for (const double df : {0.6, 1.0, 1.5, 9.0, 2e5}) {
                const double x = TInvCdf(p, df, noncentrality);
                if (x > -0.999e30)
                    ExpectInverse(p, x, [=](double t) { return TCdf(t, df, noncentrality, false); });
                else  // which of the two depends on whether 1e-30 lies between the tail and p
                    EXPECT_GT(TCdf(-1e30, df, noncentrality, false), p) << x;
            }
    }
    EXPECT_LT(ChiSqInvCdf(1e-20, 0.05, 1), 1e-280);
}

// Next to 0 the tail is cut to 0 and says nothing about p.
TEST(ContinuousSpecial, GammaQuantilesBelowTheTail) {
    double last = 0;
    for (double p = 8.6e-4; p < 2e-3; p *= 1.01) {
        const double quantile = GammaInvCdf(p, 0.01, 1, 0);
        EXPECT_NEAR(quantile / std::exp((std::log(p) + std::lgamma(1.01)) / 0.01), 1, 2e-12) << p;
        EXPECT_GT(quantile, last) << p;
        EXPECT_EQ(ChiSqInvCdf(p, 0.02, 0), 2 * quantile);
        last = quantile;
    }
    EXPECT_NEAR(GammaInvCdf(1e-295, 2, 1, 0) / std::sqrt(2e-295), 1, 1e-12);
}

// The tail is 2.5532e-05 at the end of the search.
TEST(ContinuousSpecial, NoncentralFFarOut) {
    EXPECT_NEAR(FCdf(1e30, 5, 0.3, 1, true) / 2.5532106632162412e-05, 1, 1e-12);
    EXPECT_NEAR(FCdf(1e100, 5, 0.3, 1, true) / FCdf(1e30, 5, 0.3, 1, true) / std::pow(1e-70, 0.15), 1, 1e-12);
    EXPECT_LT(FInvCdf(1 - 2.6e-5, 5, 0.3, 1), 1e30);
    EXPECT_TRUE(std::isnan(FInvCdf(1 - 2.5e-5, 5, 0.3, 1)));
}

// Few evaluations have to do.
TEST(ContinuousSpecial, NoncentralFQuantilesOfAHugeNoncentrality) {
    const struct {
        double p, df1, df2, noncentrality;
    } rows[] = {{0.59, 1e-12, 0.097, 5.5e9},
                {4e-218, 5400, 0.38, 5.8e9},
                {9e-4, 3e-11, 2e-3, 2e9},
                {0.999, 40, 9.99, 1.1e9}};
    for (const auto& r : rows)
        ExpectInverse(r.p, FInvCdf(r.p, r.df1, r.df2, r.noncentrality),
                      [&r](double x) { return FCdf(x, r.df1, r.df2, r.noncentrality, false); });
}

// Above the centre of two large shapes the fraction of the lower tail has no digits.
TEST(ContinuousSpecial, NoncentralFWithManyDegreesOfFreedom) {
    for (double x = 0.998; x < 1.002; x += 0.0001)
        for (const bool upper : {false, true})
            EXPECT_NEAR(FCdf(x, 1e7, 9e6, 1e-6, upper) / FCdf(x, 1e7, 9e6, 0, upper), 1, 2e-9) << x;
}

// Both sides of each switch point of a density in its parameters.
TEST(ContinuousSpecial, DensitiesDoNotJump) {
    const struct {
        const char* what;
        std::function<double(double)> at;
        double switchPoint;
    } rows[] = {
        {"beta", [](double a) { return BetaPdf(0.3, a, 30); }, 20},
        {"beta powers", [](double a) { return BetaPdf(0.6, a, 400); }, 600},
        {"chi-square", [](double df) { return ChiSqPdf(130, df); }, 100},
        {"gamma", [](double a) { return GammaPdf(41, a, 1, 0); }, 50},
        {"raised gamma", [](double a) { return GammaPdf(9, a, 1, 0); }, 10},
        {"F", [](double df) { return FPdf(1.3, df, 40); }, 60},
        {"F powers", [](double df) { return FPdf(1.1, df, 800); }, 1200},
        {"t", [](double df) { return TPdf(1.7, df, 0); }, 20},
        {"t far out", [](double x) { return TPdf(x, 0.01, 0); }, 1e149},
        {"noncentral t", [](double x) { return TPdf(x, 6, -2); }, std::sqrt(6.0 / 13)},
        {"noncentral t far out", [](double d) { return TPdf(20, 30, d); }, 20},
    };
    for (const auto& [what, at, switchPoint] : rows) {
        const double below = at(switchPoint * (1 - 1e-14));
        EXPECT_NEAR(at(switchPoint * (1 + 1e-14)) / below, 1, 2e-12) << what;
    }
}

// The difference of the two tails would lose all digits close to 0, and even its sign.
TEST(ContinuousSpecial, NoncentralTDensityNearZero) {
    for (const double df : {0.3, 6.0, 5e7})
        for (const double noncentrality : {-33.0, -14.0, 1e-6, 2.0}) {
            const double centre = TPdf(0, df, noncentrality);
            EXPECT_NEAR(TPdf(1e-13, df, noncentrality) / centre, 1, 1e-11);
            EXPECT_NEAR(TPdf(-1e-300, df, noncentrality) / centre, 1, 1e-14);
        }
}

}  // namespace
}  // namespace zul
