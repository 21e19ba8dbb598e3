#include "numerics/student_t.h"

#include <gtest/gtest.h>
#include <zul/frame.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include "frame/error_state.h"
#include "numerics/incomplete_beta.h"
#include "numerics/normal.h"
#include "support/reference_table.h"
#include "support/wild_arguments.h"

namespace zul::numerics {
namespace {

using frame::errorState;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(TDf, MatchesReferenceAndIsInverted) {
    for (const test::Row& row : test::ReadTable("numerics/student_t.csv", ',')) {
        const double t = test::Number(row.at(0));
        const TShape shape(test::Number(row.at(1)));
        const double expected[] = {test::Number(row.at(2)), test::Number(row.at(3))};
        const std::string where = "t = " + row.at(0) + ", df = " + row.at(1);
        double lower = 0;
        double upper = 0;
        t_df(t, shape, &lower, &upper);
        EXPECT_EQ(errorState.level, 0) << where;
        EXPECT_EQ(errorState.routine.View(), "t_df");
        EXPECT_TRUE(test::IsNear(lower, expected[0], 1e-9)) << where;
        EXPECT_TRUE(test::IsNear(upper, expected[1], 1e-9)) << where;
        // Near 0 the tails hardly move; below df = 1 the digits of the tail count 1 / df times.
        if (std::abs(t) < 0.1) continue;
        double quantile = 0;
        (t > 0 ? t_upper_qt : t_lower_qt)(expected[t > 0], shape, &quantile);
        EXPECT_TRUE(test::IsNear(quantile, t, 1e-12)) << where;
    }
}

TEST(TDf, EndsAndDomain) {
    for (const double df : {1e-3, 3.0, 1e12, kInfinity}) {
        for (const double t : {0.0, kInfinity, -kInfinity}) {
            double lower = 0.25;
            double upper = 0.25;
            t_df(t, df, &lower, &upper);
            EXPECT_LE(errorState.level, frame::LevelUnderflow);
            EXPECT_EQ(upper, t == 0 ? 0.5 : (t < 0 ? 1 : 0)) << df << " " << t;
            EXPECT_EQ(lower, 1 - upper);
        }
    }
    for (const auto& [t, df] : {std::pair{1.0, 0.0}, {kNaN, 1.0}, {1.0, kNaN}}) {
        double lower = 0.25;
        double upper = 0.125;
        t_df(t, df, &lower, &upper);
        EXPECT_EQ(errorState.level, frame::LevelDomain);
        EXPECT_EQ(lower, 0.25);
        EXPECT_EQ(upper, 0.125);
    }
}

TEST(TQuantile, MiddleEndsAndDomain) {
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
    for (const auto& [p, df] : {std::pair{0.0, 3.0}, {kNaN, 3.0}, {0.1, kNaN}, {1e-290, 3.0}, {0.1, 1e-3}}) {
        for (const auto quantile : {t_lower_qt, t_upper_qt}) {
            double t = 1;
            quantile(p, df, &t);
            EXPECT_EQ(errorState.level, frame::LevelDomain) << p << " " << df;
            EXPECT_EQ(t, -DBL_MAX);
        }
    }
    EXPECT_EQ(errorState.routine.View(), "t_upper_qt");
}

TEST(TQuantile, SurvivesAnyArgumentAndInvertsTheTails) {
    test::WildArguments wild(3);
    SetKelFpuStates();
    int failures = 0;
    for (int i = 0; i < test::kSweepCount; ++i) {
        const TShape shape(wild.OrSpecial(wild.Positive()));
        const double p = wild.OrSpecial(wild.Fraction());
        double t = 0;
        t_lower_qt(p, shape, &t);
        const bool inside = p > 0 && p < 1 && shape.Df() > 0;
        failures += errorState.level != frame::LevelOk && errorState.level != frame::LevelDomain;
        failures += !inside && t != -DBL_MAX;
        failures +=
            inside && shape.Df() > 1 && std::min(p, 1 - p) > 1e-280 && errorState.level != frame::LevelOk;
        double lower = 0.25;
        double upper = 0.75;
        const bool found = !errorState.Failed();
        t_df(found ? t : wild.OrSpecial(wild.Positive()), shape, &lower, &upper);
        failures += errorState.Failed() != !(shape.Df() > 0);
        failures +=
            !(lower >= 0 && lower <= 1 && upper >= 0 && upper <= 1 && std::abs(lower + upper - 1) <= 1e-15);
        if (found && shape.Df() > 1e-6) {
            failures += std::abs(lower - p) > 2e-9 * p && std::abs(upper - (1 - p)) > 2e-9 * (1 - p);
        }
    }
    ResetFpuStates();
    EXPECT_EQ(failures, 0);
}

}  // namespace
}  // namespace zul::numerics
