// Goodness of fit: what is beyond the reference tables.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "zul/hypothesis.h"

namespace zul {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(AndersonDarling, OfNothingIsMinusZero) {
    const double unit[] = {1, 1};
    double aSquared = 1;
    double pValue = 0;
    EXPECT_EQ(v0::RunKelWeibullADTest(unit, unit, &aSquared, &pValue, 0), 0);
    EXPECT_TRUE(aSquared == 0 && std::signbit(aSquared) && std::isnan(pValue));
}

TEST(TabularChiSquare, FewOrBadCells) {
    const double observed[] = {30, 20, 25, 25};
    const double proportions[] = {0.3, 0.2, 0.25, 0};
    double expected[4];
    double contributions[4];
    double chiSquare = -1;
    double pValue = -1;
    double df = -2;
    const auto run = [&](const double* p, double total, unsigned categories) {
        return RunKelTabularChiSqGOFTest(observed, p, expected, contributions, &chiSquare, &pValue, &df,
                                         total, categories);
    };
    for (const unsigned categories : {0u, 1u}) {
        EXPECT_EQ(run(nullptr, 30, categories), 0);
        EXPECT_TRUE(chiSquare == 0 && std::isnan(pValue));
        EXPECT_EQ(df, categories - 1.0);
    }
    EXPECT_EQ(run(nullptr, kNaN, 4), 0);
    EXPECT_TRUE(std::isnan(chiSquare) && std::isnan(pValue));
    EXPECT_EQ(run(proportions, 100, 4), 0);
    EXPECT_TRUE(chiSquare == kInf && pValue == 0);
}

}  // namespace
}  // namespace zul
