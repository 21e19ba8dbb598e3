#include "mean_tests.h"

#include <zul/hypothesis.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "csv_table.h"
#include "options.h"
#include "samples.h"
#include "summary.h"
#include "test_text.h"
#include "text.h"

namespace analyze {
namespace {

constexpr std::size_t kSampleWidth = 18;
constexpr int kCountWidth = 8;
constexpr int kMomentWidth = 17;

struct TwoSampleOptions : TestOptions {
    bool pooled = false;
};

// The library goes on with a standard error of 0, but no t test is meant then.
void CheckSpread(double standardError, const std::string& what) {
    if (standardError == 0) throw InputError(what + ": a t test needs two values or more that differ");
}

std::string Place(const TestOptions& options) {
    return options.file + ": column " + Quoted(options.column);
}

void PrintT(std::ostream& out, double t, const std::string& dfLabel, double df, double pValue) {
    PrintTest(out, "t", t);
    PrintRow(out, dfLabel, AsGiven(df));
    PrintTest(out, "p", pValue);
}

void PrintOneSample(std::ostream& out, const TestOptions& options) {
    const std::vector<double> values = CsvTable(options.file).ReadColumn(options.column);
    zul::v0::OneSampleT test;
    test.n = CountOf(values);
    Expect(RunOneSampleT(&test, values.data(), options.confidence, IntervalOf(options.alternative),
                         options.alternative, options.hypothesised),
           "the t test");
    CheckSpread(test.standardError, Place(options));

    out << "One-sample t test of " << OneLine(Quoted(options.column)) << '\n';
    PrintRow(out, "n", std::to_string(test.n));
    PrintEstimate(out, "mean", test.mean);
    PrintEstimate(out, "sd", test.standardDeviation);
    PrintEstimate(out, "standard error", test.standardError);
    PrintInterval(out, "mean", options, test.lowerBound, test.upperBound);
    PrintHypotheses(out, "mean", options);
    PrintT(out, test.tStatistic, "df", test.n - 1.0, test.pValue);
}

void PrintPaired(std::ostream& out, const TestOptions& options) {
    const CsvTable table(options.file);
    const std::vector<double> first = table.ReadColumn(options.column);
    const std::vector<double> second = table.ReadColumn(*options.with);
    zul::v0::PairedT test;
    test.n = CountOf(first);
    Expect(RunPairedT(&test, first.data(), second.data(), options.confidence, IntervalOf(options.alternative),
                      options.alternative, options.hypothesised),
           "the paired t test");
    CheckSpread(test.standardErrorDifference, Place(options) + ", differences");

    out << "Paired t test of " << OneLine(Quoted(options.column)) << " - " << OneLine(Quoted(*options.with))
        << '\n';
    PrintRow(out, "pairs", std::to_string(test.n));
    PrintEstimate(out, "mean difference", test.meanDifference);
    PrintEstimate(out, "sd of differences", test.standardDeviationDifference);
    PrintEstimate(out, "standard error", test.standardErrorDifference);
    PrintInterval(out, "mean difference", options, test.lowerBound, test.upperBound);
    PrintHypotheses(out, "mean difference", options);
    PrintT(out, test.tStatistic, "df", test.n - 1.0, test.pValue);
}

void PrintSampleRow(std::ostream& out, const std::string& label, const std::array<std::string, 4>& cells) {
    out << "  " << std::left << std::setw(kSampleWidth) << label << std::right << std::setw(kCountWidth)
        << cells[0];
    for (std::size_t i = 1; i < cells.size(); ++i)
        out << std::setw(kMomentWidth) << cells[i];
    out << '\n';
}

void PrintSample(std::ostream& out, const std::string& label, unsigned n, double mean, double sd,
                 double standardError) {
    PrintSampleRow(out, OneLine(ShortenedToEnd(label, kSampleWidth)),
                   {std::to_string(n), Significant(mean, kEstimateDigits), Significant(sd, kEstimateDigits),
                    Significant(standardError, kEstimateDigits)});
}

void PrintTwoSample(std::ostream& out, const TwoSampleOptions& options) {
    const CsvTable table(options.file);
    const auto [first, second] = ReadTwoSamples(table, options);
    const std::vector<double> values1 = table.ReadNumbers(first.cells, first.column);
    const std::vector<double> values2 = table.ReadNumbers(second.cells, second.column);
    zul::v0::TwoSampleT test;
    test.n1 = CountOf(values1);
    test.n2 = CountOf(values2);
    Expect(RunTwoSampleT(&test, values1.data(), values2.data(), options.pooled, options.confidence,
                         IntervalOf(options.alternative), options.alternative, options.hypothesised),
           "the two-sample t test");
    if (test.n1 < 2 || test.n2 < 2)
        throw InputError(Place(options) + ": each sample needs two values or more");
    CheckSpread(std::hypot(test.standardError1, test.standardError2), Place(options));

    out << "Two-sample t test, " << (options.pooled ? "equal variances" : "variances may differ (Welch)")
        << '\n';
    PrintSampleRow(out, "sample", {"n", "mean", "sd", "standard error"});
    PrintSample(out, first.label, test.n1, test.mean1, test.standardDeviation1, test.standardError1);
    PrintSample(out, second.label, test.n2, test.mean2, test.standardDeviation2, test.standardError2);
    PrintEstimate(out, "difference", test.difference);
    if (options.pooled) PrintEstimate(out, "pooled sd", test.pooledStandardDeviation);
    PrintInterval(out, "difference of the means", options, test.lowerBound, test.upperBound);
    PrintHypotheses(out, "difference", options);
    PrintT(out, test.tStatistic, options.pooled ? "df" : "df, rounded down", test.degreesOfFreedom,
           test.pValue);
}

void AddDifference(CLI::App& command, TestOptions& options) {
    AddNumber(command, "--difference", options.hypothesised, Number("a number", IsAny),
              "Hypothesised difference (default: 0)");
}

}  // namespace

void AddMeanTests(CLI::App& app) {
    const auto one = std::make_shared<TestOptions>();
    CLI::App& t = *app.add_subcommand("t", "t interval and test of the mean of one column");
    AddColumn(t, one->file, one->column);
    AddNumber(t, "--mu", one->hypothesised, Number("a number", IsAny), "Hypothesised mean (default: 0)");
    AddInference(t, *one);
    t.callback([one] { PrintOneSample(std::cout, *one); });

    const auto pairs = std::make_shared<TestOptions>();
    CLI::App& paired =
        *app.add_subcommand("paired", "t interval and test of the mean difference of two columns");
    AddColumn(paired, pairs->file, pairs->column);
    AddWith(paired, *pairs).required();
    AddDifference(paired, *pairs);
    AddInference(paired, *pairs);
    paired.callback([pairs] { PrintPaired(std::cout, *pairs); });

    const auto two = std::make_shared<TwoSampleOptions>();
    CLI::App& twoSample =
        *app.add_subcommand("two-sample", "t interval and test of the difference of two means");
    AddColumn(twoSample, two->file, two->column);
    AddSecondSample(twoSample, *two);
    AddDifference(twoSample, *two);
    twoSample.add_flag("--pooled", two->pooled, "Take the variances as equal");
    AddInference(twoSample, *two);
    twoSample.callback([two] { PrintTwoSample(std::cout, *two); });
}

}  // namespace analyze
