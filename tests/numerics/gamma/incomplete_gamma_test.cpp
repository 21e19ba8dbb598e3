#include "numerics/gamma/incomplete_gamma.h"

#include <gtest/gtest.h>

#include <cmath>

#include "frame/error_state.h"
#include "numerics/gamma/incomplete_gamma_pair.h"
#include "numerics/limits.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

constexpr double kUnwritten = -7;
constexpr double kNotCompared = -8;

struct Result {
    double lower = kUnwritten;
    double upper = kUnwritten;
    double density = kUnwritten;
};

Result Evaluate(double x, double a) {
    Result r;
    gamma_df(x, a, &r.lower, &r.upper, &r.density);
    return r;
}

TEST(GammaDf, MatchesReferenceOnEveryBranch) {
    test::ForEachRow("numerics/gamma_pair.csv", [](const std::vector<double>& row) {
        const Result r = Evaluate(row[1], row[0]);
        EXPECT_EQ(ErrorState().level, 0);
        EXPECT_EQ(ErrorState().routine.View(), "gamma_df");
        EXPECT_EQ(ErrorState().method, row[2]);
        EXPECT_TRUE(test::IsNear(r.lower, row[3], 1e-9));
        EXPECT_TRUE(test::IsNear(r.upper, row[4], 1e-9));
        EXPECT_TRUE(row[5] <= kLogUnderflow ||
                    test::IsNear(r.density, std::exp(row[5]), row[0] < 1e7 ? 1e-12 : 1e-11));
    });
}

TEST(GammaDf, SaturatesAtTheEnds) {
    struct Case {
        double x;
        double a;
        int method;
        int level;
        double lower;
        double density;
    };
    const Case cases[] = {
        {0, 2, GammaTinyArgument, 0, 0, kUnwritten},
        {2.2e-288, 2, GammaTinyArgument, 0, 0, kUnwritten},
        {2e8, 3, GammaHugeArgument, 0, 1, 0},
        {kInf, 1, GammaHugeArgument, 0, 1, 0},
        {1e-100, 9, GammaLowerCannotRise, 1, 0, 0},
        {700, 0.5, GammaUpperFalling, 1, 1, 0},
        {5000, 2000, GammaUpperCannotRise, 1, 1, 0},
        // Within 1e-5 of what the largest possible sum could lift, where the sum itself does not.
        {783.2687477025329, 2000, GammaLowerUnderflow, 1, 0, kNotCompared},
        {4086.8244359647188, 2000, GammaUpperUnderflow, 1, 1, 0},
        {671.8272742541802, 2.5, GammaUpperUnderflow + 1, 1, 1, 0},
    };
    for (const Case& c : cases) {
        const Result r = Evaluate(c.x, c.a);
        EXPECT_EQ(ErrorState().method, c.method) << c.x << " " << c.a;
        EXPECT_EQ(ErrorState().level, c.level) << c.x << " " << c.a;
        EXPECT_EQ(r.lower, c.lower) << c.x << " " << c.a;
        EXPECT_EQ(r.upper, 1 - c.lower) << c.x << " " << c.a;
        if (c.density != kNotCompared) {
            EXPECT_EQ(r.density, c.density) << c.x << " " << c.a;
        }
    }
}

// The prepared shape 1/2 looks up how long its loops run: it must not be seen in a single bit, in the method
// or in the number of iterations.
TEST(GammaDf, OneHalfGivesTheBitsOfAnyShape) {
    for (double x = 1e-12; x < 800; x *= 1.0007) {
        const Result general = Evaluate(x, 0.5);
        const int method = ErrorState().method;
        const int count = ErrorState().count;
        Result r;
        incomplete_gamma::Pair(x, kOneHalf, &r.lower, &r.upper, &r.density);
        ASSERT_EQ(ErrorState().method, method) << x;
        ASSERT_EQ(ErrorState().count, count) << x;
        ASSERT_EQ(r.lower, general.lower) << x;
        ASSERT_EQ(r.upper, general.upper) << x;
        ASSERT_EQ(r.density, general.density) << x;
    }
}

}  // namespace
}  // namespace zul::numerics
