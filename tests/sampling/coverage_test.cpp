// Intervals computed from simulated data cover the true value as often as their methods promise.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "sampling/slots.h"
#include "zul/distributions.h"
#include "zul/hypothesis.h"

namespace zul {
namespace {

constexpr int kSamples = 10'000;
constexpr double kConfidence = 0.95;

struct Interval {
    double lower;
    double upper;
    bool Holds(double value) const { return lower <= value && value <= upper; }
};

// Five standard errors of the share of samples with a success.
double FarOff(double share) {
    return 5 * std::sqrt(share * (1 - share) / kSamples);
}

// The share of the samples whose interval holds the true value.
double Coverage(double seed, const std::string& slot, const test::Parameters& parameters, unsigned size,
                double trueValue, Interval (*interval)(const std::vector<double>& data)) {
    const auto sampler = test::MakeSampler(seed);
    std::vector<double> data(size);
    int covered = 0;
    for (int i = 0; i < kSamples; ++i) {
        EXPECT_EQ(test::Slots().at(slot).draw(*sampler, data.data(), size, parameters), 0);
        covered += interval(data).Holds(trueValue) ? 1 : 0;
    }
    return static_cast<double>(covered) / kSamples;
}

template <typename Record>
Record RecordFor(const std::vector<double>& data) {
    Record record;
    record.n = static_cast<unsigned>(data.size());
    return record;
}

constexpr double kMean = 40;
constexpr double kSd = 3;

Interval ByZ(const std::vector<double>& data) {
    auto record = RecordFor<v0::OneSampleZ>(data);
    v0::RunOneSampleZ(&record, data.data(), kSd, kConfidence, IntervalType::TwoSided);
    return {record.lowerBound, record.upperBound};
}

Interval ByT(const std::vector<double>& data) {
    auto record = RecordFor<v0::OneSampleT>(data);
    v0::RunOneSampleT(&record, data.data(), kConfidence, IntervalType::TwoSided);
    return {record.lowerBound, record.upperBound};
}

Interval ByChiSquare(const std::vector<double>& data) {
    auto record = RecordFor<v0::OneVariance>(data);
    v0::RunOneVariance(&record, data.data(), kConfidence, IntervalType::TwoSided);
    return {record.chiSquareLowerBound, record.chiSquareUpperBound};
}

Interval ByBonett(const std::vector<double>& data) {
    auto record = RecordFor<v0::OneVariance>(data);
    v0::RunOneVariance(&record, data.data(), kConfidence, IntervalType::TwoSided);
    return {record.bonettLowerBound, record.bonettUpperBound};
}

TEST(Coverage, IntervalsOfNormalData) {
    const double exact = FarOff(kConfidence);
    EXPECT_NEAR(Coverage(1, "Normal", {kMean, kSd}, 12, kMean, ByZ), kConfidence, exact);
    EXPECT_NEAR(Coverage(2, "Normal", {kMean, kSd}, 12, kMean, ByT), kConfidence, exact);
    EXPECT_NEAR(Coverage(3, "Normal", {kMean, kSd}, 12, kSd * kSd, ByChiSquare), kConfidence, exact);
    // Approximate; within a hundredth by its author's simulations.
    EXPECT_NEAR(Coverage(4, "Normal", {kMean, kSd}, 50, kSd * kSd, ByBonett), kConfidence, exact + 0.01);
    EXPECT_NEAR(Coverage(5, "Uniform", {0, 1}, 50, 1 / 12.0, ByBonett), kConfidence, exact + 0.01);
    EXPECT_GT(Coverage(5, "Uniform", {0, 1}, 50, 1 / 12.0, ByChiSquare), kConfidence + 0.01);
}

constexpr int kTrials = 40;

Interval ByWilson(unsigned events) {
    v0::OneProportion record;
    record.x = events;
    record.n = kTrials;
    v0::RunOneProportionWilson(&record, false, kConfidence, IntervalType::TwoSided);
    return {record.lowerBound, record.upperBound};
}

Interval ByClopperPearson(unsigned events) {
    v0::OneProportion record;
    record.x = events;
    record.n = kTrials;
    v0::RunOneProportionClopperPearson(&record, kConfidence, IntervalType::TwoSided);
    return {record.lowerBound, record.upperBound};
}

// The sum of the probabilities of the counts whose interval holds the proportion.
double ExactCoverage(double proportion, Interval (*interval)(unsigned)) {
    double sum = 0;
    for (unsigned events = 0; events <= kTrials; ++events)
        if (interval(events).Holds(proportion)) sum += BinomialPdf(events, kTrials, proportion);
    return sum;
}

TEST(Coverage, IntervalsOfAProportion) {
    for (const double proportion : {0.03, 0.2, 0.5, 0.77}) {
        const test::Parameters parameters = {kTrials, proportion};
        const double wilson = Coverage(6, "Binomial", parameters, 1, proportion, [](const auto& data) {
            return ByWilson(static_cast<unsigned>(data[0]));
        });
        const double exactly = Coverage(7, "Binomial", parameters, 1, proportion, [](const auto& data) {
            return ByClopperPearson(static_cast<unsigned>(data[0]));
        });
        const double ofWilson = ExactCoverage(proportion, ByWilson);
        const double ofClopperPearson = ExactCoverage(proportion, ByClopperPearson);
        EXPECT_NEAR(wilson, ofWilson, FarOff(ofWilson)) << proportion;
        EXPECT_NEAR(ofWilson, kConfidence, 0.035) << proportion;
        EXPECT_NEAR(exactly, ofClopperPearson, FarOff(ofClopperPearson)) << proportion;
        EXPECT_GE(ofClopperPearson, kConfidence) << proportion;
    }
}

}  // namespace
}  // namespace zul
