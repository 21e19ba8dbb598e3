#include "numerics/gamma/noncentral_gamma.h"

#include <gtest/gtest.h>

#include "frame/error_state.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

struct Tails {
    double lower = -7;
    double upper = -7;
};

Tails Evaluate(double x, double df, double noncentrality) {
    Tails tails;
    chi2_ncdf(x, df, noncentrality, &tails.lower, &tails.upper);
    return tails;
}

TEST(Chi2Ncdf, MatchesReference) {
    test::ForEachRow("numerics/noncentral_chi2.csv", [](const std::vector<double>& row) {
        const Tails tails = Evaluate(row[0], row[1], row[2]);
        EXPECT_EQ(ErrorState().level, 0);
        EXPECT_TRUE(test::IsNear(tails.lower, row[3], 1e-12));
        EXPECT_TRUE(test::IsNear(tails.upper, row[4], 1e-12));
    });
}

TEST(Chi2Ncdf, SaturatesAtTheEnds) {
    for (const double nc : {0.0, 1e-3, 5.0, 1e6, 1e12}) {
        for (const double x : {1e30, kInf}) {
            const Tails tails = Evaluate(x, 3, nc);
            EXPECT_EQ(tails.lower, 1);
            EXPECT_EQ(tails.upper, 0);
            EXPECT_LE(ErrorState().level, frame::LevelUnderflow);
        }
        EXPECT_EQ(Evaluate(0, 3, nc).lower, 0);
    }
    EXPECT_EQ(Evaluate(1, 1, 1e300).lower, 0);
    EXPECT_EQ(ErrorState().level, frame::LevelUnderflow);
    EXPECT_NEAR(Evaluate(1e9, 1e3, 1e9).lower, 0.5, 0.02);  // ends in good time
    EXPECT_EQ(ErrorState().level, 0);
    // A tail just below the least: neither of the bounds tells.
    EXPECT_EQ(Evaluate(1e-300, 3, 1000).lower, 0);
    EXPECT_EQ(Evaluate(1e-200, 3, 1000).lower, 0);
    EXPECT_EQ(ErrorState().level, frame::LevelUnderflow);
    EXPECT_EQ(Evaluate(1e11, 2, 1e11).lower, -7);
    EXPECT_EQ(ErrorState().level, frame::LevelNoConvergence);
    EXPECT_EQ(ErrorState().routine.View(), "chi2_ncdf");
}

}  // namespace
}  // namespace zul::numerics
