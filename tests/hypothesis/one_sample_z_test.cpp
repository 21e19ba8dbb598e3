#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "support/reference_table.h"
#include "zul/hypothesis.h"

namespace zul::v0 {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

OneSampleZ Summary(double mean, unsigned n) {
    OneSampleZ record;
    record.mean = mean;
    record.n = n;
    return record;
}

// The columns of the table, as far as the z test uses them.
enum Column {
    Test,
    Data,
    Second,
    Confidence,
    Type,
    Alternative,
    Mu0,
    Sigma,
    N,
    N2,
    Mean,
    Sd,
    In3,
    In4,
    Status,
    Expected
};

TEST(OneSampleZ, MatchesReference) {
    for (const test::Row& row : test::ReadTable("hypothesis/t_and_z.csv", ',')) {
        const double confidence = test::Number(row.at(Confidence));
        const double sigma = test::Number(row.at(Sigma));
        const auto type = static_cast<IntervalType>(std::stoi(row.at(Type)));
        const bool fromData = row.at(Data) != "-";
        const bool tests = row.at(Alternative) != "-";
        const auto alternative = static_cast<AlternativeHypothesis>(tests ? std::stoi(row[Alternative]) : 0);
        const double mu0 = tests ? test::Number(row.at(Mu0)) : 0;
        OneSampleZ record;
        record.n = static_cast<unsigned>(std::stoul(row.at(N)));
        if (!fromData) record.mean = test::Number(row.at(Mean));
        if (!fromData) record.standardDeviation = test::Number(row.at(Sd));
        const std::vector<double> data = fromData ? test::ReadSample(row[Data]) : std::vector<double>{};

        const int status =
            fromData ? (tests ? RunOneSampleZ(&record, data.data(), sigma, confidence, type, alternative, mu0)
                              : RunOneSampleZ(&record, data.data(), sigma, confidence, type))
                     : (tests ? RunOneSampleZ(&record, sigma, confidence, type, alternative, mu0)
                              : RunOneSampleZ(&record, sigma, confidence, type));

        std::string where;
        for (const std::string& cell : row)
            where += cell + ",";
        EXPECT_EQ(status, std::stoi(row.at(Status))) << where;
        const double actual[] = {record.mean,       record.standardDeviation, record.standardError,
                                 record.lowerBound, record.upperBound,        record.zStatistic,
                                 record.pValue};
        for (std::size_t i = 0; i < 7; ++i) {
            const double expected = test::Number(row.at(Expected + i));
            const bool bound = i == 3 || i == 4;
            // A bound near zero is as good as the standard error that it is a few of.
            const double scale =
                bound && std::isfinite(expected)
                    ? std::max(std::abs(expected), 3 * record.standardError) / std::abs(expected)
                    : 1;
            EXPECT_TRUE(test::IsNear(actual[i], expected, (bound || i == 6 ? 1e-8 : 1e-11) * scale))
                << "field " << i << " of " << where;
        }
    }
}

TEST(OneSampleZ, RecordStartsEmpty) {
    const OneSampleZ record;
    for (const double field : {record.mean, record.standardDeviation, record.standardError, record.lowerBound,
                               record.upperBound, record.zStatistic, record.pValue}) {
        EXPECT_TRUE(std::isnan(field));
    }
    EXPECT_EQ(record.n, 0u);
}

TEST(OneSampleZ, BoundsOfEachType) {
    OneSampleZ record = Summary(10, 4);
    record.standardDeviation = 77;
    EXPECT_EQ(RunOneSampleZ(&record, 2, 0.95, IntervalType::LowerBound), 0);
    EXPECT_NEAR(record.lowerBound, 10 - 1.6448536269514722, 1e-8);
    EXPECT_EQ(record.upperBound, kInf);
    EXPECT_EQ(RunOneSampleZ(&record, 2, 0.95, IntervalType::UpperBound), 0);
    EXPECT_EQ(record.lowerBound, -kInf);
    EXPECT_NEAR(record.upperBound, 10 + 1.6448536269514722, 1e-8);
    EXPECT_EQ(record.standardDeviation, 77);
    EXPECT_TRUE(std::isnan(record.zStatistic) && std::isnan(record.pValue));
}

TEST(OneSampleZ, BadTypeEndsBeforeTheTest) {
    OneSampleZ record = Summary(10, 4);
    EXPECT_EQ(
        RunOneSampleZ(&record, 2, 0.95, static_cast<IntervalType>(7), AlternativeHypothesis::NotEqual, 9),
        30002);
    EXPECT_EQ(record.standardError, 1);
    for (const double field : {record.lowerBound, record.upperBound, record.zStatistic, record.pValue}) {
        EXPECT_TRUE(std::isnan(field));
    }
}

TEST(OneSampleZ, BadValuesGoThroughWithStatusZero) {
    const auto run = [](double mean, unsigned n, double sigma, double confidence, int alternative,
                        double mu0) {
        OneSampleZ record = Summary(mean, n);
        EXPECT_EQ(RunOneSampleZ(&record, sigma, confidence, IntervalType::TwoSided,
                                static_cast<AlternativeHypothesis>(alternative), mu0),
                  0);
        EXPECT_EQ(_mm_getcsr() & 0x1F80, 0x1F80u);
        return record;
    };
    for (const double confidence : {0.0 - 1, 1.0, 1.5, kInf, std::nan("")}) {
        const OneSampleZ record = run(10, 4, 2, confidence, 0, 9);
        EXPECT_TRUE(std::isnan(record.lowerBound) && std::isnan(record.upperBound)) << confidence;
        EXPECT_EQ(record.zStatistic, 1);
    }
    EXPECT_EQ(run(10, 4, 2, 0.95, 5, 9).pValue, 0);     // unknown alternative
    EXPECT_EQ(run(10, 4, 2, 0.95, 0, 10).pValue, 1);    // z = 0
    EXPECT_EQ(run(10, 4, 2, 0.95, 1, 10).pValue, 0.5);  // z = 0
    EXPECT_EQ(run(10, 4, 0, 0.95, -1, 9).zStatistic, kInf);
    EXPECT_EQ(run(10, 4, 0, 0.95, -1, 9).pValue, 0);  // infinite z, even for "less than"
    EXPECT_TRUE(std::isnan(run(10, 4, 0, 0.95, 0, 10).pValue));
    EXPECT_TRUE(std::isnan(run(std::nan(""), 4, 2, 0.95, 0, 10).pValue));
    EXPECT_EQ(run(10, 0, 2, 0.95, 0, 9).standardError, kInf);
    EXPECT_TRUE(std::isnan(run(1.23456e30, 1, 1, 0.95, 0, 0).pValue));  // z is the missing value itself
}

// A two-sided interval holds mu0 exactly when the test does not reject it.
TEST(OneSampleZ, IntervalAndTestAgree) {
    for (double mu0 = 7.5; mu0 < 12.5; mu0 += 0.0173) {
        OneSampleZ record = Summary(10, 4);
        RunOneSampleZ(&record, 2, 0.9, IntervalType::TwoSided, AlternativeHypothesis::NotEqual, mu0);
        EXPECT_EQ(record.lowerBound < mu0 && mu0<record.upperBound, record.pValue> 1 - 0.9) << mu0;
    }
}

}  // namespace
}  // namespace zul::v0
