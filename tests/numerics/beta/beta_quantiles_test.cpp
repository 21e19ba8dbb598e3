#include "numerics/beta/beta_quantiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "elementary/arguments.h"
#include "frame/error_state.h"
#include "numerics/beta/incomplete_beta.h"
#include "numerics/beta/switch_points.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

struct Quantile {
    double x = 0;
    double complement = 0;
};

Quantile Invert(double tail, const BetaShapes& shapes, bool upper) {
    Quantile r;
    (upper ? beta_upper_quant : beta_lower_quant)(tail, shapes, &r.x, &r.complement);
    return r;
}

double InvertF(double tail, const BetaShapes& halves, bool upper) {
    double value = 0;
    (upper ? F_upper_quant : F_lower_quant)(tail, halves, &value);
    return value;
}

// The quantile and its complement, as far as a relative 2e-9 of the smaller tail and the rounding of the
// given one let them be known.
void ExpectQuantile(const BetaShapes& shapes, double tail, bool upper, double x, double complement,
                    double logDensity) {
    const Quantile r = Invert(tail, shapes, upper);
    EXPECT_LE(ErrorState().level, frame::LevelUnderflow);
    const double uncertainty = 1.5e-9 * std::min(tail, 1 - tail) + (tail > 0.5 ? 2e-16 : 0);
    const auto tolerance = [&](double v) {
        return 1e-12 + std::exp(std::log(uncertainty) - logDensity - std::log(v));
    };
    EXPECT_TRUE(test::IsNear(r.x, x, tolerance(x)));
    EXPECT_TRUE(test::IsNear(r.complement, complement, tolerance(complement)));
    const double f = InvertF(tail, shapes, upper);
    EXPECT_EQ(f, r.x * shapes.B() / (r.complement * shapes.A()));
}

TEST(BetaQuantiles, MatchReference) {
    test::ForEachRow("numerics/beta_quantiles.csv", [](const std::vector<double>& row) {
        const BetaShapes shapes(row[0], row[1]);
        const double logDensity = row[4] < row[5] ? BetaLogDensity(shapes.Direct(), row[4])
                                                  : BetaLogDensity(shapes.Mirrored(), row[5]);
        ExpectQuantile(shapes, row[2], row[3] != 0, row[4], row[5], logDensity);
    });
}

TEST(BetaQuantiles, InvertThePairOnEveryBranch) {
    test::ForEachRow("numerics/beta_pair.csv", [](const std::vector<double>& row) {
        if (row[3] != 0) return;
        const bool upper = row[5] > row[6];
        ExpectQuantile(BetaShapes(row[0], row[1]), row[upper ? 6 : 5], upper, row[2], 1 - row[2], row[7]);
    });
}

TEST(BetaQuantiles, HandleTheEnds) {
    const BetaShapes shapes(2, 3);
    EXPECT_EQ(Invert(0, shapes, false).x, 0);
    EXPECT_EQ(Invert(1, shapes, false).x, 1);
    EXPECT_EQ(Invert(0, shapes, true).complement, 0);
    EXPECT_EQ(ErrorState().level, 0);
    EXPECT_EQ(Invert(0.1, BetaShapes(1e-3, 2), false).x, 0);  // 1e-1000
    EXPECT_EQ(ErrorState().level, frame::LevelUnderflow);
    EXPECT_EQ(InvertF(0.1, BetaShapes(2, 1e-3), true), DBL_MAX);
    EXPECT_EQ(ErrorState().level, frame::LevelUnderflow);
}

struct Found {
    Quantile quantile;
    frame::NumericErrorState state;
};

Found Find(double target, const BetaShapes& shapes, Side side, bool inFull) {
    Found found;
    ErrorState() = {};
    double* const x = &found.quantile.x;
    double* const complement = &found.quantile.complement;
    if (inFull)
        beta_quant_in_full(target, shapes, side, x, complement);
    else
        (side == Side::Lower ? beta_lower_quant : beta_upper_quant)(target, shapes, x, complement);
    found.state = ErrorState();
    return found;
}

void ExpectNothingMissed(double target, const BetaShapes& shapes) {
    for (const Side side : {Side::Lower, Side::Upper}) {
        SCOPED_TRACE(testing::Message() << shapes.A() << ", " << shapes.B() << " at " << target);
        const Found actual = Find(target, shapes, side, false);
        const Found expected = Find(target, shapes, side, true);
        ASSERT_EQ(actual.quantile.x, expected.quantile.x);
        ASSERT_EQ(actual.quantile.complement, expected.quantile.complement);
        ASSERT_EQ(actual.state.level, expected.state.level);
        ASSERT_EQ(actual.state.routine.View(), expected.state.routine.View());
        ASSERT_EQ(actual.state.method, expected.state.method);
        ASSERT_EQ(actual.state.count, expected.state.count);
    }
}

TEST(BetaQuantiles, LeaveOutEvaluationsThatChangeNothing) {
    test::RandomArguments random;
    for (const auto [a, b] : kShapes) {
        const BetaShapes shapes(a, b);
        for (const double x : SwitchPoints(shapes)) {
            double lower = 0;
            double upper = 0;
            beta_df(x, shapes, &lower, &upper, nullptr);
            // So near that the last step crosses the point or ends beside it.
            for (const double shift : {0.0, 1e-12, -1e-9, 1e-6, -1e-4, 1e-3})
                ASSERT_NO_FATAL_FAILURE(ExpectNothingMissed(lower * (1 + shift), shapes));
        }
        for (int k = 0; k < 500; ++k)
            ASSERT_NO_FATAL_FAILURE(ExpectNothingMissed(random.Uniform(0, 1), shapes));
    }
}

}  // namespace
}  // namespace zul::numerics
