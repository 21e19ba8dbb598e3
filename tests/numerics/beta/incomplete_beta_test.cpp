#include "numerics/beta/incomplete_beta.h"

#include <gtest/gtest.h>

#include <cmath>

#include "frame/error_state.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "numerics/limits.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

constexpr double kUnwritten = -7;

struct Result {
    double lower = kUnwritten;
    double upper = kUnwritten;
    double density = kUnwritten;

    bool operator==(const Result&) const = default;
};

Result Evaluate(double x, double a, double b) {
    Result r;
    beta_df(x, BetaShapes(a, b), &r.lower, &r.upper, &r.density);
    return r;
}

TEST(BetaDf, MatchesReferenceOnEveryBranch) {
    test::ForEachRow("numerics/beta_pair.csv", [](const std::vector<double>& row) {
        const double a = row[0];
        const double b = row[1];
        const double x = row[2];
        const Result r = Evaluate(x, a, b);
        EXPECT_EQ(ErrorState().level, row[3]);
        EXPECT_EQ(ErrorState().routine.View(), "beta_df");
        EXPECT_EQ(ErrorState().method, row[4]);
        EXPECT_TRUE(test::IsNear(r.lower, row[5], 1e-9));
        EXPECT_TRUE(test::IsNear(r.upper, row[6], 1e-9));
        if (row[7] > kLogUnderflow) {
            const double tolerance = a + b < 1e6 ? 1e-12 : 1e-11;
            EXPECT_TRUE(test::IsNear(r.density, std::exp(row[7]), tolerance));
            EXPECT_NEAR(BetaLogDensity(BetaShapes(a, b).Direct(), x), row[7], tolerance);
        }
        if (x == 0.5) return;  // which is below the switch point from either end
        // One object for many x, without the density, and from the other end: the same bits.
        const BetaShapes mirrored(b, a);
        Result s;
        beta_df(0.3, mirrored, &s.lower, &s.upper, &s.density);
        beta_df(1 - x, x, mirrored, &s.upper, &s.lower, &s.density);
        EXPECT_EQ(s, r);
        beta_df(1 - x, x, mirrored, &s.upper, &s.lower, nullptr);
        EXPECT_EQ(s, r);
    });
}

TEST(BetaDf, SaturatesAtTheEndsAndForVanishingShapes) {
    struct Case {
        double x, a, b, lower;
        int level;
    };
    for (const Case& c : {Case{0, 2, 3, 0, 0},
                          {2.2e-288, 2, 3, 0, 0},
                          {1e-300, 0, 0.1, 0, 0},
                          {1, 2, 3, 1, 0},
                          {1, 2, 0, 1, 0},
                          {0.5, 1e-13, 1e-13, 0.5, 1},
                          {0.3, 0x1p-45, 0x3p-45, 0.75, 1},
                          {0.3, 0, 3, 1, 1},
                          {0.7, 3, 0, 0, 1}}) {
        EXPECT_EQ(Evaluate(c.x, c.a, c.b), (Result{c.lower, 1 - c.lower, kNoBetaDensity}))
            << c.x << " " << c.a;
        EXPECT_EQ(ErrorState().level, c.level) << c.x << " " << c.a;
        EXPECT_EQ(ErrorState().method, 0);
    }
    Result r;
    beta_df(1, 1e-290, BetaShapes(2, 3), &r.lower, &r.upper, nullptr);
    EXPECT_EQ(r, (Result{1, 0, kUnwritten}));
    Evaluate(1e-6, 94906265.0, 94906265.0);
    EXPECT_EQ(ErrorState().level, frame::LevelUnderflow);
}

}  // namespace
}  // namespace zul::numerics
