#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "support/reference_table.h"
#include "zul/descriptive.h"

namespace zul {
namespace {

using Values = std::vector<double>;
using Summary = std::function<Values(const double* x, unsigned n, const Values& arguments)>;

const Values& Sample(const std::string& name) {
    static std::map<std::string, Values> samples;
    Values& sample = samples[name];
    if (sample.empty()) sample = test::ReadSample(name);
    return sample;
}

unsigned Size(const Values& values) {
    return static_cast<unsigned>(values.size());
}

template <unsigned kOrder>
Values PowerSum(const double* x, unsigned n, const Values&) {
    double sums[kOrder];
    EXPECT_EQ(v1::GetCenteredOrderKPowerSums(x, n, sums, kOrder), 0);
    return {sums[kOrder - 1]};
}

template <unsigned kWhich>
Values Shape(const double* x, unsigned n, const Values&) {
    double shape[2];
    v1::GetKelSkewnessAndKurtosis(x, n, &shape[0], &shape[1]);
    return {shape[kWhich]};
}

Values Quantile(const double* x, unsigned n, const Values& arguments) {
    double out = 0;
    EXPECT_EQ(v1::GetSampleQuantiles(x, n, static_cast<int>(arguments[0]), &out, &arguments[1], 1), 0);
    return {out};
}

Values TrimmedMean(const double* x, unsigned n, const Values& arguments) {
    int status = -1;
    const double mean = arguments.empty() ? v1::GetKelTrimmedMean(x, n, &status)
                                          : v1::GetTrimmedMean(x, n, arguments[0], &status);
    EXPECT_EQ(status, 0);
    return {mean};
}

Values Modes(const double* x, unsigned n, const Values& arguments) {
    Values out(static_cast<std::size_t>(arguments[0]));
    unsigned count = 0;
    unsigned frequency = 0;
    EXPECT_EQ(v1::GetMode(x, n, out.data(), Size(out), &count, &frequency), 0);
    out.push_back(count);
    out.push_back(frequency);
    return out;
}

Values FiveNumbers(const double* x, unsigned n, const Values&) {
    v1::FiveNumberSummary five;
    EXPECT_EQ(v1::GetKelFiveNumberSummary(&five, x, n), 0);
    return {five.minimum, five.firstQuartile, five.median, five.thirdQuartile, five.maximum};
}

Values Ranks(const double* x, unsigned n, const Values&) {
    Values ranks(n);
    EXPECT_EQ(v1::GetRank(x, n, ranks.data()), 0);
    return ranks;
}

Values Boxplot(const double* x, unsigned n, const Values& arguments) {
    v1::KelBoxplotHelper box;
    EXPECT_EQ(v1::RunKelBoxplotHelper(&box, arguments[0], x, n), 0);
    return {box.minimum,          box.maximum,          box.firstQuartile, box.thirdQuartile, box.median,
            box.medianLowerBound, box.medianUpperBound, box.lowerHinge,    box.upperHinge,    box.mean,
            box.standardDeviation};
}

const std::map<std::string, Summary> kSummaries = {
    {"sum", [](const double* x, unsigned n, const Values&) { return Values{v1::GetSum(x, n)}; }},
    {"mean", [](const double* x, unsigned n, const Values&) { return Values{v1::GetSampleMean(x, n)}; }},
    {"variance",
     [](const double* x, unsigned n, const Values&) { return Values{v1::GetSampleVariance(x, n)}; }},
    {"variance_given_mean", [](const double* x, unsigned n,
                               const Values& mean) { return Values{v1::GetSampleVariance(x, n, mean[0])}; }},
    {"M2", PowerSum<2>},
    {"M3", PowerSum<3>},
    {"M4", PowerSum<4>},
    {"skewness", Shape<0>},
    {"kurtosis", Shape<1>},
    {"geometric_mean",
     [](const double* x, unsigned n, const Values&) { return Values{v2::GetGeometricMean(x, n)}; }},
    {"quantile", Quantile},
    {"kel_trimmed_mean", TrimmedMean},
    {"trimmed_mean", TrimmedMean},
    {"mode", Modes},
    {"five", FiveNumbers},
    {"rank", Ranks},
    {"boxplot", Boxplot},
};

// The exact value within the conditioning of the data, and, where a literal is given, the very bits of the
// prescribed order of operations.
void ExpectRow(const Values& actual, const std::string& value, const std::string& literal,
               const std::string& tolerance, const std::string& where) {
    const Values expected = test::Numbers(value);
    ASSERT_EQ(actual.size(), expected.size()) << where;
    for (std::size_t i = 0; i < actual.size(); ++i)
        EXPECT_TRUE(test::IsNear(actual[i], expected[i], test::Number(tolerance))) << i << " of " << where;
    if (literal != "-") {
        EXPECT_TRUE(test::IsNear(actual.at(0), test::Number(literal), 0)) << where;
    }
}

TEST(Univariate, MatchesReference) {
    for (const test::Row& row : test::ReadTable("descriptive/univariate.csv", ',')) {
        const Values& x = Sample(row.at(0));
        const Values actual = kSummaries.at(row.at(1))(x.data(), Size(x), test::Numbers(row.at(2)));
        ExpectRow(actual, row.at(3), row.at(4), row.at(5), row[0] + " " + row[1] + " " + row[2]);
    }
}

TEST(Bivariate, MatchesReference) {
    for (const test::Row& row : test::ReadTable("descriptive/bivariate.csv", ',')) {
        const Values& x = Sample(row.at(0));
        const Values& y = Sample(row.at(1));
        double varianceX = 0;
        double varianceY = 0;
        int status = -1;
        const double covariance = v1::GetCovariance(x.data(), y.data(), Size(x), &varianceX, &varianceY);
        const std::map<std::string, double> quantities = {
            {"covariance", covariance},
            {"variance_x", varianceX},
            {"variance_y", varianceY},
            {"pearson", v1::GetPearsonCorrelation(x.data(), y.data(), Size(x))},
            {"spearman", v1::GetSpearmanCorrelation(x.data(), y.data(), Size(x), &status)}};
        EXPECT_EQ(status, 0);
        ExpectRow({quantities.at(row.at(2))}, row.at(3), row.at(4), row.at(5),
                  row[0] + " " + row[1] + " " + row[2]);
    }
}

TEST(Nist, CertifiedMeanAndStandardDeviation) {
    for (const test::Row& row : test::ReadTable("descriptive/nist_certified.csv", ',')) {
        const Values& x = Sample(row.at(0));
        ASSERT_EQ(Size(x), test::Number(row.at(1)));
        double mean = 0;
        double variance = 0;
        v1::GetSampleMeanAndVariance(x.data(), Size(x), &mean, &variance);
        // The decimals of the data are rounded to doubles, which moves the deviations by that much.
        const double deviation = test::Number(row.at(3));
        const double tolerance = std::numeric_limits<double>::epsilon() * (4 + std::abs(mean) / deviation);
        EXPECT_TRUE(test::IsNear(mean, test::Number(row.at(2)), 1e-15)) << row[0];
        EXPECT_TRUE(test::IsNear(std::sqrt(variance), deviation, tolerance)) << row[0];
    }
}

}  // namespace
}  // namespace zul
