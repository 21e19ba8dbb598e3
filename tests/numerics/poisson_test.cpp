#include "numerics/poisson.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "frame/error_state.h"
#include "numerics/limits.h"
#include "support/reference_table.h"
#include "support/wild_arguments.h"

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

TEST(PoissonQuantiles, KnowTheEndsAndTheirDomain) {
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
    const double nan = std::nan("");
    for (const auto& [p, mean] : {std::pair{1.0, 3.0},
                                  {-0.1, 3.0},
                                  {1.1, 3.0},
                                  {nan, 3.0},
                                  {0.5, -1.0},
                                  {0.5, nan},
                                  {0.5, 1e8},
                                  {0.9, kShapeLimit}}) {
        poisson_lower_quant(p, mean, &k, &c);
        EXPECT_EQ(k, -DBL_MAX) << p << " " << mean;
        EXPECT_EQ(c, -DBL_MAX);
        EXPECT_EQ(errorState.level, frame::LevelDomain);
        EXPECT_EQ(errorState.routine.View(), "poisson_lower_quant");
        poisson_upper_quant(1 - p, mean, &k, &c);
        EXPECT_EQ(k, -DBL_MAX) << p << " " << mean;
        EXPECT_EQ(errorState.level, frame::LevelDomain);
    }
}

TEST(Poisson, HoldsForWildArguments) {
    test::Sweep([](test::WildArguments& random) {
        const double mean = std::min(random.Wild(-3, 2), 300.0);
        const double k =
            random.Uniform() < 0.5 ? random.Wild(-1, 4) : std::max(0.0, mean * random.Uniform(0, 2));
        double lower = 0;
        double upper = 0;
        poisson_df(k, mean, &lower, &upper);
        ASSERT_EQ(errorState.level == frame::LevelDomain, std::floor(k) + 1 > kShapeLimit)
            << k << " " << mean;
        if (!errorState.Failed()) test::ExpectTails(lower, upper);

        double quantile = 0;
        double share = 0;
        (random.Uniform() < 0.5 ? poisson_lower_quant : poisson_upper_quant)(random.Fraction(), mean,
                                                                             &quantile, &share);
        ASSERT_LE(errorState.level, frame::LevelUnderflow) << mean;
        ASSERT_TRUE(quantile >= 0 && quantile == std::floor(quantile) && share >= 0 && share <= 1) << mean;
    });
}

}  // namespace
}  // namespace zul::numerics
