#include "numerics/beta/beta_quantiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "frame/error_state.h"
#include "numerics/beta/incomplete_beta.h"
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

}  // namespace
}  // namespace zul::numerics
