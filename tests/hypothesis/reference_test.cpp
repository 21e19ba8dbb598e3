// The tables of tests/data/hypothesis, and their continuations for bad values and the ends of ranges.
#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "hypothesis/record_fields.h"
#include "support/reference_table.h"
#include "zul/hypothesis.h"

namespace zul {
namespace {

using test::Doubles;
using test::Number;
using test::Row;

std::vector<Row> ReadTable(const std::string& name, bool withEdges) {
    std::vector<Row> rows = test::ReadTable("hypothesis/" + name + ".csv", ',');
    if (withEdges)
        for (const Row& row : test::ReadTable("hypothesis/" + name + "_edges.csv", ','))
            rows.push_back(row);
    return rows;
}

std::string Text(const Row& row) {
    std::string text;
    for (const std::string& cell : row)
        text += cell + ",";
    return text;
}

// kinds has a letter for each value: p for bounds and p-values, a for the arithmetic that leads to them; in
// capitals, the tolerance is relative to the scale where that is larger than the expected value.
void ExpectCells(const Row& row, std::size_t first, const std::vector<double>& values,
                 const std::string& kinds, double scale = 0) {
    EXPECT_EQ(_mm_getcsr() & 0x1F80, 0x1F80u) << "the mode that the routine left";
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double expected = Number(row.at(first + i));
        const double tolerance = std::tolower(kinds.at(i)) == 'p' ? 1e-8 : 1e-11;
        const bool scaled = std::isupper(kinds[i]) && std::isfinite(expected) && scale > std::abs(expected);
        EXPECT_TRUE(scaled ? std::abs(values[i] - expected) <= tolerance * scale
                           : test::IsNear(values[i], expected, tolerance))
            << values[i] << " instead of cell " << first + i << " of " << Text(row);
    }
}

unsigned Count(const std::string& cell) {
    return static_cast<unsigned>(std::stoul(cell));
}

IntervalType Type(const std::string& cell) {
    return static_cast<IntervalType>(std::stoi(cell));
}

AlternativeHypothesis Alternative(const std::string& cell) {
    return static_cast<AlternativeHypothesis>(std::stoi(cell));
}

// call(confidence, type), or call(confidence, type, alternative, hypothesis), as the cells from `first` on say.
template <typename Call>
void RunForms(const Row& row, std::size_t first, std::size_t status, Call call) {
    const double confidence = Number(row.at(first));
    const IntervalType type = Type(row.at(first + 1));
    const bool tests = row.at(first + 2) != "-";
    const int actual = tests ? call(confidence, type, Alternative(row[first + 2]), Number(row.at(first + 3)))
                             : call(confidence, type);
    EXPECT_EQ(actual, std::stoi(row.at(status))) << Text(row);
}

TEST(HypothesisReference, TAndZ) {
    using namespace v0;
    constexpr std::size_t kFirst = 3;
    constexpr std::size_t kStatus = 14;
    for (const Row& row : ReadTable("t_and_z", true)) {
        const bool summary = row.at(1) == "-";
        const std::vector<double> x = summary ? std::vector<double>{} : test::ReadSample(row[1]);
        const std::vector<double> y = row.at(2) == "-" ? x : test::ReadSample(row[2]);
        const auto input = [&](std::size_t i) { return row.at(10 + i) == "-" ? 0 : Number(row[10 + i]); };
        // The summary stands in the fields from `first` on; scale: the standard errors.
        const auto check = [&](auto record, std::size_t first, const std::string& kinds, auto run) {
            double* const fields = reinterpret_cast<double*>(&record);
            const bool isOne = kinds.size() == 7;
            for (std::size_t i = 0; i < (first == 0 && !isOne ? 4 : 2); ++i)
                fields[first + i] = input(i);
            RunForms(row, kFirst, kStatus, [&](auto... a) { return run(&record, a...); });
            const double scale = isOne        ? fields[2]
                                 : first == 6 ? fields[8]
                                              : std::hypot(fields[4], fields[5]);
            ExpectCells(row, kStatus + 1, Doubles(record, kinds.size()), kinds, 3 * scale);
        };
        const auto count = [](auto record, unsigned n) {
            record.n = n;
            return record;
        };
        const std::string& test = row[0];
        const unsigned n = Count(row.at(8));
        const char* const kPair = "aaaaaaAaaPPap";
        if (test == "t1") {
            check(count(OneSampleT(), n), 0, "aaaPPap", [&](auto* r, auto... a) {
                return summary ? RunOneSampleT(r, a...) : RunOneSampleT(r, x.data(), a...);
            });
        } else if (test == "z1") {
            const double sigma = Number(row.at(7));
            check(count(OneSampleZ(), n), 0, "aaaPPap", [&](auto* r, auto... a) {
                return summary ? RunOneSampleZ(r, sigma, a...) : RunOneSampleZ(r, x.data(), sigma, a...);
            });
        } else if (test == "tp") {
            check(count(PairedT(), n), 6, kPair, [&](auto* r, auto... a) {
                return summary ? RunPairedT(r, a...) : RunPairedT(r, x.data(), y.data(), a...);
            });
        } else {
            TwoSampleT r;
            r.n1 = n;
            r.n2 = Count(row.at(9));
            const bool equal = test == "t2p";
            check(r, 0, kPair, [&](auto* r2, auto... a) {
                return summary ? RunTwoSampleT(r2, equal, a...)
                               : RunTwoSampleT(r2, x.data(), y.data(), equal, a...);
            });
        }
    }
}

// The interval form or the test form of a single method.
int RunMethod(const std::string& method, v0::OneProportion* r, bool flag, const Row& row) {
    using namespace v0;
    if (method.ends_with("_ci")) {
        const double confidence = Number(row.at(4));
        const IntervalType type = Type(row.at(5));
        return method == "wilson_ci" ? RunOneProportionWilson(r, flag, confidence, type)
               : method == "wald_ci" ? RunOneProportionWaldCI(r, flag, confidence, type)
               : method == "ac_ci"   ? RunOneProportionAgrestiCoullCI(r, flag, confidence, type)
               : method == "cp_ci"   ? RunOneProportionClopperPearson(r, confidence, type)
                                     : RunOneProportionMidP(r, confidence, type);
    }
    const AlternativeHypothesis alternative = Alternative(row.at(6));
    const double p0 = Number(row.at(7));
    return method == "wilson_test" ? RunOneProportionWilson(r, flag, alternative, p0)
           : method == "cp_test"   ? RunOneProportionClopperPearson(r, alternative, p0)
                                   : RunOneProportionMidP(r, alternative, p0);
}

TEST(HypothesisReference, OneProportion) {
    for (const Row& row : ReadTable("one_proportion", true)) {
        v0::OneProportion r;
        r.x = Count(row.at(1));
        r.n = Count(row.at(2));
        const bool flag = row.at(3) == "1";
        const std::string& method = row[0];
        if (method == "one")
            RunForms(row, 4, 8, [&](auto... a) { return v0::RunOneProportion(&r, flag, a...); });
        else if (method == "kel_one")
            RunForms(row, 4, 8, [&](auto... a) { return v0::RunKelOneProportion(&r, flag, a...); });
        else
            EXPECT_EQ(RunMethod(method, &r, flag, row), std::stoi(row.at(8))) << Text(row);
        ExpectCells(row, 9, {r.proportion, r.lowerBound, r.upperBound, r.zStatistic}, "aPPA",
                    1 / std::sqrt(r.n));
        // Two-sided, these are formed from 1 - P(X <= x).
        const bool rounded = method == "cp_test" || method == "midp_test" || method == "one";
        ExpectCells(row, 13, {r.pValue}, rounded && row[6] == "0" ? "P" : "p", 1e-8);
    }
}

TEST(HypothesisReference, TwoProportions) {
    using namespace v0;
    for (const Row& row : ReadTable("two_proportion", true)) {
        TwoProportion r;
        r.x1 = Count(row.at(1));
        r.n1 = Count(row.at(2));
        r.x2 = Count(row.at(3));
        r.n2 = Count(row.at(4));
        const bool flag = row.at(5) == "1";
        const double confidence = row.at(6) == "-" ? 0 : Number(row[6]);
        const auto type = row.at(7) == "-" ? IntervalType::TwoSided : Type(row[7]);
        const auto alternative = row.at(8) == "-" ? AlternativeHypothesis::NotEqual : Alternative(row[8]);
        const double d0 = row.at(9) == "-" ? 0 : Number(row[9]);
        const int status = row[0] == "wald2"   ? RunTwoProportionWaldCI(&r, flag, confidence, type)
                           : row[0] == "caffo" ? RunTwoProportionAgrestiCaffoCI(&r, flag, confidence, type)
                           : row[0] == "kel2"
                               ? RunKelTwoProportion(&r, flag, confidence, type, alternative, d0)
                               : RunKelTwoProportion(&r, flag, alternative, d0);
        EXPECT_EQ(status, std::stoi(row.at(10))) << Text(row);
        ExpectCells(row, 11, Doubles(r, 8), "aaAPPApp", 1 / std::sqrt(std::min(r.n1, r.n2)));
    }
}

TEST(HypothesisReference, OneVariance) {
    for (const Row& row : ReadTable("one_variance", false)) {
        v0::OneVariance r;
        r.n = Count(row.at(2));
        const bool summary = row.at(0) == "-";
        const std::vector<double> data = summary ? std::vector<double>{} : test::ReadSample(row[0]);
        if (summary) r.variance = Number(row[1]);
        RunForms(row, 3, 7, [&](auto... a) {
            return summary ? v0::RunOneVariance(&r, a...) : v0::RunOneVariance(&r, data.data(), a...);
        });
        ExpectCells(row, 8, Doubles(r, 9), "appppapap");
    }
}

TEST(HypothesisReference, RunsAndCorrelation) {
    for (const Row& row : ReadTable("runs", true)) {
        v1::RunsTest r;
        const std::vector<double> data = test::ReadSample(row.at(1));
        const auto run = row[0] == "exact" ? &v1::RunRunsTest : &v1::RunKelRunsTest;
        EXPECT_EQ(run(&r, data.data(), Number(row.at(2)), static_cast<unsigned>(data.size())), 0);
        const double runs = r.runs;
        const double below = r.below;
        const double above = r.above;
        ExpectCells(row, 3, {below, above, runs, r.expectedRuns, r.pValue}, "aaaap");
    }
    for (const Row& row : ReadTable("correlation_p", true))
        ExpectCells(row, 2, {v0::GetKelCorrelationPValue(Number(row.at(0)), Count(row.at(1)))}, "p");
}

TEST(HypothesisReference, AndersonDarling) {
    for (const Row& row : ReadTable("anderson_darling", true)) {
        std::vector<double> data = test::ReadSample(row.at(1));
        std::sort(data.begin(), data.end(), [](double a, double b) { return a < b || (a == a && b != b); });
        const auto n = static_cast<unsigned>(data.size());
        const double parameters[] = {Number(row.at(2)), row.at(3) == "-" ? 0 : Number(row[3])};
        double aSquared = 0;
        double pValue = 0;
        const auto run = row[0] == "normal"      ? &v1::RunKelNormalADTest
                         : row[0] == "lognormal" ? &v1::RunKelLogNormalADTest
                                                 : &v0::RunKelWeibullADTest;
        const int status = row[0] == "exponential" ? v0::RunKelExponentialADTest(data.data(), parameters[0],
                                                                                 &aSquared, &pValue, n)
                                                   : run(data.data(), parameters, &aSquared, &pValue, n);
        EXPECT_EQ(status, std::stoi(row.at(4))) << Text(row);
        ExpectCells(row, 5, {aSquared, pValue}, "pp");
    }
}

TEST(HypothesisReference, TabularChiSquare) {
    for (const Row& row : ReadTable("tabular_chi_square", false)) {
        const std::vector<double> observed = test::Numbers(row.at(0));
        const bool equal = row.at(1) == "-";
        const std::vector<double> proportions = equal ? std::vector<double>{} : test::Numbers(row[1]);
        const std::vector<double> cells[] = {test::Numbers(row.at(3)), test::Numbers(row.at(4))};
        std::vector<double> expected(observed.size());
        std::vector<double> contributions(observed.size());
        double chiSquare = 0;
        double pValue = 0;
        double df = 0;
        RunKelTabularChiSqGOFTest(observed.data(), equal ? nullptr : proportions.data(), expected.data(),
                                  contributions.data(), &chiSquare, &pValue, &df, Number(row.at(2)),
                                  static_cast<unsigned>(observed.size()));
        for (std::size_t i = 0; i < observed.size(); ++i) {
            EXPECT_TRUE(test::IsNear(expected[i], cells[0].at(i), 1e-11)) << Text(row);
            EXPECT_NEAR(contributions[i], cells[1].at(i), 1e-11 * (1 + cells[1][i])) << Text(row);
        }
        ExpectCells(row, 5, {chiSquare, df, pValue}, "aap");
    }
}

}  // namespace
}  // namespace zul
