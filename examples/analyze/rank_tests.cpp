#include "rank_tests.h"

#include <zul/rank_tests.h>

#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "csv_table.h"
#include "options.h"
#include "samples.h"
#include "summary.h"
#include "test_text.h"
#include "text.h"

namespace analyze {
namespace {

struct RankOptions : TestOptions {
    bool normal = false;
};

// The column, or its differences from the other one. Rows with a blank cell are passed over.
std::vector<double> ReadValues(const TestOptions& options) {
    const CsvTable table(options.file);
    CsvRow first = table.ReadCells(options.column);
    CsvRow second = options.with ? table.ReadCells(*options.with) : first;
    for (std::size_t i = first.size(); i-- > 0;) {
        if (!first[i].text.empty() && !second[i].text.empty()) continue;
        first.erase(first.begin() + static_cast<std::ptrdiff_t>(i));
        second.erase(second.begin() + static_cast<std::ptrdiff_t>(i));
    }
    std::vector<double> values = table.ReadNumbers(first, options.column);
    if (values.empty()) throw InputError(options.file + ": column " + Quoted(options.column) + " is empty");
    if (!options.with) return values;
    const std::vector<double> others = table.ReadNumbers(second, *options.with);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] -= others[i];
    return values;
}

std::string NameOf(const TestOptions& options) {
    return OneLine(Quoted(options.column) + (options.with ? " - " + Quoted(*options.with) : ""));
}

std::string_view LawOf(unsigned exact) {
    return exact == 1 ? ", exact" : ", normal approximation";
}

void PrintAchieved(std::ostream& out, double confidence) {
    PrintRow(out, "  achieved confidence", Significant(100 * confidence, kTestDigits) + " %");
}

void PrintEnds(std::ostream& out, std::string_view which, const TestOptions& options, double confidence,
               double lower, double upper) {
    if (!(confidence >= 0)) return;
    PrintRow(out, which, Significant(100 * confidence, kTestDigits) + " %");
    const zul::IntervalType type = IntervalOf(options.alternative);
    if (type != zul::IntervalType::UpperBound) PrintEstimate(out, "  from", lower);
    if (type != zul::IntervalType::LowerBound) PrintEstimate(out, "  to", upper);
}

void PrintSign(std::ostream& out, const TestOptions& options) {
    const std::vector<double> values = ReadValues(options);
    zul::v0::SignTest test;
    test.n = CountOf(values);
    Expect(RunSignTest(&test, values.data(), options.confidence, IntervalOf(options.alternative),
                       options.alternative, options.hypothesised),
           "the sign test");
    out << "Sign test of " << NameOf(options) << ", exact\n";
    PrintRow(out, "n", std::to_string(test.n));
    PrintEstimate(out, "median", test.median);
    PrintInterval(out, "median, interpolated", options, test.lowerBound, test.upperBound);
    PrintEnds(out, "next inner confidence", options, test.innerConfidence, test.innerLower, test.innerUpper);
    PrintEnds(out, "next outer confidence", options, test.outerConfidence, test.outerLower, test.outerUpper);
    PrintHypotheses(out, "median", options);
    PrintRow(
        out, "below, equal, above",
        std::to_string(test.below) + ", " + std::to_string(test.equal) + ", " + std::to_string(test.above));
    PrintTest(out, "p", test.pValue);
}

void PrintWilcoxon(std::ostream& out, const RankOptions& options) {
    const std::vector<double> values = ReadValues(options);
    zul::v0::Wilcoxon test;
    test.n = CountOf(values);
    Expect(RunWilcoxon(&test, values.data(), options.normal, options.confidence,
                       IntervalOf(options.alternative), options.alternative, options.hypothesised),
           "the signed rank test");
    out << "Wilcoxon signed rank test of " << NameOf(options) << LawOf(test.exact) << '\n';
    PrintRow(out, "n", std::to_string(test.n));
    PrintEstimate(out, "median of pair averages", test.estimate);
    PrintInterval(out, "centre", options, test.lowerBound, test.upperBound);
    PrintAchieved(out, test.achievedConfidence);
    PrintHypotheses(out, "centre", options);
    PrintRow(out, "values used", std::to_string(test.used));
    PrintRow(out, "W", AsGiven(test.statistic));
    PrintTest(out, "p", test.pValue);
}

// The values of a sample but for blank cells.
std::vector<double> ReadFilled(const CsvTable& table, Sample sample) {
    std::erase_if(sample.cells, [](const CsvCell& cell) { return cell.text.empty(); });
    return table.ReadNumbers(sample.cells, sample.column);
}

void PrintMannWhitney(std::ostream& out, const RankOptions& options) {
    constexpr int kEqualValues = 30023;
    const CsvTable table(options.file);
    const auto [first, second] = ReadTwoSamples(table, options);
    const std::vector<double> values1 = ReadFilled(table, first);
    const std::vector<double> values2 = ReadFilled(table, second);
    zul::v0::MannWhitney test;
    test.n1 = CountOf(values1);
    test.n2 = CountOf(values2);
    const int status =
        RunMannWhitney(&test, values1.data(), values2.data(), options.normal, options.confidence,
                       IntervalOf(options.alternative), options.alternative);
    if (status == kEqualValues)
        throw InputError(options.file + ": column " + Quoted(options.column) +
                         ": the rank-sum test needs two samples and values that differ");
    Expect(status, "the rank-sum test");
    out << "Mann-Whitney test" << LawOf(test.exact) << '\n';
    const auto print = [&out](const Sample& sample, unsigned n, double median) {
        PrintRow(out, OneLine(ShortenedToEnd(sample.label, 16)) + ", n", std::to_string(n));
        PrintEstimate(out, "  median", median);
    };
    print(first, test.n1, test.median1);
    print(second, test.n2, test.median2);
    PrintEstimate(out, "median of differences", test.estimate);
    PrintInterval(out, "shift", options, test.lowerBound, test.upperBound);
    PrintAchieved(out, test.achievedConfidence);
    PrintHypotheses(out, "shift", options);
    PrintRow(out, "rank sum", AsGiven(test.rankSum));
    PrintRow(out, "u", AsGiven(test.u));
    PrintTest(out, "p", test.pValue);
    if (test.exact == 0) PrintTest(out, "p, sd of the ties", test.pValueTies);
}

void AddMedian(CLI::App& command, TestOptions& options) {
    AddWith(command, options).description("Heading of a column to take from the first");
    AddNumber(command, "--median", options.hypothesised, Number("a number", IsAny),
              "Hypothesised value (default: 0)");
    AddInference(command, options);
}

void AddNormal(CLI::App& command, RankOptions& options) {
    command.add_flag("--normal", options.normal, "Take the normal law for few values too");
}

}  // namespace

