#include "numerics/poisson.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "frame/error_state.h"
#include "support/reference_table.h"

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

TEST(PoissonDf, MatchesReference) {
    for (const test::Row& row : test::ReadTable("numerics/poisson.csv", ',')) {
        const double k = test::Number(row.at(0));
        const double mean = test::Number(row.at(1));
        EXPECT_TRUE(test::IsNear(Cdf(k, mean), test::Number(row.at(2)), 1e-12)) << k << " " << mean;
        EXPECT_TRUE(test::IsNear(UpperTail(k, mean), test::Number(row.at(3)), 1e-12)) << k << " " << mean;
        EXPECT_EQ(Cdf(k + 0.9, mean), Cdf(k, mean));
    }
    EXPECT_EQ(Cdf(-1, 3), 0);
    EXPECT_EQ(Cdf(0, 0), 1);
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

TEST(PoissonQuantiles, KnowTheEnds) {
    double k = 7;
    double c = 7;
    poisson_lower_quant(0, 50, &k, &c);
    EXPECT_EQ(k, 0);
    EXPECT_EQ(c, 1);
    poisson_upper_quant(1, 1e4, &k, &c);
    EXPECT_EQ(k, 0);
    poisson_upper_quant(0.3, 0, &k, &c);
    EXPECT_EQ(k, 0);
    EXPECT_EQ(c, 0.3);
}

}  // namespace
}  // namespace zul::numerics
