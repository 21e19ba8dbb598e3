// Goodness of fit: what is beyond the reference tables.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "zul/hypothesis.h"

namespace zul {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Fit {
    double aSquared = 0;
    double pValue = 0;
    int status = -1;
};

template <typename Run, typename Parameters>
Fit RunFit(Run run, const std::vector<double>& data, Parameters parameters) {
    Fit fit;
    fit.status = run(data.data(), parameters, &fit.aSquared, &fit.pValue, static_cast<unsigned>(data.size()));
    return fit;
}

TEST(AndersonDarling, FewOrBadValues) {
    const double standard[] = {0, 1};
    const double unit[] = {1, 1};
    for (const Fit& fit :
         {RunFit(v1::RunKelNormalADTest, {0.5}, standard), RunFit(v1::RunKelLogNormalADTest, {0.5}, standard),
          RunFit(v0::RunKelExponentialADTest, {}, 1.0),
          RunFit(v1::RunKelNormalADTest, {-1, 0.5, kNaN}, standard),
          RunFit(v1::RunKelLogNormalADTest, {-1, 0.5, 2}, standard),
          RunFit(v0::RunKelExponentialADTest, {1, kNaN}, 1.0),
          RunFit(v0::RunKelWeibullADTest, {1, kNaN}, unit)}) {
        EXPECT_TRUE(std::isnan(fit.aSquared) && std::isnan(fit.pValue));
        EXPECT_EQ(fit.status, 0);
    }
    EXPECT_NEAR(RunFit(v0::RunKelExponentialADTest, {1}, 1.0).aSquared, -std::log(1 - std::exp(-1)), 1e-9);
    const Fit empty = RunFit(v0::RunKelWeibullADTest, {}, unit);
    EXPECT_TRUE(empty.aSquared == 0 && std::signbit(empty.aSquared));
    EXPECT_TRUE(std::isnan(empty.pValue));
    EXPECT_EQ(empty.status, 0);
    // F = 1 at the last value: A^2 is infinite, and the table holds.
    const Fit infinite = RunFit(v1::RunKelNormalADTest, {0, kInf}, standard);
    EXPECT_EQ(infinite.aSquared, kInf);
    EXPECT_EQ(infinite.pValue, 0.005);
    EXPECT_EQ(infinite.status, 10003);
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
