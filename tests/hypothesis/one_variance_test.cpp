#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

#include "zul/frame.h"
#include "zul/hypothesis.h"

namespace zul::v0 {
namespace {

using Sample = std::vector<double>;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr auto kTwoSided = IntervalType::TwoSided;
constexpr auto kLess = AlternativeHypothesis::LessThan;
constexpr auto kNotEqual = AlternativeHypothesis::NotEqual;
constexpr auto kGreater = AlternativeHypothesis::GreaterThan;

const Sample kSample = {1, 2, 3, 4, 5.5, 9, -3, 1};

OneVariance RunTest(const Sample& data, AlternativeHypothesis alternative, double variance0,
                    IntervalType type = kTwoSided, int status = 0) {
    OneVariance record;
    record.n = static_cast<unsigned>(data.size());
    EXPECT_EQ(RunOneVariance(&record, data.data(), 0.95, type, alternative, variance0), status);
    return record;
}

TEST(OneVariance, BadTypeLeavesTheTests) {
    const OneVariance good = RunTest(kSample, kNotEqual, 5);
    const OneVariance badType = RunTest(kSample, kNotEqual, 5, static_cast<IntervalType>(2), 30002);
    EXPECT_EQ(badType.chiSquarePValue, good.chiSquarePValue);
    EXPECT_EQ(badType.bonettPValue, good.bonettPValue);
}

TEST(OneVariance, ExtremeHypothesesAndSamples) {
    for (const double variance0 : {0.0, -5.0, 1e-31, kInf, kNaN})
        EXPECT_TRUE(std::isnan(RunTest(kSample, kNotEqual, variance0).bonettPValue)) << variance0;
    const OneVariance zero = RunTest(kSample, kNotEqual, 0);
    EXPECT_EQ(zero.chiSquareStatistic, kInf);
    EXPECT_TRUE(std::isnan(zero.chiSquarePValue));
    EXPECT_NEAR(RunTest(kSample, kLess, 1e-30).bonettPValue, 1, 1e-12);
    EXPECT_EQ(RunTest(kSample, kLess, zero.variance).bonettPValue, 0.5);
    // No bracket of the root.
    EXPECT_EQ(RunTest(kSample, kGreater, 1e6).bonettPValue, 1);
    EXPECT_EQ(RunTest(kSample, kNotEqual, 1e6).bonettPValue, 2 * RunTest(kSample, kLess, 1e6).bonettPValue);
    // The root is far beyond any quantile.
    EXPECT_EQ(RunTest({1e150, -3e150, 2e150, 5e149, 1e150, 3e150}, kLess, 0.5).bonettPValue, 1);

    const Sample constant(6, 3.0);
    const OneVariance same = RunTest(constant, kLess, 2);
    EXPECT_EQ(same.bonettLowerBound, 0);
    EXPECT_EQ(same.bonettUpperBound, 0);
    EXPECT_NEAR(same.bonettPValue, 9.865876450377018e-10, 1e-17);  // the normal tail beyond n
    EXPECT_EQ(RunTest(constant, kGreater, 2).bonettPValue, 1);
    for (const Sample& few : {Sample{}, Sample{3}})
        EXPECT_TRUE(std::isnan(RunTest(few, kNotEqual, 2).chiSquarePValue));
    EXPECT_TRUE(std::isnan(RunTest({1, 2, kNaN, 4, 5, 6}, kNotEqual, 2).bonettPValue));
}

// The bounds by the formula, the trimmed mean being 5.5: without trimming it would be 7.5.
TEST(OneVariance, SixValuesAreTrimmed) {
    const OneVariance r = RunTest({1, 2, 4, 7, 11, 20}, kNotEqual, 2);
    EXPECT_NEAR(r.bonettLowerBound, 6.020832446712426, 1e-7);
    EXPECT_NEAR(r.bonettUpperBound, 941.6541063201811, 1e-5);
}

TEST(OneVariance, LargeSampleOverflows) {
    Sample data;
    for (int i = 0; i < 300'000; ++i)
        data.push_back(i % 1000 == 0 ? 30 : i % 2);
    EXPECT_GT(RunTest(data, kLess, 1).bonettPValue, 0);
    OneVariance record;
    record.n = static_cast<unsigned>(data.size());
    EXPECT_THROW(RunOneVariance(&record, data.data(), 0.95, kTwoSided, kGreater, 1), std::runtime_error);
    ResetFpuStates();
    EXPECT_FALSE(std::isnan(record.chiSquarePValue));
    EXPECT_TRUE(std::isnan(record.bonettPValue));
}

}  // namespace
}  // namespace zul::v0
