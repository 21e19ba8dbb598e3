#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "support/reference_table.h"
#include "zul/descriptive.h"

namespace zul {
namespace {

using Values = std::vector<double>;

const Values& Sample(const std::string& name) {
    static std::map<std::string, Values> samples;
    Values& sample = samples[name];
    if (sample.empty()) sample = test::ReadSample(name);
    return sample;
}

unsigned Size(const Values& values) {
    return static_cast<unsigned>(values.size());
}

// Returns the status; out receives the outputs in their order, so that a record's fields have to have theirs.
int Evaluate(const std::string& quantity, const Values& sample, const Values& arguments, double* out) {
    const double* const x = sample.data();
    const unsigned n = Size(sample);
    int status = 0;
    *out = std::numeric_limits<double>::infinity();
    if (quantity == "sum") *out = v1::GetSum(x, n);
    if (quantity == "mean") *out = v1::GetSampleMean(x, n);
    if (quantity == "variance") *out = v1::GetSampleVariance(x, n);
    if (quantity == "variance_given_mean") *out = v1::GetSampleVariance(x, n, arguments.at(0));
    if (quantity == "skewness") v1::GetKelSkewnessAndKurtosis(x, n, &out[0], &out[1]);
    if (quantity == "kurtosis") v1::GetKelSkewnessAndKurtosis(x, n, &out[1], &out[0]);
    if (quantity == "geometric_mean") *out = v2::GetGeometricMean(x, n);
    if (quantity == "kel_trimmed_mean") *out = v1::GetKelTrimmedMean(x, n, &status);
    if (quantity == "trimmed_mean") *out = v1::GetTrimmedMean(x, n, arguments.at(0), &status);
    if (quantity == "quantile")
        status = v1::GetSampleQuantiles(x, n, static_cast<int>(arguments.at(0)), out, &arguments.at(1), 1);
    if (quantity == "five") {
        v1::FiveNumberSummary five;
        status = v1::GetKelFiveNumberSummary(&five, x, n);
        std::memcpy(out, &five, sizeof five);
    }
    if (quantity == "boxplot") {
        v1::KelBoxplotHelper box;
        status = v1::RunKelBoxplotHelper(&box, arguments.at(0), x, n);
        std::memcpy(out, &box, sizeof box);
    }
    return status;
}

// The exact value within the conditioning of the data, and, where a literal is given, the very bits of the
// prescribed order of operations. The last three columns.
void ExpectValues(const double* actual, const test::Row& row) {
    const std::string& literal = row.at(row.size() - 2);
    const Values expected = test::Numbers(row.at(row.size() - 3));
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_TRUE(test::IsNear(actual[i], expected[i], test::Number(row.back())))
            << i << " of " << row[0] << " " << row[1] << " " << row[2];
    if (literal != "-") {
        EXPECT_TRUE(test::IsNear(*actual, test::Number(literal), 0)) << row[0] << " " << row[1];
    }
}

TEST(Univariate, MatchesReference) {
    double out[11];
    for (const test::Row& row : test::ReadTable("descriptive/univariate.csv", ',')) {
        EXPECT_EQ(Evaluate(row.at(1), Sample(row.at(0)), test::Numbers(row.at(2)), out), 0);
        ExpectValues(out, row);
    }
}

TEST(Bivariate, MatchesReference) {
    for (const test::Row& row : test::ReadTable("descriptive/bivariate.csv", ',')) {
        const Values& x = Sample(row.at(0));
        const Values& y = Sample(row.at(1));
        std::map<std::string, double> out;
        int status = -1;
        out["covariance"] =
            v1::GetCovariance(x.data(), y.data(), Size(x), &out["variance_x"], &out["variance_y"]);
        out["pearson"] = v1::GetPearsonCorrelation(x.data(), y.data(), Size(x));
        out["spearman"] = v1::GetSpearmanCorrelation(x.data(), y.data(), Size(x), &status);
        EXPECT_EQ(status, 0);
        ExpectValues(&out.at(row.at(2)), row);
    }
}

TEST(Nist, CertifiedMeanAndStandardDeviation) {
    for (const test::Row& row : test::ReadTable("descriptive/nist_certified.csv", ',')) {
        const Values& x = Sample(row.at(0));
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
