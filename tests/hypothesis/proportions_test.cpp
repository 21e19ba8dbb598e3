#include <gtest/gtest.h>

#include <cmath>

#include "zul/hypothesis.h"

namespace zul::v0 {
namespace {

constexpr auto kNotEqual = AlternativeHypothesis::NotEqual;

TEST(TwoProportions, FisherOfMirroredTables) {
    TwoProportion record;
    record.x1 = 11;
    record.n1 = 24;
    record.x2 = 15;
    record.n2 = 28;
    // The table on the other side of the mode has the same probability, and counts.
    EXPECT_EQ(RunKelTwoProportion(&record, true, kNotEqual, 0), 0);
    EXPECT_NEAR(record.fisherPValue, 0.7813, 5e-5);
    EXPECT_EQ(RunKelTwoProportion(&record, true, static_cast<AlternativeHypothesis>(5), 0), 0);
    EXPECT_TRUE(std::isnan(record.fisherPValue));
    EXPECT_EQ(record.pValue, 0);
}

}  // namespace
}  // namespace zul::v0
