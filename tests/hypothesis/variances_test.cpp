// Two and several variances: the table of tests/data/hypothesis/variances.csv, real data, and what holds for all.
#include "zul/variances.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "hypothesis/record_fields.h"
#include "platforms/exact_numbers.h"
#include "support/reference_table.h"

namespace zul {
namespace {

using v0::TwoVariance;
using v0::VariancesTest;
using Values = std::vector<double>;
using Fields = std::map<std::string, double>;

std::vector<Values> Samples(const std::string& text) {
    std::vector<Values> samples;
    std::istringstream in(text);
    for (std::string sample; std::getline(in, sample, '|');)
        samples.push_back(test::Numbers(sample));
    if (text.ends_with("|")) samples.emplace_back();
    return samples;
}

using Names = std::vector<std::string>;

const Names kPairFields = {
    "variance1",         "variance2",        "ratio",           "fLowerBound", "fUpperBound",
    "bonettLowerBound",  "bonettUpperBound", "fStatistic",      "fPValue",     "degreesOfFreedom1",
    "degreesOfFreedom2", "bonettPValue",     "leveneStatistic", "levenePValue"};
const Names kSeveralFields = {"comparisonStatistic", "comparisonPValue",        "leveneStatistic",
                              "levenePValue",        "leveneDegreesOfFreedom1", "leveneDegreesOfFreedom2",
                              "bartlettStatistic",   "bartlettPValue",          "pooledStandardDeviation"};
const Names kArrays = {"standardDeviation", "simultaneousLower", "simultaneousUpper", "comparisonLower",
                       "comparisonUpper"};

// A record as a call before may have left it.
template <typename Record>
Record Used(const Names& names) {
    const Values sevens(names.size(), 7);
    Record record;
    std::memcpy(static_cast<void*>(&record), sevens.data(), names.size() * sizeof(double));
    return record;
}

template <typename Record>
Fields FieldsOf(const Record& record, const Names& names, int status) {
    Fields fields = {{"status", status}};
    const Values values = test::Doubles(record, names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        fields[names[i]] = values[i];
    return fields;
}

bool SameBits(double a, double b) {
    return a == b || (a != a && b != b);
}

// By the overload with the test; that without it gives the same bits, and NaN for the tests.
Fields TwoSamples(const std::vector<Values>& samples, bool isSummary, const Values& arguments) {
    const auto type = static_cast<IntervalType>(static_cast<int>(arguments.at(1)));
    const auto alternative = static_cast<AlternativeHypothesis>(static_cast<int>(arguments.at(2)));
    const Values& x = samples.at(0);
    const Values& y = samples.at(1);
    const auto run = [&](auto... test) {
        auto r = Used<TwoVariance>(kPairFields);
        r.n1 = static_cast<unsigned>(isSummary ? y[0] : static_cast<double>(x.size()));
        r.n2 = static_cast<unsigned>(isSummary ? y[1] : static_cast<double>(y.size()));
        if (isSummary) {
            r.variance1 = x[0];
            r.variance2 = x[1];
        }
        const int status = isSummary ? RunTwoVariance(&r, arguments[0], type, test...)
                                     : RunTwoVariance(&r, x.data(), y.data(), arguments[0], type, test...);
        return FieldsOf(r, kPairFields, status);
    };
    Fields tested = run(alternative, arguments.at(3));
    for (const auto& [name, value] : run()) {
        const bool isOfTest = name.ends_with("Statistic") || name.ends_with("PValue");
        EXPECT_TRUE(SameBits(value, isOfTest ? kNaN : tested[name])) << name;
    }
    return tested;
}

Fields SeveralSamples(const std::vector<Values>& samples, double confidence) {
    Values data;
    std::vector<unsigned> sizes;
    for (const Values& sample : samples) {
        data.insert(data.end(), sample.begin(), sample.end());
        sizes.push_back(static_cast<unsigned>(sample.size()));
    }
    std::vector<Values> out(kArrays.size(), Values(samples.size(), 7));
    auto r = Used<VariancesTest>(kSeveralFields);
    r.groups = static_cast<unsigned>(samples.size());
    const int status = RunVariancesTest(&r, data.data(), sizes.data(), confidence, out[0].data(),
                                        out[1].data(), out[2].data(), out[3].data(), out[4].data());
    EXPECT_EQ(r.n, status == 30000 ? 0 : data.size());
    Fields fields = FieldsOf(r, kSeveralFields, status);
    for (std::size_t i = 0; i < out.size(); ++i)
        for (std::size_t group = 0; group < samples.size(); ++group)
            fields[kArrays[i] + std::string(1, '[').append(std::to_string(group)).append(1, ']')] =
                out[i][group];
    return fields;
}

TEST(Variances, AreThoseOfTheTable) {
    std::string before;
    Fields fields;
    for (const test::Row& row : test::ReadTable("hypothesis/variances.csv", ';')) {
        SCOPED_TRACE(row.at(0) + " " + row.at(4));
        if (row[0] != before) {
            const std::vector<Values> samples = Samples(row.at(2));
            const Values arguments = test::Numbers(row.at(3));
            fields = row.at(1) == "RunVariancesTest"
                         ? SeveralSamples(samples, arguments.at(0))
                         : TwoSamples(samples, row[1] == "RunTwoVariance.summary", arguments);
            before = row[0];
            EXPECT_EQ(fields["status"] != 0, row[4] == "status") << "first of a case that fails";
        }
        const double expected = test::Number(row.at(5));
        const double tolerance = test::Number(row.at(6)) * std::abs(expected) + test::Number(row.at(7));
        const double actual = fields.at(row[4]);
        EXPECT_TRUE(SameBits(actual, expected) || std::abs(actual - expected) <= tolerance)
            << actual << " instead of " << expected;
    }
}

// R 4.2: bartlett.test, and the analysis of variance of the distances from the medians.
TEST(Variances, OfRealDataAreThoseOfR) {
    for (const test::Row& row : test::ReadTable("hypothesis/variances_of_data.csv", ';')) {
        std::map<std::string, Values> groups;
        for (const test::Row& value : test::ReadTable("../../examples/data/" + row.at(0) + ".csv", ','))
            groups[value.back()].push_back(test::Number(value.front()));
        std::vector<Values> samples;
        samples.reserve(groups.size());
        for (const auto& [name, values] : groups)
            samples.push_back(values);
        const Fields fields = SeveralSamples(samples, 0.95);
        EXPECT_TRUE(test::IsNear(fields.at(row.at(1)), test::Number(row.at(2)), test::Number(row.at(3))))
            << row[0];
    }
}

// A test at the level of an interval rejects what the interval leaves out, also where a small sample meets a large one;
// samples that change places invert the bounds, and a common factor changes nothing.
TEST(Variances, TestAndIntervalAgree) {
    test::ExactNumbers random(18);
    const auto below = [&random](int n) { return static_cast<double>(random.Below(n)); };
    const auto sample = [&](int n) {
        Values x(static_cast<std::size_t>(n));
        for (double& value : x)
            value = std::ldexp(below(4096), random.Below(3)) / 64;
        return x;
    };
    int rejected = 0;
    for (int i = 0; i < 400; ++i) {
        const Values x = sample(2 + random.Below(30));
        const Values y = sample(i % 4 == 0 ? static_cast<int>(x.size()) : 2 + random.Below(30));
        const double confidence = (1 + below(199)) / 200;
        const double type = below(3) - 1;
        const double ratio0 = std::ldexp(1 + below(8), random.Below(8) - 6);
        Fields r = TwoSamples({x, y}, false, {confidence, type, type, ratio0});
        if (r["status"] != 0) continue;
        for (const char* const name : {"f", "bonett"}) {
            const double lower = r[name + std::string("LowerBound")];
            const double upper = r[name + std::string("UpperBound")];
            const double p = r[name + std::string("PValue")];
            if (std::isnan(lower) || std::isnan(upper)) continue;
            EXPECT_TRUE(lower <= upper || confidence < 0.5);
            if (std::abs(p - (1 - confidence)) < 1e-6) continue;
            const bool isOutside = ratio0 < lower || ratio0 > upper;
            EXPECT_EQ(p < 1 - confidence, isOutside)
                << name << " " << i << " " << p << " " << lower << " " << upper;
            rejected += isOutside;
        }
        Fields swapped = TwoSamples({y, x}, false, {confidence, -type, -type, 1 / ratio0});
        EXPECT_TRUE(test::IsNear(1 / swapped["bonettUpperBound"], r["bonettLowerBound"], 1e-11));
        EXPECT_TRUE(test::IsNear(swapped["bonettPValue"], r["bonettPValue"], 1e-9));
        Values large = x;
        for (double& value : large)
            value *= 0x1p300;
        Fields scaled = TwoSamples({large, y}, false, {confidence, type, type, ratio0 * 0x1p600});
        EXPECT_TRUE(test::IsNear(scaled["bonettPValue"], r["bonettPValue"], 1e-9));
        EXPECT_EQ(scaled["fPValue"], r["fPValue"]);
    }
    EXPECT_GT(rejected, 50);
}

// Of two groups the comparison intervals overlap where the test does not reject.
TEST(Variances, ComparisonOfTwoGroupsAgreesWithItsIntervals) {
    for (double factor = 1; factor < 40; factor *= 1.25) {
        Values y = {3, 1, 4, 1, 5, 9, 2, 6, 5};
        for (double& value : y)
            value *= factor;
        Fields r = SeveralSamples({{1, 4, 2, 8, 5, 7, 3}, y}, 0.95);
        const bool overlap = r["comparisonLower[1]"] <= r["comparisonUpper[0]"];
        EXPECT_EQ(r["comparisonPValue"] >= 0.05, overlap) << factor;
    }
}

TEST(Variances, OfMoreValuesThanACount) {
    const unsigned sizes[] = {3'000'000'000, 3'000'000'000};
    double sds[] = {1, 1};
    v0::VariancesTest r;
    r.groups = 2;
    r.pooledStandardDeviation = 1;
    EXPECT_EQ(RunVariancesTest(&r, nullptr, sizes, 0.95, sds, nullptr, nullptr, nullptr, nullptr), 30011);
    EXPECT_TRUE(std::isnan(r.pooledStandardDeviation) && std::isnan(sds[0]) && std::isnan(sds[1]) &&
                r.n == 0);
}

// Seven times ln 7 has a variance of 1e-38 by its sums.
TEST(Variances, OfEqualValuesAreZero) {
    const Values equal(7, std::log(7.0));
    Fields r = TwoSamples({equal, {1, 2, 4, 4.5}}, false, {0.95, 0, 0, 1});
    EXPECT_EQ(r["status"], 30007);
    EXPECT_EQ(r["variance1"], 0);
    EXPECT_EQ(SeveralSamples({{1, 2, 4}, equal}, 0.95)["status"], 30007);
}

// Nor have these a spread, though rounding gives their squares a sum.
TEST(Variances, OfEqualDistancesHaveNoLeveneTest) {
    Values x;
    Values y;
    for (int i = 0; i < 7; ++i) {
        x.insert(x.end(), {0.1, 0.44000000000000006});
        y.insert(y.end(), {1.1, 1.94});
    }
    Fields r = TwoSamples({x, y}, false, {0.95, 0, 0, 1});
    EXPECT_TRUE(std::isnan(r["leveneStatistic"]) && std::isnan(r["levenePValue"]));
}

}  // namespace
}  // namespace zul
