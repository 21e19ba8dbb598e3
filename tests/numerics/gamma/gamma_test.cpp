#include "numerics/gamma/gamma.h"

#include <gtest/gtest.h>

#include <cerrno>
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

TEST(Erfc, CutOffsAndCentre) {
    EXPECT_EQ(Erfc(26.5695), 0);
    EXPECT_EQ(Erfc(-5.6251), 2);
    EXPECT_EQ(Erfc(9e-15), 1);
    EXPECT_EQ(Erfc(-9e-15), 1);
}

}  // namespace
}  // namespace zul::numerics
