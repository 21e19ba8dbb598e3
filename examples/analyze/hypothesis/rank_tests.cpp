#include "hypothesis/rank_tests.h"

#include <zul/rank_tests.h>

#include <cmath>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "command/options.h"
#include "input/counts.h"
#include "input/rows.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

struct RankOptions : TestOptions {
    bool normal = false;
};

// What the one-sample tests are about: a column, or its differences from another one.
struct Values {
    std::string name;
    std::vector<double> numbers;
    Origin origin;
};

Values ReadValues(const TestOptions& options) {
    const Table table(options.input);
    std::vector<std::string> columns = {options.columns.column};
    if (options.columns.with) columns.push_back(*options.columns.with);
    const Rows rows(table, columns);
    Values values{Quoted(rows.Names()[0]), rows.Numbers(0), OriginOf(table, rows.Missing())};
    if (!options.columns.with) return values;
    values.name += " - " + Quoted(rows.Names()[1]);
    const std::vector<double> others = rows.Numbers(1);
    for (std::size_t i = 0; i < others.size(); ++i)
        values.numbers[i] -= others[i];
    return values;
}

std::string_view LawOf(unsigned exact) {
    return exact == 1 ? ", exact" : ", normal approximation";
}

constexpr std::string_view kTooFew = "too few values for this confidence";

void PrintAchieved(std::ostream& out, double confidence) {
    if (!std::isnan(confidence))
        PrintRow(out, "  achieved confidence", Significant(100 * confidence, kTestDigits) + " %");
}

void PrintEnds(std::ostream& out, std::string_view which, const TestOptions& options, double confidence,
               double lower, double upper) {
    if (std::isnan(confidence)) {
        PrintEstimate(out, which, confidence, "there is no such interval");
        return;
    }
    PrintRow(out, which, Significant(100 * confidence, kTestDigits) + " %");
    const zul::IntervalType type = IntervalOf(options.alternative);
    if (type != zul::IntervalType::UpperBound) PrintEstimate(out, "  from", lower);
    if (type != zul::IntervalType::LowerBound) PrintEstimate(out, "  to", upper);
}

void PrintSign(std::ostream& out, const TestOptions& options) {
    const Values values = ReadValues(options);
    zul::v0::SignTest test;
    test.n = CountOf(values.numbers);
    Expect(RunSignTest(&test, values.numbers.data(), options.confidence, IntervalOf(options.alternative),
                       options.alternative, options.hypothesised),
           "the sign test");
    out << "Sign test of " << OneLine(values.name) << ", exact\n";
    PrintRow(out, "n", std::to_string(test.n));
    PrintOrigin(out, values.origin);
    PrintEstimate(out, "median", test.median);
    PrintInterval(out, "median, interpolated", options, test.lowerBound, test.upperBound, kTooFew);
    PrintEnds(out, "next inner confidence", options, test.innerConfidence, test.innerLower, test.innerUpper);
    PrintEnds(out, "next outer confidence", options, test.outerConfidence, test.outerLower, test.outerUpper);
    PrintHypotheses(out, "median", options);
    PrintRow(
        out, "below, equal, above",
        std::to_string(test.below) + ", " + std::to_string(test.equal) + ", " + std::to_string(test.above));
    PrintP(out, "p", test.pValue);
}

void PrintWilcoxon(std::ostream& out, const RankOptions& options) {
    const Values values = ReadValues(options);
    zul::v0::Wilcoxon test;
    test.n = CountOf(values.numbers);
    Expect(RunWilcoxon(&test, values.numbers.data(), options.normal, options.confidence,
                       IntervalOf(options.alternative), options.alternative, options.hypothesised),
           "the signed rank test");
    out << "Wilcoxon signed rank test of " << OneLine(values.name) << LawOf(test.exact) << '\n';
    PrintRow(out, "n", std::to_string(test.n));
    PrintOrigin(out, values.origin);
    PrintEstimate(out, "median of pair averages", test.estimate);
    PrintInterval(out, "centre", options, test.lowerBound, test.upperBound, kTooFew);
    PrintAchieved(out, test.achievedConfidence);
    PrintHypotheses(out, "centre", options);
    PrintRow(out, "values used", std::to_string(test.used));
    PrintRow(out, "W", AsGiven(test.statistic));
    PrintP(out, "p", test.pValue);
}

