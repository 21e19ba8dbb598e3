#include "frame/guarded.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>

#include "frame/compare.h"
#include "frame/error_state.h"

namespace zul::frame {
namespace {

TEST(Guarded, ThrowsWithItsMessage) {
    struct Case {
        std::function<double()> call;
        std::string message;
    };
    const Case cases[] = {
        {[] { return SafeSqrt(-1e-300); }, "sqrt of a negative argument"},
        {[] { return SafeExp(710); }, "float overflow"},
        {[] { return SafeLog(0); }, "float overflow"},
        {[] { return SafeLog(-1); }, "log of a negative argument"},
        {[] { return SafePow(-8, 1.0 / 3); }, "negative number raised to a noninteger power"},
        {[] { return SafePow(0, -1); }, "zero raised to a negative power"},
        {[] { return SafePow(10, 400); }, "float overflow"},
        {[] { return SafePow(-10, 401); }, "float overflow"},
        {[] { return SafePow(0.25, -DBL_MAX); }, "float overflow"},
        {[] { return SafeTan(823549.5); }, "argument out of range for trig functions"},
        {[] { return SafeTan(-823549.5); }, "argument out of range for trig functions"},
        {[] { return LogGamma(0); }, "gamma of a nonpositive argument"},
        {[] { return LogGamma(1e-17); }, "gamma of a value too close to 0"},
    };
    for (const Case& c : cases) {
        try {
            ADD_FAILURE() << c.message << ": " << c.call();
        } catch (const std::exception& e) {
            EXPECT_EQ(e.what(), c.message);
            EXPECT_EQ(dynamic_cast<const std::runtime_error*>(&e) != nullptr, c.message == "float overflow");
        }
    }
}

TEST(Guarded, ValuesAtTheLimits) {
    EXPECT_EQ(kExpOverflowLimit, std::nextafter(std::log(DBL_MAX), 0));
    EXPECT_TRUE(std::isfinite(SafeExp(kExpOverflowLimit)));
    EXPECT_EQ(SafeExp(-710), 0);
    EXPECT_GT(SafeExp(-kExpOverflowLimit), 0);
    EXPECT_EQ(SafePow(-2, 3), -8);
    EXPECT_EQ(SafePow(-2, 4 * (1 + 1e-13)), 16);  // whole within the tolerance
    EXPECT_EQ(SafePow(0, 0), 1);
    EXPECT_EQ(SafePow(0, 0.5), 0);
    EXPECT_EQ(SafePow(10, -400), 0);
    EXPECT_EQ(SafePow(10, -310), 0);  // the bound of the exponential, not that of the denormals
    EXPECT_EQ(SafePow(0.25, DBL_MAX), 0);
    EXPECT_EQ(SafePow(1, -DBL_MAX), 1);
    EXPECT_EQ(SafePow(-10, -401), 0);
    EXPECT_EQ(SafeTan(823549.0), std::tan(823549.0));
    EXPECT_EQ(LogGamma(1), 0);
    EXPECT_EQ(LogGamma(2), 0);
}

TEST(Compare, TolerantEquality) {
    constexpr double kInf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(CompareTolerant(kInf, kInf, 0), 0);
    EXPECT_EQ(CompareTolerant(1e10, 1e10 * (1 + 0.9e-12), 0), 0);
    EXPECT_EQ(CompareTolerant(1e10, 1e10 * (1 + 1.1e-12), 0), -1);
    EXPECT_EQ(CompareTolerant(0, 0.9e-30, 0), 0);
    EXPECT_EQ(CompareTolerant(0, -1.1e-30, 0), 1);
    EXPECT_EQ(CompareTolerant(0, 0.9e-14, 1), 0);
    EXPECT_EQ(CompareTolerant(0, 1.1e-14, 1), -1);
    EXPECT_EQ(CompareTolerant(1e308, -1e308, 0), 1);
    EXPECT_EQ(CompareTolerant(-1e308, 1e308, 0), -1);
    EXPECT_EQ(CompareTolerant(0, 3e-14, 4), 0);
    EXPECT_EQ(RoundHalfAway(0.49999999999999994), 1);  // the formula, not std::round
    EXPECT_EQ(RoundHalfAway(2.5), 3);
    EXPECT_EQ(RoundHalfAway(-2.5), -3);
}

TEST(ErrorState, KeepsTheLongestName) {
    NumericErrorState state;
    state.Fail(LevelDomain, "binomial_upper_quant"_routine);
    EXPECT_EQ(state.routine.View(), "binomial_upper_quant");
    EXPECT_TRUE(state.Failed());
    state.level = -1;
    state.ClearWarning("gamma_df"_routine);
    EXPECT_EQ(state.level, LevelOk);
    EXPECT_EQ(state.routine.View(), "gamma_df");
    state.level = LevelUnderflow;
    EXPECT_FALSE(state.Failed());
}

}  // namespace
}  // namespace zul::frame
