#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>

#include "zul/distributions.h"
#include "zul/frame.h"

namespace zul {
namespace {

std::uint64_t Bits(double x) {
    return std::bit_cast<std::uint64_t>(x);
}

TEST(Normal, ExactValues) {
    EXPECT_EQ(NormalCdf(0, 0, 1, false), 0.5);
    EXPECT_EQ(NormalCdf(0, 0, 1, true), 0.5);
    EXPECT_EQ(NormalCdf(3, 3, 0, true), 0.5);  // the mean itself needs no division by the deviation
    EXPECT_EQ(NormalInvCdf(0.5, 7, 2), 7);
    EXPECT_EQ(NormalPdf(1e200, 0, 1), 0);  // z^2 overflows, which the density turns into 0
    EXPECT_EQ(NormalPdf(40, 0, 1), 0);
    EXPECT_EQ(NormalPdf(1, 0, 0), 0);
    EXPECT_EQ(NormalPValue(0, TwoSided), 1);
    EXPECT_EQ(NormalPValue(0, UpperTail), 0.5);
    EXPECT_EQ(NormalPValue(1.5, static_cast<EAlternative>(2)), 0);
    EXPECT_EQ(NormalCritValue(0.05, LowerTail), NormalCritValue(0.05, UpperTail));
    EXPECT_NEAR(NormalCritValue(0.05, TwoSided), 1.959963984540054, 1e-8);
}

TEST(Normal, NoResultIsTheQuietNaN) {
    const double results[] = {
        NormalInvCdf(1, 0, 1),          NormalInvCdf(0, 0, 1),
        NormalInvCdf(1e-300, 0, 1),     NormalInvCdf(1.5, 0, 1),
        NormalCritValue(0, UpperTail),  NormalCritValue(0.05, static_cast<EAlternative>(2)),
        NormalCritValue(-1, UpperTail),
    };
    for (const double result : results) {
        EXPECT_EQ(Bits(result), 0x7FF8000000000000u);
        EXPECT_TRUE(IsResultNA(result));
    }
}

TEST(Normal, QuantileFallsBackForTinyProbabilities) {
    for (const double p : {0.99e-100, 1e-101, 1e-150, 1e-250, 4.3e-284}) {
        const double z = NormalInvCdf(p, 0, 1);
        EXPECT_NEAR(NormalCdf(z, 0, 1, false) / p, 1, 1e-8) << p;
    }
    EXPECT_NEAR(NormalInvCdf(1e-101, 0, 1), NormalInvCdf(1.01e-100, 0, 1), 0.2);
    EXPECT_TRUE(IsNaN(NormalInvCdf(4.1e-284, 0, 1)));
}

// The deviate is as good as the refinement promises, which depends on how far p is from the median.
TEST(Normal, QuantileInvertsTheLowerTail) {
    for (double z = -37; z <= 8; z += 0.0137) {
        const double p = NormalCdf(z, 0, 1, false);
        if (p < 1e-280 || p >= 1 - 1e-9) continue;
        const double distance = std::abs(p - 0.5);
        const double tolerance = distance < 0.03 ? 2e-8 : distance < 0.1 ? 6e-9 : 3e-9;
        // A relative error of 1e-9 of the tail moves the deviate by that of p over the density.
        const double fromTail = 1e-9 * std::min(p, 1 - p) / NormalPdf(z, 0, 1);
        EXPECT_NEAR(NormalInvCdf(p, 0, 1), z, tolerance * std::abs(z) + fromTail) << p;
    }
}

TEST(Normal, FailuresReachTheHost) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(NormalCdf(1, 0, 0, false), std::runtime_error);
    EXPECT_THROW(NormalCdf(nan, 0, 1, false), std::invalid_argument);
    EXPECT_THROW(NormalPdf(nan, 0, 1), std::invalid_argument);
    EXPECT_THROW(NormalPdf(0, 0, 0), std::invalid_argument);
    EXPECT_THROW(NormalInvCdf(nan, 0, 1), std::invalid_argument);
    EXPECT_THROW(NormalInvCdf(0.975, 0, 1e308 * 1.7), std::overflow_error);
    EXPECT_THROW(NormalInvCdf(1e-200, 0, 1e308), std::overflow_error);
}

TEST(Psi, EndsAndTheDeliberateLastTerm) {
    EXPECT_EQ(Bits(v2::Psi(0)), 0x7FF8000000000000u);
    EXPECT_TRUE(IsNaN(v2::Psi(-1)));
    EXPECT_EQ(v2::Psi(1e-13), -1e13);
    // The digamma function itself is 2.25175258906672 here.
    EXPECT_NEAR(v2::Psi(10), 2.2517525890658886, 1e-15);
}

}  // namespace
}  // namespace zul
