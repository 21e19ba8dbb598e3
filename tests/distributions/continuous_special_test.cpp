// Exact rules of the families beta, chi-square, F, gamma and t: ends, special parameters, failures, and the
// switch points of their densities and searches.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <vector>

#include "support/reference_table.h"
#include "zul/distributions.h"
#include "zul/frame.h"

namespace zul {
namespace {

constexpr double kNA = 1.23456e30;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class ContinuousSpecial : public testing::Test {
protected:
    void TearDown() override { ResetFpuStates(); }
};

TEST_F(ContinuousSpecial, ExactValues) {
    const std::vector<test::Exact> rows = {
        // Beta: the density at the ends depends on the shape there; what fails inside is no result.
        {BetaPdf(-0.1, 2, 3), 0},
        {BetaPdf(1.1, 2, 3), 0},
        {BetaPdf(0, 0.5, 3), kNaN},
        {BetaPdf(0, 1, 3), 3},
        {BetaPdf(0, 1.5, 3), 0},
        {BetaPdf(1, 3, 0.5), kNaN},
        {BetaPdf(1, 3, 1), 3},
        {BetaPdf(1, 3, 1.5), 0},
        {BetaPdf(0.5, -1, 2), kNaN},
        {BetaPdf(0.5, 2, 1e-17), kNaN},
        {BetaPdf(0.5, kNaN, 2), kNaN},
        {BetaPdf(1e-300, 3e4, 3e4), 0},
        {BetaCdf(0, 2, 3, false), 0},
        {BetaCdf(-1, -2, 3, true), 1},
        {BetaCdf(1, 2, 3, false), 1},
        {BetaCdf(2, 2, 3, true), 0},
        {BetaCdf(0.5, -1, 2, false), kNaN},
        {BetaInvCdf(0, -2, 3), 0},
        {BetaInvCdf(1, -2, 3), 1},
        {BetaInvCdf(1.5, 2, 3), kNaN},
        {BetaInvCdf(-0.5, 2, 3), kNaN},
        // Chi-square.
        {ChiSqPdf(0, -1), 0},
        {ChiSqPdf(5e-324, 2), 0.5},
        {ChiSqPdf(5e-324, 1e-3), kNaN},
        {ChiSqCdf(0, -3, 0, true), 1},
        {ChiSqCdf(1, -3, 0, true), kNaN},
        {ChiSqCdf(1, 3, -1, true), kNaN},
        {ChiSqInvCdf(0, -3, 1), 0},
        {ChiSqInvCdf(1, 3, 0), kNaN},
        {ChiSqInvCdf(1, 3, 2), kNaN},
        {ChiSqInvCdf(0.5, 3, -1), kNaN},
        {ChiSqInvCdf(1.5, 3, 2), kNaN},
        {ChiSqInvCdf(-0.5, 3, 2), kNaN},
        {ChiSqInvCdf(0.5, 3, 1e12), kNaN},
        {ChiSqInvCdf(1e-10, 1e-3, 0), 0},
        // F. A tiny or negative noncentrality counts as 0 for the quantile alone.
        {FPdf(0, -1, 1), 0},
        {FPdf(1e308, 1e3, 1e3), 0},
        {FCdf(0, -3, 4, 0, true), 1},
        {FCdf(1, 3, 4, -1, false), kNaN},
        {FInvCdf(0, -3, 4, 0), 0},
        {FInvCdf(1, 3, 4, 0), kNaN},
        {FInvCdf(1, 3, 4, 5), kNaN},
        {FInvCdf(kNA, 3, 4, 5), kNaN},
        {FInvCdf(0.3, 3, 4, 2.2e-307), FInvCdf(0.3, 3, 4, 0)},
        {FInvCdf(0.3, 3, 4, -7), FInvCdf(0.3, 3, 4, 0)},
        {FInvCdf(0.3, 1e308, 1e308, 1), kNaN},
        // Gamma. Deliberate: quantiles of exactly 0 come without the threshold.
        {GammaPdf(7, -2, 0, 7), 0},
        {GammaPdf(8, -2, 3, 7), kNaN},
        {GammaPdf(8, 2, -3, 7), kNaN},
        {GammaCdf(6, -2, 3, 7, true), 1},
        {GammaCdf(7, 2, 3, 7, true), 1},
        {GammaCdf(8, 2, -3, 7, true), kNaN},
        {GammaInvCdf(0, 2, 3, 7), 0},
        {GammaInvCdf(1e-10, 1e-3, 3, 7), 0},
        {GammaInvCdf(1, 2, 3, 7), kNaN},
        {GammaInvCdf(0.5, -2, 3, 7), kNaN},
        // t.
        {TPdf(1e200, 3, 0), 0},
        {TPdf(0, 3, 1e200), 0},
        {TPdf(kNA, 3, 1), kNaN},
        {TCdf(0, 3, 0, true), 0.5},
        {TCdf(1, -3, 1, false), kNaN},
        {TCdf(1, 1.7e308, 0.5, false), kNaN},
        {TInvCdf(0, 3, 0), kNaN},
        {TInvCdf(1, 3, 2), kNaN},
        {TInvCdf(0.5, 3, 0), 0},
        {TInvCdf(1.5, 3, 2), kNaN},
        {TInvCdf(0.001, 0.01, 1), kNaN},  // below -1e30
    };
    test::ExpectExact(rows, 1e-14);
}

TEST_F(ContinuousSpecial, FailuresThatReachTheHost) {
    EXPECT_THROW(BetaPdf(kNaN, 2, 3), std::invalid_argument);
    EXPECT_THROW(BetaCdf(0.5, kNaN, 3, false), std::invalid_argument);
    EXPECT_THROW(ChiSqPdf(1, -2), std::invalid_argument);
    EXPECT_THROW(ChiSqPdf(1, 1e-17), std::invalid_argument);
    EXPECT_THROW(FPdf(1, -2, 3), std::invalid_argument);
    EXPECT_THROW(FPdf(1, -2, -3), std::invalid_argument);
    EXPECT_THROW(FPdf(1, 2, 0), std::runtime_error);
    EXPECT_THROW(FPdf(5e-324, 0.001, 0.001), std::runtime_error);
    EXPECT_THROW(GammaPdf(8, 2, 0, 7), std::runtime_error);
    EXPECT_THROW(GammaCdf(7, 2, 0, 7, false), std::invalid_argument);
    EXPECT_THROW(GammaInvCdf(0.99, 2, 1.7e308, 0), std::overflow_error);
    EXPECT_THROW(TPdf(0, -3, 0), std::invalid_argument);
    EXPECT_THROW(TPdf(1, -1, 2), std::invalid_argument);
    EXPECT_THROW(TInvCdf(kNaN, 3, 2), std::invalid_argument);
}

// Beyond the noncentrality that the mixture takes, also by the answer of a smaller one that is 0 or 1
// already.
TEST_F(ContinuousSpecial, NoncentralTIsMirrored) {
    for (const double df : {0.5, 3.0, 1e6, 1.89e8})
        for (const double noncentrality : {0.3, 5.0, 130.0, 9000.0, 14000.0, 1e200})
            for (const double x : {-2.0, 0.0, 1.5, 120.0, 9000.0, 1e9})
                for (const bool upper : {false, true}) {
                    const double tail = TCdf(x, df, noncentrality, upper);
                    EXPECT_TRUE(test::IsNear(TCdf(-x, df, -noncentrality, !upper), tail, 0))
                        << x << " " << df << " " << noncentrality;
                }
    EXPECT_EQ(TCdf(50, 1e6, 2e4, false), 0);
    EXPECT_EQ(TCdf(-50, 1e6, -2e4, false), 1);
    EXPECT_TRUE(IsNaN(TCdf(1e6, 5, 2e4, false)));
    EXPECT_TRUE(IsNaN(TCdf(1, 2e8, 1, false)));
    EXPECT_TRUE(IsNaN(TInvCdf(0.5, 5, 2e4)));
}

// What a quantile gives back, relative to p; where the distribution is narrow, within 1e-12 of the quantile.
void ExpectInverse(double p, double x, const std::function<double(double)>& lowerTail) {
    const double step = 2e-12 * std::abs(x);
    EXPECT_LE(lowerTail(x - step), p * (1 + 3e-12)) << p << " " << x;
    EXPECT_GE(lowerTail(x + step), p * (1 - 3e-12)) << p << " " << x;
}

TEST_F(ContinuousSpecial, NoncentralQuantilesInvertTheTail) {
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
    EXPECT_NEAR(FInvCdf(0.9, 3, 0.01, 1), 1e30, 1e18);  // Deliberate: all that is beyond counts as there
    EXPECT_LT(ChiSqInvCdf(1e-20, 0.05, 1), 1e-280);
}

// Above the centre of two large shapes the fraction of the lower tail has no digits.
TEST_F(ContinuousSpecial, NoncentralFWithManyDegreesOfFreedom) {
    for (double x = 0.998; x < 1.002; x += 0.0001)
        for (const bool upper : {false, true})
            EXPECT_NEAR(FCdf(x, 1e7, 9e6, 1e-6, upper) / FCdf(x, 1e7, 9e6, 0, upper), 1, 2e-9) << x;
}

// Both sides of each switch point of a density in its parameters.
TEST_F(ContinuousSpecial, DensitiesDoNotJump) {
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
TEST_F(ContinuousSpecial, NoncentralTDensityNearZero) {
    for (const double df : {0.3, 6.0, 5e7})
        for (const double noncentrality : {-33.0, -14.0, 1e-6, 2.0}) {
            const double centre = TPdf(0, df, noncentrality);
            EXPECT_NEAR(TPdf(1e-13, df, noncentrality) / centre, 1, 1e-11);
            EXPECT_NEAR(TPdf(-1e-300, df, noncentrality) / centre, 1, 1e-14);
        }
}

}  // namespace
}  // namespace zul