void PrintSample(std::ostream& out, const Sample& sample, unsigned n, double median) {
    constexpr std::size_t kLabelLength = 16;
    PrintRow(out, OneLine(ShortenedToEnd(sample.label, kLabelLength)) + ", n", std::to_string(n));
    PrintEstimate(out, "  median", median);
}

zul::v0::MannWhitney RunRankSum(const Table& table, const Samples& samples, const RankOptions& options) {
    constexpr int kEqualValues = 30023;
    const auto numbers = [&](const Sample& sample) { return table.Numbers(sample.cells, sample.column); };
    const std::vector<double> values1 = numbers(samples.samples[0]);
    const std::vector<double> values2 = numbers(samples.samples[1]);
    zul::v0::MannWhitney test;
    test.n1 = CountOf(values1);
    test.n2 = CountOf(values2);
    const int status =
        RunMannWhitney(&test, values1.data(), values2.data(), options.normal, options.confidence,
                       IntervalOf(options.alternative), options.alternative);
    if (status == kEqualValues)
        throw InputError(samples.description +
                         ": the rank-sum test needs two samples and values that differ");
    Expect(status, "the rank-sum test");
    return test;
}

void PrintMannWhitney(std::ostream& out, const RankOptions& options) {
    const Table table(options.input);
    const Samples samples = ReadTwoSamples(table, options.columns);
    const zul::v0::MannWhitney test = RunRankSum(table, samples, options);
    out << "Mann-Whitney test of " << OneLine(samples.description) << LawOf(test.exact) << '\n';
    PrintSample(out, samples.samples[0], test.n1, test.median1);
    PrintSample(out, samples.samples[1], test.n2, test.median2);
    PrintOrigin(out, samples.origin);
    PrintEstimate(out, "median of differences", test.estimate);
    PrintInterval(out, "shift", options, test.lowerBound, test.upperBound, kTooFew);
    PrintAchieved(out, test.achievedConfidence);
    PrintHypotheses(out, "shift", options);
    PrintRow(out, "rank sum", AsGiven(test.rankSum));
    PrintRow(out, "u", AsGiven(test.u));
    PrintP(out, "p", test.pValue);
    if (test.exact == 0) PrintP(out, "p, sd of the ties", test.pValueTies);
}

void AddMedian(const Command& command, TestOptions& options) {
    AddHeading(command, "--with", options.columns.with, "Heading of a column to take from the first");
    AddNumber(command, "--median", options.hypothesised, Number("a number", IsAny),
              "Hypothesised value (default: 0)");
    AddInference(command, options);
}

void AddNormal(const Command& command, RankOptions& options) {
    command.AddFlag("--normal", options.normal, "Take the normal law for few values too");
}

}  // namespace

void AddRankTests(const Command& app) {
    const auto signs = std::make_shared<TestOptions>();
    const Command sign = app.AddCommand("sign", "Sign test and interval of the median of one column");
    AddInput(sign, signs->input);
    AddColumn(sign, signs->columns.column);
    AddMedian(sign, *signs);
    sign.OnCall([signs] { PrintSign(std::cout, *signs); });

    const auto ranks = std::make_shared<RankOptions>();
    const Command wilcoxon =
        app.AddCommand("wilcoxon", "Signed rank test and interval of the centre of one column");
    AddInput(wilcoxon, ranks->input);
    AddColumn(wilcoxon, ranks->columns.column);
    AddMedian(wilcoxon, *ranks);
    AddNormal(wilcoxon, *ranks);
    wilcoxon.OnCall([ranks] { PrintWilcoxon(std::cout, *ranks); });

    const auto two = std::make_shared<RankOptions>();
    const Command mannWhitney = app.AddCommand("mann-whitney", "Rank-sum test and interval of a shift");
    AddInput(mannWhitney, two->input);
    AddColumn(mannWhitney, two->columns.column);
    AddSecondSample(mannWhitney, two->columns);
    AddInference(mannWhitney, *two);
    AddNormal(mannWhitney, *two);
    mannWhitney.OnCall([two] { PrintMannWhitney(std::cout, *two); });
}

}  // namespace analyze
