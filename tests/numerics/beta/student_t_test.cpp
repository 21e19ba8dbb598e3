#include "numerics/beta/student_t.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "frame/error_state.h"
#include "numerics/normal.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(TDf, MatchesReferenceAndIsInverted) {
    for (const test::Row& row : test::ReadTable("numerics/student_t.csv", ',')) {
        const double t = test::Number(row.at(0));
        const TShape shape(test::Number(row.at(1)));
        const double expected[] = {test::Number(row.at(2)), test::Number(row.at(3))};
        const std::string where = "t = " + row.at(0) + ", df = " + row.at(1);
        double lower = 0;
        double upper = 0;
        t_df(t, shape, &lower, &upper);
        EXPECT_EQ(ErrorState().level, 0) << where;
        EXPECT_EQ(ErrorState().routine.View(), "t_df");
        EXPECT_TRUE(test::IsNear(lower, expected[0], 1e-9)) << where;
        EXPECT_TRUE(test::IsNear(upper, expected[1], 1e-9)) << where;
        // Near 0 the tails hardly move; below df = 1 the digits of the tail count 1 / df times.
        if (std::abs(t) < 0.1) continue;
        double quantile = 0;
        (t > 0 ? t_upper_qt : t_lower_qt)(expected[t > 0], shape, &quantile);
        EXPECT_TRUE(test::IsNear(quantile, t, 1e-12)) << where;
    }
}

TEST(TDf, Ends) {
    for (const double df : {1e-3, 3.0, 1e12, kInfinity}) {
        for (const double t : {0.0, kInfinity, -kInfinity}) {
            double lower = 0.25;
            double upper = 0.25;
            t_df(t, df, &lower, &upper);
            EXPECT_LE(ErrorState().level, frame::LevelUnderflow);
            EXPECT_EQ(upper, t == 0 ? 0.5 : (t < 0 ? 1 : 0)) << df << " " << t;
            EXPECT_EQ(lower, 1 - upper);
        }
    }
}

TEST(TQuantile, MiddleAndEnds) {
    for (const double df : {0.4, 1.0, 2.0, 7.0, 1e9, kInfinity}) {
        double t = 1;
        t_lower_qt(0.5, df, &t);
        EXPECT_EQ(t, 0) << df;
        double z = 0;
        normal_upper_quant(0.1, &z);
        t_upper_qt(0.1, df, &t);
        if (df > 1e8) {
            EXPECT_NEAR(t, z, 1e-8);
        }
    }
}

}  // namespace
}  // namespace zul::numerics
