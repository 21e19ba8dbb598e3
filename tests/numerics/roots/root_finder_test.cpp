#include "numerics/roots/root_finder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul::numerics {
namespace {

using frame::kNA;

class Function : public CmRealFunction {
public:
    explicit Function(std::function<double(double)> f) : f_(std::move(f)) {
        absTolX = 1e-30;
        relTolX = 1e-12;
    }
    double Evaluate(double x) override {
        ++evaluations;
        return f_(x);
    }
    int evaluations = 0;

private:
    std::function<double(double)> f_;
};

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
    const auto check = [&](const std::function<double(double)>& f, int expected) {
        Function function(f);
        EXPECT_EQ(SolveFalsePosition(1, 5, function, &status), kNA);
        EXPECT_EQ(status, expected);
        return function.evaluations;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    check([](double x) { return x > 4 ? kNA : x; }, kRootNotEvaluated);
    check([=](double x) { return x < 2 ? nan : x; }, kRootNotEvaluated);
    check([](double x) { return x; }, kRootNotBracketed);
    check([=](double x) { return x < 2 ? -1 : x > 4 ? 1 : nan; }, kRootNotEvaluated);
    Function endless([](double x) { return x < 2 ? -1.0 : 1.0; });
    endless.absTolX = endless.relTolX = 0;
    EXPECT_EQ(SolveFalsePosition(1, 5, endless, &status), kNA);
    EXPECT_EQ(status, kRootNotEvaluated);
    EXPECT_EQ(endless.evaluations, 100'000);
}

TEST(SolveFalsePosition, ANarrowBracketTakesOneEvaluation) {
    int status = -1;
    Function line([](double x) { return x - 1; });
    line.absTolX = 0.1;
    line.relTolX = 0;
    SolveFalsePosition(0.99, 1.02, line, &status);
    EXPECT_EQ(line.evaluations, 3);
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
        Function falling([=](double x) { return root - x; });
        falling.discrete = true;
        EXPECT_EQ(SolveFalsePosition(-1, 1000, falling, &status), std::ceil(root)) << root;
    }
}

TEST(ExpandBracket, WidensUntilTheSignChanges) {
    Function line([](double x) { return x - 1000; });
    double lo = 0;
    double hi = 2;
    EXPECT_TRUE(ExpandBracket(&lo, &hi, line, -1e30, 1e30));
    EXPECT_TRUE(lo < 1000 && hi >= 1000 && lo > 2) << lo << " " << hi;
    lo = 5000;
    hi = 5001;
    line.discrete = true;
    EXPECT_TRUE(ExpandBracket(&lo, &hi, line, -1e30, 1e30));
    EXPECT_TRUE(lo <= 1000 && hi > 1000 && lo == std::floor(lo)) << lo << " " << hi;
}

// Half the width outward from the end that is nearer to a root, doubled each time, rounded outward, and at
// last the limit itself.
TEST(ExpandBracket, MarchesByDoublingSteps) {
    std::vector<double> visited;
    for (const double direction : {1.0, -1.0}) {
        Function away([&](double x) {
            visited.push_back(x);
            return 100 - direction * x;
        });
        away.discrete = true;
        double lo = direction > 0 ? 0 : -3;
        double hi = direction > 0 ? 3 : 0;
        visited.clear();
        EXPECT_FALSE(ExpandBracket(&lo, &hi, away, -20, 20));
        const std::vector<double> marched(visited.begin() + 2, visited.end());
        const std::vector<double> expected = {direction * 5, direction * 8, direction * 14, direction * 20};
        EXPECT_EQ(marched, expected);
    }
}

TEST(ExpandBracket, TakesAPointThatIsAZero) {
    Function square([](double x) { return (x - 3) * (x - 3); });
    for (const auto& [from, to] : {std::pair{3.0, 5.0}, {1.0, 3.0}, {1.0, 2.0}}) {
        double lo = from;
        double hi = to;
        square.absTolF = 0.3;  // 2.5, the first step of the last case, counts
        EXPECT_TRUE(ExpandBracket(&lo, &hi, square, -20, 20)) << from;
    }
}

TEST(RealFunction, TolerancesOfTheBracketAreStrictThoseOfTheValueAreNot) {
    Function f([](double x) { return x; });
    f.absTolX = 0.5;
    f.relTolX = 0;
    EXPECT_FALSE(f.IsConverged(1, 1.5));
    EXPECT_TRUE(f.IsConverged(1.25, 1.5));
    f.discrete = true;
    EXPECT_FALSE(f.IsConverged(1, 3));
    EXPECT_TRUE(f.IsConverged(1, 2.75));
    f.relTolX = 0.25;
    EXPECT_FALSE(f.IsConverged(-8, -6));
    EXPECT_TRUE(f.IsConverged(-16, -13));
    f.absTolF = 0.125;
    EXPECT_TRUE(f.IsZero(-0.125));
    EXPECT_FALSE(f.IsZero(0.25));
    f.target = -8;
    f.relTolF = 0.03125;
    EXPECT_TRUE(f.IsZero(0.25));
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

TEST(ExpandBracket, FailsOutsideItsDomain) {
    const double inf = std::numeric_limits<double>::infinity();
    ExpectNoBracket([](double x) { return x < -1 ? kNA : 1; }, -inf, inf, -inf, inf);
    ExpectNoBracket([](double) { return 1.0; }, 0, 1, -inf, inf);
    ExpectNoBracket([](double) { return 1.0; }, 0, 1, std::nan(""), inf);
}

}  // namespace
}  // namespace zul::numerics
