#include "numerics/poisson.h"

#include <gtest/gtest.h>

#include <cmath>

#include "frame/error_state.h"
#include "numerics/limits.h"

namespace zul::numerics {
namespace {

using frame::errorState;

double Cdf(double k, double mean) {
    double lower = -7;
    double upper = -7;
    poisson_df(k, mean, &lower, &upper);
    return lower;
}

double UpperTail(double k, double mean) {
    double lower = -7;
    double upper = -7;
    poisson_df(k, mean, &lower, &upper);
    return upper;
}

TEST(PoissonDf, IsThePartialSumOfTheMass) {
    EXPECT_NEAR(Cdf(2, 3), std::exp(-3) * (1 + 3 + 4.5), 1e-9);
    EXPECT_EQ(Cdf(2, 3), Cdf(2.9, 3));
    EXPECT_NEAR(UpperTail(0, 1e-20), 1e-20, 1e-29);
    EXPECT_EQ(Cdf(-1, 3), 0);
    EXPECT_EQ(Cdf(0, 0), 1);
}

TEST(PoissonDf, WritesNothingOutsideItsDomain) {
    for (const auto& [k, mean] :
         {std::pair{1.0, -1.0}, {-1.0, -1.0}, {kShapeLimit, 1.0}, {std::nan(""), 1.0}, {1.0, std::nan("")}}) {
        EXPECT_EQ(Cdf(k, mean), -7);
        EXPECT_EQ(errorState.level, frame::LevelDomain) << k << " " << mean;
        EXPECT_EQ(errorState.routine.View(), "poisson_df");
    }
}

// The answer against its definition, at the tails themselves, next to them and between them.
TEST(PoissonQuantiles, AreTheSmallestNumbersThatReachTheTarget) {
    for (const double mean : {1e-9, 0.3, 2.0, 30.0, 1e4, 9e7}) {
        for (const double sds : {-30.0, -5.0, -1.0, 0.0, 0.3, 1.5, 6.0, 33.0}) {
            const double at = std::max(0.0, std::floor(mean + sds * std::sqrt(mean) + sds * sds / 6));
            for (const double factor : {1.0, 1 - 1e-15, 1 + 1e-15, 0.9999, 0.1}) {
                double k = 0;
                double c = 0;
                const double p = Cdf(at, mean) * factor;
                if (p > 0 && p < 1) {
                    poisson_lower_quant(p, mean, &k, &c);
                    ASSERT_EQ(errorState.level, 0) << mean << " " << p;
                    ASSERT_GT(Cdf(k, mean), p);
                    ASSERT_LE(Cdf(k - 1, mean), p);
                    const double share = (p - Cdf(k - 1, mean)) / (Cdf(k, mean) - Cdf(k - 1, mean));
                    ASSERT_EQ(c, k == 0 ? 1 : share);
                }
                const double q = UpperTail(at, mean) * factor;
                if (q > 0 && q < 1) {
                    poisson_upper_quant(q, mean, &k, &c);
                    ASSERT_EQ(errorState.level, 0) << mean << " " << q;
                    ASSERT_LE(UpperTail(k, mean), q);
                    ASSERT_GT(UpperTail(k - 1, mean), q);
                    ASSERT_EQ(c, (q - UpperTail(k, mean)) / (UpperTail(k - 1, mean) - UpperTail(k, mean)));
                }
            }
        }
    }
}

}  // namespace
}  // namespace zul::numerics
