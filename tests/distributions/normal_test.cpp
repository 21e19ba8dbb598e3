#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "zul/distributions.h"

namespace zul {
namespace {

TEST(Normal, QuantileFallsBackForTinyProbabilities) {
    for (const double p : {0.99e-100, 1e-101, 1e-150, 1e-250, 4.3e-284}) {
        const double z = NormalInvCdf(p, 0, 1);
        EXPECT_NEAR(NormalCdf(z, 0, 1, false) / p, 1, 1e-8) << p;
    }
    EXPECT_NEAR(NormalInvCdf(1e-101, 0, 1), NormalInvCdf(1.01e-100, 0, 1), 0.2);
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

}  // namespace
}  // namespace zul
