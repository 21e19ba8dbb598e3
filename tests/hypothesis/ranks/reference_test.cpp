// The table of the rank tests: on records that hold other numbers before, in the order of statuses and fields.
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cmath>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "hypothesis/record_fields.h"
#include "support/reference_table.h"
#include "zul/rank_tests.h"

namespace zul {
namespace {

using Data = std::vector<double>;
using Fields = std::map<std::string, double>;
using test::Row;

constexpr double kBefore = 77;

// Values, or "@n seed range offset den": n values of a generator.
Data Values(const std::string& text) {
    if (text.empty() || text[0] != '@') return test::Numbers(text);
    const Data numbers = test::Numbers(text.substr(1));
    Data values(static_cast<std::size_t>(numbers.at(0)));
    auto state = static_cast<std::int64_t>(numbers.at(1));
    for (double& value : values) {
        state = (1103515245 * state + 12345) % (std::int64_t{1} << 31);
        const std::int64_t drawn = (state >> 8) % static_cast<std::int64_t>(numbers.at(2));
        value = (static_cast<double>(drawn) - numbers.at(3)) / numbers.at(4);
    }
    return values;
}

struct Parts {
    std::vector<Data> all;
    Data joined;
    std::vector<unsigned> sizes;
};

Parts Split(const std::string& text) {
    Parts parts;
    std::string part;
    for (std::istringstream in(text.empty() ? text : text + "|"); std::getline(in, part, '|');) {
        const Data values = Values(part);
        parts.all.push_back(values);
        parts.joined.insert(parts.joined.end(), values.begin(), values.end());
        parts.sizes.push_back(static_cast<unsigned>(values.size()));
    }
    return parts;
}

// A record's doubles, then its counts, by their names.
template <typename Record>
void Collect(const Record& record, std::size_t doubles, const std::string& names, Fields* fields) {
    std::istringstream in(names);
    const Data values = test::Doubles(record, doubles);
    const auto* const counts = reinterpret_cast<const unsigned*>(&record) + 2 * doubles;
    std::size_t i = 0;
    for (std::string name; in >> name; ++i)
        (*fields)[name] = i < doubles ? values[i] : counts[i - doubles];
}

template <typename Number>
void Collect(const std::vector<Number>& values, const std::string& name, Fields* fields) {
    for (std::size_t i = 0; i < values.size(); ++i)
        (*fields)[name + "[" + std::to_string(i) + "]"] = values[i];
}

// Runs the form with a test on a record that is not fresh, and compares the one without.
template <typename Record, typename Count, typename Run, typename RunWithoutTest>
int RunBoth(std::size_t doubles, const std::string& names, const std::string& ofTheTest, Count count, Run run,
            RunWithoutTest runWithoutTest, Fields* fields) {
    Record used;
    auto* const first = reinterpret_cast<double*>(&used);
    std::fill(first, first + doubles, kBefore);
    std::fill(reinterpret_cast<unsigned*>(first + doubles), reinterpret_cast<unsigned*>(&used + 1), 77U);
    Record without = used;
    count(&used);
    count(&without);
    const int status = run(&used);
    const int statusWithout = runWithoutTest(&without);
    EXPECT_TRUE(statusWithout == status || (status == 30023 && statusWithout % 30002 == 0)) << statusWithout;
    Fields fieldsWithout;
    Collect(used, doubles, names, fields);
    Collect(without, doubles, names, &fieldsWithout);
    for (const auto& [name, value] : fieldsWithout) {
        const bool isOfTest = (" " + ofTheTest + " ").find(" " + name + " ") != std::string::npos;
        const double expected = !isOfTest ? fields->at(name) : std::isnan(value) ? kNaN : 0;
        EXPECT_TRUE(test::IsNear(value, expected, 0)) << name << " without a test";
    }
    return status;
}

int RunOne(const std::string& routine, const Parts& parts, const Data& a, Fields* out) {
    using namespace v0;
    const bool isSign = routine == "RunSignTest";
    const bool normal = !isSign && a.at(0) == 1;
    const double* const arguments = a.data() + (isSign ? 0 : 1);
    const double confidence = arguments[0];
    const auto type = static_cast<IntervalType>(arguments[1]);
    const auto alternative = static_cast<AlternativeHypothesis>(arguments[2]);
    const double* const x = parts.joined.data();
    const auto n = static_cast<unsigned>(parts.joined.size());
    const auto setN = [n](auto* r) { r->n = n; };
    if (isSign)
        return RunBoth<SignTest>(
            10,
            "median lowerBound upperBound innerConfidence innerLower innerUpper outerConfidence outerLower "
            "outerUpper pValue below equal above n",
            "pValue below equal above", setN,
            [&](auto* r) { return RunSignTest(r, x, confidence, type, alternative, arguments[3]); },
            [&](auto* r) { return RunSignTest(r, x, confidence, type); }, out);
    if (routine == "RunWilcoxon")
        return RunBoth<Wilcoxon>(
            6, "statistic pValue estimate achievedConfidence lowerBound upperBound used exact n",
            "statistic pValue used", setN,
            [&](auto* r) { return RunWilcoxon(r, x, normal, confidence, type, alternative, arguments[3]); },
            [&](auto* r) { return RunWilcoxon(r, x, normal, confidence, type); }, out);
    const Data& y = parts.all.at(1);
    return RunBoth<MannWhitney>(
        10,
        "median1 median2 rankSum u pValue pValueTies estimate achievedConfidence lowerBound upperBound exact "
        "n1 n2",
        "pValue pValueTies",
        [&](auto* r) {
            r->n1 = parts.sizes[0];
            r->n2 = parts.sizes[1];
        },
        [&](auto* r) { return RunMannWhitney(r, x, y.data(), normal, confidence, type, alternative); },
        [&](auto* r) { return RunMannWhitney(r, x, y.data(), normal, confidence, type); }, out);
}

int RunGroups(const std::string& routine, const Parts& parts, Fields* out) {
    using namespace v0;
    const auto groups = static_cast<unsigned>(parts.all.size());
    const double* const x = parts.joined.data();
    Data medians(groups, kBefore);
    Data others(medians);
    Data z(medians);
    int status = 0;
    if (routine == "RunKruskalWallis") {
        KruskalWallis r;
        r.groups = groups;
        r.hAdjusted = r.pValueAdjusted = r.h = kBefore;
        status = RunKruskalWallis(&r, x, parts.sizes.data(), medians.data(), others.data(), z.data());
        Collect(r, 5, "h hAdjusted degreesOfFreedom pValue pValueAdjusted groups n", out);
        Collect(others, "meanRank", out);
        Collect(z, "z", out);
    } else {
        MoodMedian r;
        r.groups = groups;
        r.chiSquare = r.pValue = r.overallMedian = kBefore;
        std::vector<unsigned> notAbove(groups, 77U);
        std::vector<unsigned> above(groups, 77U);
        status = RunMoodMedian(&r, x, parts.sizes.data(), notAbove.data(), above.data(), medians.data(),
                               others.data());
        Collect(r, 4, "overallMedian chiSquare degreesOfFreedom pValue groups n", out);
        Collect(notAbove, "notAbove", out);
        Collect(above, "above", out);
        Collect(others, "iqr", out);
    }
    Collect(medians, "median", out);
    for (std::size_t i = 0; i < groups; ++i)
        EXPECT_EQ(std::isnan(medians[i]), parts.sizes[i] == 0 || status == 30000) << "group " << i;
    return status;
}

int RunBlocks(const Parts& parts, Fields* out) {
    v0::Friedman r;
    r.blocks = static_cast<unsigned>(parts.all.size());
    r.treatments = parts.sizes.empty() ? 0 : parts.sizes[0];
    r.s = r.sAdjusted = r.kendallW = r.pValueAdjusted = r.grandMedian = kBefore;
    Data rankSums(r.treatments, kBefore);
    Data effects(rankSums);
    const int status = RunFriedman(&r, parts.joined.data(), rankSums.data(), effects.data());
    Collect(r, 7, "s sAdjusted degreesOfFreedom pValue pValueAdjusted kendallW grandMedian", out);
    Collect(rankSums, "rankSum", out);
    Collect(effects, "effect", out);
    return status;
}

TEST(RankTestsReference, Table) {
    std::vector<Row> table = test::ReadTable("hypothesis/rank_tests.csv", ';');
    for (const Row& row : test::ReadTable("hypothesis/rank_tests_edges.csv", ';'))
        table.push_back(row);
    std::map<std::string, double> statuses;
    for (const Row& row : table)
        if (row.at(4) == "status") statuses[row[0]] = test::Number(row.at(5));
    std::string lastCase;
    Fields fields;
    for (const Row& row : table) {
        SCOPED_TRACE("case " + row.at(0) + ", " + row.at(1) + ", " + row.at(4));
        if (row[0] != lastCase) {
            lastCase = row[0];
            fields.clear();
            const Parts parts = Split(row.at(2));
            fields["status"] = row[1] == "RunFriedman" ? RunBlocks(parts, &fields)
                               : row.at(3).empty()     ? RunGroups(row[1], parts, &fields)
                                                   : RunOne(row[1], parts, test::Numbers(row[3]), &fields);
            EXPECT_EQ(fields["status"], statuses[row[0]]);
            EXPECT_EQ(_mm_getcsr() & 0x1F80, 0x1F80u) << "the mode that the routine left";
        }
        const double actual = fields.at(row.at(4));
        const double expected = test::Number(row.at(5));
        const double tolerance = test::Number(row.at(6)) * std::abs(expected) + test::Number(row.at(7));
        const bool isPlain = std::isfinite(actual) && std::isfinite(expected);
        EXPECT_TRUE(isPlain ? std::abs(actual - expected) <= tolerance : test::IsNear(actual, expected, 0))
            << actual << " instead of " << expected;
    }
}

}  // namespace
}  // namespace zul
