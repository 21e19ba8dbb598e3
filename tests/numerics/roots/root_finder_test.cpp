#include "numerics/roots/root_finder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

#include "frame/missing_value.h"
#include "frame/status.h"
#include "numerics/roots/counted_function.h"

namespace zul::numerics {
namespace {

using frame::kNA;

using Function = test::CountedFunction;

TEST(SolveFalsePosition, FindsRoots) {
    int status = -1;
    Function cubic([](double x) { return x * x * x - 2; });
    EXPECT_NEAR(SolveFalsePosition(0, 10, cubic, &status), std::cbrt(2.0), 1e-12);
    EXPECT_EQ(status, kSuccess);
    Function falling([](double x) { return std::exp(-x) - 1e-200; });
    EXPECT_NEAR(SolveFalsePosition(0, 1000, falling, &status), 200 * std::log(10.0), 1e-9);
    Function tiny([](double x) { return 1e-300 * (x - 3); });  // the product of two values underflows
    EXPECT_NEAR(SolveFalsePosition(0, 10, tiny, &status), 3, 1e-9);
    EXPECT_LT(cubic.evaluations + falling.evaluations + tiny.evaluations, 4000);
}

TEST(SolveFalsePosition, TakesAnEndThatIsAZero) {
    int status = -1;
    Function line([](double x) { return x; });
    EXPECT_EQ(SolveFalsePosition(0, 5, line, &status), 0);
    EXPECT_EQ(SolveFalsePosition(-5, 0, line, &status), 0);
    EXPECT_EQ(line.evaluations, 4);
    line.target = 100;
    line.relTolF = 0.01;  // 1 counts as zero
    EXPECT_EQ(SolveFalsePosition(1, 5, line, &status), 1);
}

TEST(SolveFalsePosition, ReportsFailures) {
    int status = -1;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [f, expected] : std::vector<std::pair<std::function<double(double)>, int>>{
             {[](double x) { return x > 4 ? kNA : x; }, kRootNotEvaluated},
             {[=](double x) { return x < 2   ? -1
                                     : x > 4 ? 1
                                             : nan; }, kRootNotEvaluated},
             {[](double x) { return x; }, kRootNotBracketed}}) {
        Function function(f);
        EXPECT_EQ(SolveFalsePosition(1, 5, function, &status), kNA);
        EXPECT_EQ(status, expected);
    }
    Function endless([](double x) { return x < 2 ? -1.0 : 1.0; });
    endless.absTolX = endless.relTolX = 0;
    EXPECT_EQ(SolveFalsePosition(1, 5, endless, &status), kNA);
    EXPECT_EQ(status, kRootNotEvaluated);
    EXPECT_EQ(endless.evaluations, 100'000);
}

// The result is a whole number at which f has the sign of the upper end, or is zero.
TEST(SolveFalsePosition, DiscreteResultsAreWhole) {
    int status = -1;
    for (const double root : {0.2, 3.0, 6.5, 17.9, 99.01}) {
        Function line([=](double x) { return x - root; });
        line.discrete = true;
        EXPECT_EQ(SolveFalsePosition(-1, 1000, line, &status), std::ceil(root)) << root;
        Function step([=](double x) { return std::floor(x) < root ? -0.3 : 1e-9; });
        step.discrete = true;
        EXPECT_EQ(SolveFalsePosition(-1, 1000, step, &status), std::ceil(root)) << root;
    }
}

TEST(ExpandBracket, RetreatsFromPointsWithoutAValue) {
    Function half([](double x) { return x < 3 ? kNA : x - 7; });
    double lo = 0;
    double hi = 10;
    EXPECT_TRUE(ExpandBracket(&lo, &hi, half, -1e30, 1e30));
    EXPECT_EQ(lo, 5);
    EXPECT_EQ(hi, 10);
}

void ExpectNoBracket(const std::function<double(double)>& f, double lo, double hi, double lower,
                     double upper) {
    Function function(f);
    EXPECT_FALSE(ExpandBracket(&lo, &hi, function, lower, upper));
    EXPECT_LT(function.evaluations, 5000);
}

TEST(ExpandBracket, FailsInsteadOfLooping) {
    const auto one = [](double) { return 1.0; };
    ExpectNoBracket([](double) { return kNA; }, 0, 1, -10, 10);
    ExpectNoBracket(one, 0, 1, -10, 10);  // no root within the limits
    // Halving towards an end with an even last digit arrives there, towards any other at its neighbour.
    for (const double end : {1.0, std::nextafter(1.0, 2.0)})
        ExpectNoBracket([end](double x) { return x == end ? 1.0 : kNA; }, 0, end, -10, 10);
    ExpectNoBracket(one, 2, 2, -10, 10);                                                // no width
    ExpectNoBracket([](double x) { return x; }, 20, 30, -10, 10);                       // outside the limits
    ExpectNoBracket([](double x) { return x > 5 ? kNA : x - 20; }, 0, 1, -1e30, 1e30);  // a gap on the way
}

}  // namespace
}  // namespace zul::numerics
