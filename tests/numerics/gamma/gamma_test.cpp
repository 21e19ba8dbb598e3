#include "numerics/gamma/gamma.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cfloat>
#include <cmath>
#include <limits>
#include <map>
#include <string>

#include "frame/guarded.h"
#include "numerics/elementary.h"
#include "numerics/normal.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

TEST(Elementary, MatchesReference) {
    const std::map<std::string, double (*)(double)> functions = {{"GammaFn", GammaFn},
                                                                 {"LogGammaFn", LogGammaFn},
                                                                 {"StirlingTerm", StirlingTerm},
                                                                 {"Log1p", Log1p},
                                                                 {"Expm1", Expm1},
                                                                 {"Erfc", Erfc},
                                                                 {"LogGamma", frame::LogGamma}};
    for (const test::Row& row : test::ReadTable("numerics/gamma_elementary.csv", ',')) {
        const double x = test::Number(row.at(1));
        EXPECT_TRUE(
            test::IsNear(functions.at(row.at(0))(x), test::Number(row.at(2)), test::Number(row.at(3))))
            << row.at(0) << "(" << row.at(1) << ")";
    }
}

TEST(Elementary, ReportsDomainAndRangeErrors) {
    const auto check = [](double (*f)(double), double x, double expected, int error) {
        errno = 0;
        EXPECT_EQ(f(x), expected) << x;
        EXPECT_EQ(errno, error) << x;
    };
    check(GammaFn, 0, 0, EDOM);
    check(GammaFn, -1.5, 0, EDOM);
    check(GammaFn, 172, DBL_MAX, ERANGE);
    check(GammaFn, 1e300, DBL_MAX, ERANGE);
    check(GammaFn, 5e-324, DBL_MAX, ERANGE);
    check(LogGammaFn, 0, -DBL_MAX, EDOM);
    check(LogGammaFn, 1e306, DBL_MAX, ERANGE);
    check(StirlingTerm, -1, DBL_MAX, EDOM);
    check(StirlingTerm, 0, 0, 0);
    check(Log1p, -1.01, -DBL_MAX, EDOM);
    check(Expm1, 709.8, -DBL_MAX, EDOM);
    check(Expm1, -662.4, -DBL_MAX, EDOM);
    EXPECT_NEAR(LogGammaFn(5e-324), 744.44007192138122, 1e-10);
}

}  // namespace
}  // namespace zul::numerics
