// The studentized range and maximum modulus: identities with other distributions, and what holds for all arguments.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "support/reference_table.h"
#include "zul/distributions.h"
#include "zul/multiple_comparison.h"

namespace zul {
namespace {

const std::vector<double> kDfs = {0.02, 0.5, 1, 2.5, 7.9, 8, 30, 1e4, 1e9, 9e9, 1.1e10, 1e300, kInf};
const std::vector<unsigned> kGroups = {2, 3, 20, 21, 50, 1000, 1001, 3000, 100000, 4294967295};

TEST(MultipleComparison, OfTheFewestGroupsIsStudentsT) {
    for (const double df : {0.5, 1.0, 3.0, 40.0, 1e4})
        for (const double t : {1e-3, 0.5, 2.0, 6.0, 25.0}) {
            const double expected = TPValue(t, df, TwoSided);
            EXPECT_TRUE(test::IsNear(GetStudentizedMaximumModulusPValue(t, 1, df), expected, 1e-9))
                << t << " " << df;
            EXPECT_TRUE(test::IsNear(GetStudentizedRangePValue(std::sqrt(2.0) * t, 2, df), expected, 1e-9))
                << t << " " << df;
        }
}

// Both with the rounding of sums near 1.
TEST(MultipleComparison, TailsFallInTheStatisticAndRiseInTheGroups) {
    for (const auto tail : {GetStudentizedRangePValue, GetStudentizedMaximumModulusPValue})
        for (const double df : kDfs) {
            std::vector<double> fewer(40, 0);
            for (const unsigned groups : kGroups) {
                double before = 1;
                double x = 0.01;
                for (double& other : fewer) {
                    const double p = tail(x, groups, df);
                    EXPECT_TRUE(p >= 0 && p <= before * (1 + 1e-11) && p >= other * (1 - 1e-11))
                        << x << " " << groups << " " << df << " " << p;
                    other = before = p;
                    x *= 1.4;
                }
            }
        }
}

TEST(MultipleComparison, CriticalValuesHaveTheirLevel) {
    const auto check = [](auto critical, auto tail, double alpha, unsigned groups, double df) {
        const double x = critical(alpha, groups, df);
        EXPECT_TRUE(test::IsNear(tail(x, groups, df), alpha, 2e-12))
            << alpha << " " << groups << " " << df << " " << x;
    };
    for (const double df : {0.02, 0.5, 8.0, 1e4, kInf})
        for (const unsigned groups : {2U, 21U, 1001U, 4294967295U})
            for (const double alpha : {1e-14, 1e-3, 0.05, 0.5, 0.99, 1 - 1e-9, 1 - 1e-16}) {
                if (df < 0.1 && alpha < 0.5) continue;  // the value may be no double
                check(GetStudentizedRangeCritValue, GetStudentizedRangePValue, alpha, groups, df);
                check(GetStudentizedMaximumModulusCritValue, GetStudentizedMaximumModulusPValue, alpha,
                      groups, df);
            }
}

// Tails that are 0 or 1 to every digit, and statistics whose product with an estimate is no double.
TEST(MultipleComparison, ArgumentsMayHaveAnySize) {
    for (const auto tail : {GetStudentizedRangePValue, GetStudentizedMaximumModulusPValue})
        test::ExpectExact({{tail(5e-324, 3, 5e-324), 1},
                           {tail(1e-300, 3000, 1e300), 1},
                           {tail(1.7e308, 4294967295, 1e300), 0},
                           {tail(1.7e308, 3, 1e-101), 1},
                           {tail(3, 3, -0.0), kNaN},
                           {tail(-kInf, 3, 3), 1}});
    EXPECT_GT(GetStudentizedRangePValue(1.7e308, 3, 0.01), GetStudentizedRangePValue(1e308, 4, 0.011));
    EXPECT_TRUE(test::IsNear(
        GetStudentizedRangePValue(1e308, 3, 0.01) / GetStudentizedRangePValue(1e208, 3, 0.01), 0.1, 1e-11));
    EXPECT_TRUE(std::isnan(GetStudentizedRangeCritValue(1e-10, 3, 0.01)));
}

}  // namespace
}  // namespace zul
