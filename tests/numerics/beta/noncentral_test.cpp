#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "frame/error_state.h"
#include "numerics/beta/beta_mixture.h"
#include "numerics/beta/incomplete_beta.h"
#include "numerics/beta/noncentral_beta.h"
#include "numerics/beta/noncentral_t.h"
#include "numerics/limits.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

struct Tails {
    double lower = 0.25;
    double upper = 0.75;
    bool Written() const { return lower != 0.25 || upper != 0.75; }
    bool operator==(const Tails&) const = default;
    bool Sound() const {
        return lower >= 0 && lower <= 1 && upper >= 0 && upper <= 1 && std::abs(lower + upper - 1) <= 1e-15;
    }
};

Tails BetaTails(double x, double a, double b, double noncentrality) {
    Tails r;
    beta_ncdf(x, BetaShapes(a, b), noncentrality, &r.lower, &r.upper);
    return r;
}

Tails FTails(double f, double df1, double df2, double noncentrality) {
    Tails r;
    F_ncdf(f, df1, df2, noncentrality, &r.lower, &r.upper);
    return r;
}

Tails TTails(double t, double df, double delta) {
    Tails r;
    t_ncdf(t, df, delta, &r.lower, &r.upper);
    return r;
}

// The last two of the row, within the tolerance; a tail that is too small makes the pair 0 and 1.
void ExpectReference(const std::vector<double>& row, const Tails& r, double tolerance) {
    const Tails expected{row.end()[-2], row.back()};
    const bool underflow = std::min(expected.lower, expected.upper) < kTinyArgument;
    EXPECT_EQ(ErrorState().level, underflow ? frame::LevelUnderflow : frame::LevelOk);
    EXPECT_TRUE(test::IsNear(r.lower, underflow ? std::round(expected.lower) : expected.lower, tolerance));
    EXPECT_TRUE(test::IsNear(r.upper, underflow ? std::round(expected.upper) : expected.upper, tolerance));
}

TEST(NoncentralBeta, MatchesReference) {
    test::ForEachRow("numerics/noncentral_beta.csv", [](const std::vector<double>& row) {
        ExpectReference(row, BetaTails(row[0], row[1], row[2], row[3]), 1e-12);
    });
}

TEST(NoncentralT, MatchesReferenceAndItsReflection) {
    test::ForEachRow("numerics/noncentral_t.csv", [](const std::vector<double>& row) {
        const Tails r = TTails(row[0], row[1], row[2]);
        ExpectReference(row, r, 5e-13);
        const Tails reflected = TTails(-row[0], row[1], -row[2]);
        EXPECT_EQ(r, (Tails{reflected.upper, reflected.lower}));
    });
}

// The small tail is no complement of the other.
TEST(Noncentral, NextToNoDegreesOfFreedom) {
    test::ForEachRow("numerics/noncentral_small_f.csv", [](const std::vector<double>& row) {
        ExpectReference(row, FTails(row[0], row[1], row[2], row[3]), 1e-12);
    });
    test::ForEachRow("numerics/noncentral_small_t.csv", [](const std::vector<double>& row) {
        ExpectReference(row, TTails(row[0], row[1], row[2]), 1e-12);
        EXPECT_TRUE(TTails(-row[0], row[1], row[2]).Sound());
    });
}

TEST(Noncentral, Ends) {
    EXPECT_EQ(BetaTails(0, 2, 3, 1), (Tails{0, 1}));
    EXPECT_EQ(BetaTails(1, 2, 3, 1), (Tails{1, 0}));
    EXPECT_EQ(FTails(0, 2, 3, 1), (Tails{0, 1}));
    EXPECT_EQ(FTails(kInf, 2, 3, 1), (Tails{1, 0}));
    EXPECT_EQ(TTails(kInf, 3, 1), (Tails{1, 0}));
    EXPECT_EQ(TTails(-kInf, 3, 1), (Tails{0, 1}));
    EXPECT_FALSE(FTails(1, 2, 3, 7e9).Written());
    EXPECT_EQ(ErrorState().level, frame::LevelNoConvergence);
}

}  // namespace
}  // namespace zul::numerics