void AddRankTests(CLI::App& app) {
    const auto signs = std::make_shared<TestOptions>();
    CLI::App& sign = *app.add_subcommand("sign", "Sign test and interval of the median of one column");
    AddColumn(sign, signs->file, signs->column);
    AddMedian(sign, *signs);
    sign.callback([signs] { PrintSign(std::cout, *signs); });

    const auto ranks = std::make_shared<RankOptions>();
    CLI::App& wilcoxon =
        *app.add_subcommand("wilcoxon", "Signed rank test and interval of the centre of one column");
    AddColumn(wilcoxon, ranks->file, ranks->column);
    AddMedian(wilcoxon, *ranks);
    AddNormal(wilcoxon, *ranks);
    wilcoxon.callback([ranks] { PrintWilcoxon(std::cout, *ranks); });

    const auto two = std::make_shared<RankOptions>();
    CLI::App& mannWhitney = *app.add_subcommand("mann-whitney", "Rank-sum test and interval of a shift");
    AddColumn(mannWhitney, two->file, two->column);
    AddSecondSample(mannWhitney, *two);
    AddInference(mannWhitney, *two);
    AddNormal(mannWhitney, *two);
    mannWhitney.callback([two] { PrintMannWhitney(std::cout, *two); });
}

}  // namespace analyze
