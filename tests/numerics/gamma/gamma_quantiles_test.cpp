#include "numerics/gamma/gamma_quantiles.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>

#include "frame/error_state.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "numerics/limits.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

double Quantile(double p, double a, bool upper) {
    double x = 7;
    (upper ? gamma_upper_quant : gamma_lower_quant)(p, a, &x);
    return x;
}

TEST(GammaQuantiles, MatchReference) {
    for (const test::Row& row : test::ReadTable("numerics/gamma_quantiles.csv", ',')) {
        const double a = test::Number(row.at(0));
        const bool upper = row.at(1) == "U";
        const double p = test::Number(row.at(2));
        const double x = Quantile(p, a, upper);
        EXPECT_EQ(ErrorState().level, 0) << row.at(0) << " " << row.at(2);
        // What an error of 5e-13 in the tail does to the argument.
        const double rtol = 1e-15 + 5e-13 / test::Number(row.at(4));
        EXPECT_TRUE(test::IsNear(x, test::Number(row.at(3)), rtol)) << row.at(0) << " " << row.at(2);
        // The pair has its own tolerance of 1e-9, which it comes near to for such shapes.
        if (x < kTinyArgument || a > 1e6) continue;
        double lower = 0;
        double upperTail = 0;
        gamma_df(x, a, &lower, &upperTail, nullptr);
        EXPECT_TRUE(test::IsNear(upper ? upperTail : lower, p, 1e-9)) << row.at(0) << " " << row.at(2);
    }
}

TEST(GammaQuantiles, KnowTheEnds) {
    EXPECT_EQ(Quantile(0, 2, false), 0);
    EXPECT_EQ(Quantile(1, 2, true), 0);
    EXPECT_EQ(ErrorState().level, 0);
    EXPECT_EQ(Quantile(1e-4, 1e-3, false), 0);  // 1e-4000
    EXPECT_EQ(ErrorState().level, frame::LevelUnderflow);
    EXPECT_TRUE(test::IsNear(Quantile(1e-305, 2, false), std::sqrt(2e-305), 1e-10));
    EXPECT_TRUE(test::IsNear(Quantile(1e-305, 1, true), 305 * std::log(10.0), 1e-14));
    EXPECT_EQ(Quantile(1e-310, 3, true), -DBL_MAX);
    EXPECT_EQ(Quantile(0.25, 1, true), -std::log(0.25));
}

}  // namespace
}  // namespace zul::numerics
