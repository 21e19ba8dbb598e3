#include <gtest/gtest.h>

#include <cmath>

#include "zul/hypothesis.h"

namespace zul::v0 {
namespace {

constexpr auto kTwoSided = IntervalType::TwoSided;
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

TEST(Proportions, EventsOfData) {
    const int data[] = {1, 0, 1, 1, 0, 0, 0, 1, 0, 0};
    OneProportion record;
    record.n = 10;
    EXPECT_EQ(RunOneProportion(&record, data, true, 0.95, kTwoSided, kNotEqual, 0.5), 0);
    EXPECT_EQ(record.proportion, 0.4);
    // The other forms with data, each after a count that is not its own.
    using Form = int (*)(OneProportion*, const int*);
    for (const Form run :
         {Form([](OneProportion*r, const int*x) { return RunOneProportion(r, x, true, 0.95, kTwoSided); }),
          Form(
              [](OneProportion*r, const int*x) { return RunKelOneProportion(r, x, false, 0.95, kTwoSided); }),
          Form([](OneProportion*r, const int*x) {
              return RunKelOneProportion(r, x, false, 0.95, kTwoSided, kNotEqual, 0.5);
          })}) {
        record.x = 99;
        EXPECT_EQ(run(&record, data), 0);
        EXPECT_EQ(record.x, 4u);
    }
    TwoProportion two;
    two.n1 = 10;
    two.n2 = 4;
    EXPECT_EQ(RunKelTwoProportion(&two, data, data, true, 0.95, kTwoSided, kNotEqual, 0), 0);
    EXPECT_EQ(two.x1, 4u);
    EXPECT_EQ(two.x2, 3u);
}

}  // namespace
}  // namespace zul::v0
