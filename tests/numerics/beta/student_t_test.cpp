#include "numerics/beta/student_t.h"

#include <gtest/gtest.h>

#include <cmath>

#include "frame/error_state.h"
#include "numerics/normal.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

TEST(TDf, MatchesReferenceAndIsInverted) {
    test::ForEachRow("numerics/student_t.csv", [](const std::vector<double>& row) {
        const double t = row[0];
        const TShape shape(row[1]);
        double lower = 0;
        double upper = 0;
        t_df(t, shape, &lower, &upper);
        EXPECT_EQ(ErrorState().level, 0);
        EXPECT_EQ(ErrorState().routine.View(), "t_df");
        EXPECT_TRUE(test::IsNear(lower, row[2], 1e-9));
        EXPECT_TRUE(test::IsNear(upper, row[3], 1e-9));
        // Near 0 the tails hardly move; below df = 1 the digits of the tail count 1 / df times.
        if (std::abs(t) < 0.1) return;
        double quantile = 0;
        (t > 0 ? t_upper_qt : t_lower_qt)(row[t > 0 ? 3 : 2], shape, &quantile);
        EXPECT_TRUE(test::IsNear(quantile, t, 1e-12));
    });
}

TEST(TDf, Ends) {
    for (const double df : {1e-3, 3.0, 1e12, kInf}) {
        for (const double t : {0.0, kInf, -kInf}) {
            double lower = 0.25;
            double upper = 0.25;
            t_df(t, df, &lower, &upper);
            EXPECT_LE(ErrorState().level, frame::LevelUnderflow);
            EXPECT_EQ(upper, t == 0 ? 0.5 : (t < 0 ? 1 : 0)) << df << " " << t;
            EXPECT_EQ(lower, 1 - upper);
        }
    }
}

TEST(TQuantile, OfInfiniteDegreesOfFreedomIsTheNormalOne) {
    double z = 0;
    double t = 1;
    normal_upper_quant(0.1, &z);
    t_upper_qt(0.1, kInf, &t);
    EXPECT_NEAR(t, z, 1e-8);
}

}  // namespace
}  // namespace zul::numerics
