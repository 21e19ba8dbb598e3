#include "describe/report.h"

#include <zul/hypothesis.h>

#include <array>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "command/options.h"
#include "describe/correlations.h"
#include "describe/summary.h"
#include "input/counts.h"
#include "input/rows.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

using zul::AlternativeHypothesis;

// Quantiles of the normal distribution are good to about eight digits; a bound has more where the interval is short
// beside the mean.
constexpr int kBoundDigits = 10;
// Wide enough for "against  mean not equal to" and any number, and three columns of less than 80 characters.
constexpr int kAlternativeWidth = 51;
constexpr int kTestWidth = 14;

constexpr std::array kAlternatives = {AlternativeHypothesis::LessThan, AlternativeHypothesis::NotEqual,
                                      AlternativeHypothesis::GreaterThan};

struct ReportOptions {
    InputOptions input;
    std::string column;
    std::optional<std::string> with;  // second column, of which the correlations are wanted
    std::optional<double> sigma;      // known standard deviation of one value; absent: t instead of z
    double mu = 0;                    // hypothesised mean
    double confidence = 0.95;         // of the intervals, in (0, 1)
};

// One test per alternative, in the order of kAlternatives; the interval is the same in each.
struct MeanTests {
    double standardError;
    double lowerBound;
    double upperBound;
    std::array<double, kAlternatives.size()> statistics;
    std::array<double, kAlternatives.size()> pValues;
};

MeanTests RunZ(const Moments& moments, double sigma, const ReportOptions& options) {
    MeanTests tests{};
    for (std::size_t i = 0; i < kAlternatives.size(); ++i) {
        zul::v0::OneSampleZ z;
        z.n = moments.n;
        z.mean = moments.mean;
        Expect(RunOneSampleZ(&z, sigma, options.confidence, zul::IntervalType::TwoSided, kAlternatives[i],
                             options.mu),
               "the z test");
        tests.standardError = z.standardError;
        tests.lowerBound = z.lowerBound;
        tests.upperBound = z.upperBound;
        tests.statistics[i] = z.zStatistic;
        tests.pValues[i] = z.pValue;
    }
    return tests;
}

MeanTests RunT(const Moments& moments, const ReportOptions& options) {
    MeanTests tests{};
    for (std::size_t i = 0; i < kAlternatives.size(); ++i) {
        zul::v0::OneSampleT t;
        t.n = moments.n;
        t.mean = moments.mean;
        t.standardDeviation = moments.sd;
        Expect(
            RunOneSampleT(&t, options.confidence, zul::IntervalType::TwoSided, kAlternatives[i], options.mu),
            "the t test");
        tests.standardError = t.standardError;
        tests.lowerBound = t.lowerBound;
        tests.upperBound = t.upperBound;
        tests.statistics[i] = t.tStatistic;
        tests.pValues[i] = t.pValue;
    }
    return tests;
}

void PrintTestRow(std::ostream& out, const std::string& label, const std::string& statistic,
                  const std::string& p) {
    out << std::left << std::setw(kAlternativeWidth) << label << std::right << std::setw(kTestWidth)
        << statistic << std::setw(kTestWidth) << p << '\n';
}

void PrintMeanTests(std::ostream& out, const std::string& statistic, const MeanTests& tests,
                    const ReportOptions& options) {
    PrintRow(out, "standard error", Significant(tests.standardError, kSampleDigits));
    out << "  " << AsGiven(100 * options.confidence) << " % confidence interval for the mean\n";
    PrintRow(out, "  from", Significant(tests.lowerBound, kBoundDigits));
    PrintRow(out, "  to", Significant(tests.upperBound, kBoundDigits));
    PrintTestRow(out, "  H0: mean = " + AsGiven(options.mu), statistic, "p");
    for (std::size_t i = 0; i < kAlternatives.size(); ++i) {
        std::string label = "  against  mean ";
        label.append(RelationOf(kAlternatives[i])).append(" ").append(AsGiven(options.mu));
        PrintTestRow(out, label, Significant(tests.statistics[i], kTestDigits), PValue(tests.pValues[i]));
    }
}

void PrintInference(std::ostream& out, const Moments& moments, const ReportOptions& options) {
    if (options.sigma) {
        out << "z interval and test of the mean, sigma given\n";
        PrintRow(out, "sigma", Significant(*options.sigma, kSampleDigits));
        PrintMeanTests(out, "z", RunZ(moments, *options.sigma, options), options);
        return;
    }
    out << "t interval and test of the mean, sd of the sample\n";
    if (!(moments.sd > 0)) {
        out << "  not defined: two values or more that differ are needed; a known sd is given with --sigma\n";
        return;
    }
    PrintDf(out, moments.n - 1.0);
    PrintMeanTests(out, "t", RunT(moments, options), options);
}

void PrintReport(std::ostream& out, const ReportOptions& options) {
    const Table table(options.input);
    const Rows rows(table, {options.column});
    const std::vector<double> values = rows.Numbers(0);
    const Summary summary = Summarise(values, options.confidence);
    std::optional<Correlation> correlation;
    if (options.with) correlation = Correlate(table, options.column, *options.with);

    out << "Summary of " << OneLine(Quoted(rows.Names()[0])) << ", quartiles of type 6\n";
    PrintRow(out, "n", std::to_string(summary.moments.n));
    PrintOrigin(out, OriginOf(table, rows.Missing()));
    PrintSummary(out, summary, options.confidence);
    out << '\n';
    PrintBoxplot(out, values, summary);
    out << '\n';
    if (correlation) {
        PrintCorrelation(out, *correlation);
        out << '\n';
    }
    PrintInference(out, summary.moments, options);
}

}  // namespace

void AddReport(const Command& app) {
    const auto options = std::make_shared<ReportOptions>();
    const Command report =
        app.AddCommand("report", "Summary, boxplot, interval and tests of the mean of one column");
    AddInput(report, options->input);
    AddColumn(report, options->column);
    AddHeading(report, "--with", options->with, "Heading of a column to correlate with");
    AddNumber(report, "--sigma", options->sigma, Number("a positive number", IsPositive),
              "Known sd of one value: z instead of t");
    AddNumber(report, "--mu", options->mu, Number("a number", IsAny), "Hypothesised mean (default: 0)");
    AddConfidence(report, options->confidence);
    report.OnCall([options] { PrintReport(std::cout, *options); });
}

}  // namespace analyze
