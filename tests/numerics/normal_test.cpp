#include "numerics/normal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "distributions/normal/normal.h"
#include "frame/error_state.h"
#include "frame/missing_value.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

TEST(Erfc, CutOffsAndCentre) {
    EXPECT_EQ(Erfc(26.5695), 0);
    EXPECT_EQ(Erfc(-5.6251), 2);
    EXPECT_EQ(Erfc(9e-15), 1);
    EXPECT_EQ(Erfc(-9e-15), 1);
}

TEST(NormalDf, TailsAreMirrored) {
    for (const double z : {0.0, 0.3, 0.67, 1.0, 3.0, 8.0, 30.0, 40.0}) {
        double lower = 0;
        double upper = 0;
        double mirroredLower = 0;
        double mirroredUpper = 0;
        normal_df(z, &lower, &upper);
        normal_df(-z, &mirroredLower, &mirroredUpper);
        EXPECT_EQ(lower, mirroredUpper) << z;
        EXPECT_EQ(upper, mirroredLower) << z;
        EXPECT_EQ(lower + upper, 1) << z;
        EXPECT_LE(upper, lower) << z;
        EXPECT_EQ(upper == 0, z == 40) << z;
    }
}

}  // namespace
}  // namespace zul::numerics
