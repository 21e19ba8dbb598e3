#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "zul/hypothesis.h"

namespace zul::v0 {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr auto kTwoSided = IntervalType::TwoSided;
constexpr auto kNotEqual = AlternativeHypothesis::NotEqual;

OneProportion Events(unsigned x, unsigned n) {
    OneProportion record;
    record.x = x;
    record.n = n;
    return record;
}

TEST(OneProportion, ExactBoundsAtTheEnds) {
    for (const int type : {-1, 0, 1, 7}) {
        OneProportion none = Events(0, 20);
        EXPECT_EQ(RunKelOneProportion(&none, false, 0.95, static_cast<IntervalType>(type)), 0);
        EXPECT_EQ(none.lowerBound, 0);
        EXPECT_NEAR(none.upperBound, 1 - std::pow(0.05, 1.0 / 20), 1e-9);
        OneProportion all = Events(20, 20);
        EXPECT_EQ(RunKelOneProportion(&all, false, 0.95, static_cast<IntervalType>(type)), 0);
        EXPECT_NEAR(all.lowerBound, std::pow(0.05, 1.0 / 20), 1e-9);
        EXPECT_EQ(all.upperBound, 1);
    }
    OneProportion none = Events(0, 20);
    EXPECT_EQ(RunOneProportion(&none, false, 0.95, kTwoSided), 0);
    EXPECT_EQ(none.lowerBound, 0);
    EXPECT_NEAR(none.upperBound, 1 - std::pow(0.025, 1.0 / 20), 1e-9);
    OneProportion noTrials = Events(0, 0);
    EXPECT_EQ(RunOneProportion(&noTrials, false, 0.95, kTwoSided, kNotEqual, 0.5), 0);
    EXPECT_EQ(noTrials.upperBound - noTrials.lowerBound, 1);
    EXPECT_EQ(RunOneProportionMidP(&noTrials, 0.95, kTwoSided), 0);
    EXPECT_TRUE(std::isnan(noTrials.lowerBound) && std::isnan(noTrials.upperBound));
}

TEST(OneProportion, ProbabilitiesAtTheEndsAndBeyond) {
    for (const double p0 : {-0.1, 1.1, kInf, -kInf, std::nan("")}) {
        OneProportion record = Events(7, 20);
        for (const bool normal : {false, true}) {
            EXPECT_EQ(RunOneProportion(&record, normal, 0.95, kTwoSided, kNotEqual, p0), 0);
            EXPECT_TRUE(std::isnan(record.pValue)) << p0;
            EXPECT_EQ(RunKelOneProportion(&record, normal, 0.95, kTwoSided, kNotEqual, p0), 0);
            EXPECT_TRUE(std::isnan(record.pValue)) << p0;
        }
        EXPECT_EQ(RunOneProportionMidP(&record, kNotEqual, p0), 0);
        EXPECT_TRUE(std::isnan(record.pValue)) << p0;
    }
    for (const unsigned x : {0u, 7u, 20u}) {
        for (const double p0 : {0.0, 1.0}) {
            OneProportion record = Events(x, 20);
            const double expected = x == 20 * p0 ? 1 : 0;
            EXPECT_EQ(RunOneProportionClopperPearson(&record, kNotEqual, p0), 0);
            EXPECT_EQ(record.pValue, expected);
            EXPECT_EQ(RunKelOneProportion(&record, false, 0.95, kTwoSided, kNotEqual, p0), 0);
            EXPECT_EQ(record.pValue, expected);
        }
    }
}

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
    OneProportion record = Events(99, 10);
    EXPECT_EQ(RunOneProportion(&record, data, true, 0.95, kTwoSided, kNotEqual, 0.5), 0);
    EXPECT_EQ(record.proportion, 0.4);
    record.x = 99;
    EXPECT_EQ(RunKelOneProportion(&record, data, false, 0.95, kTwoSided), 0);
    EXPECT_EQ(record.x, 4u);
    TwoProportion two;
    two.n1 = 10;
    two.n2 = 4;
    EXPECT_EQ(RunKelTwoProportion(&two, data, data, true, 0.95, kTwoSided, kNotEqual, 0), 0);
    EXPECT_EQ(two.x1, 4u);
    EXPECT_EQ(two.x2, 3u);
}

}  // namespace
}  // namespace zul::v0
