#include "hypothesis/mean_tests.h"

#include <zul/hypothesis.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "command/options.h"
#include "describe/moments.h"
#include "input/counts.h"
#include "input/rows.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

constexpr std::size_t kSampleWidth = 18;
constexpr int kCountWidth = 8;
constexpr int kMomentWidth = 17;

// Instead of a file the moments themselves.
struct OneSampleOptions : TestOptions {
    double mean = 0;
    double sd = 0;
    double n = 0;
    bool isSummary = false;
};

struct TwoSampleOptions : TestOptions {
    std::vector<double> means;
    std::vector<double> sds;
    std::vector<double> ns;
    bool isSummary = false;
    bool pooled = false;
};

// A sample as a report names it, the values of a column or the differences of two.
struct OneSample {
    std::string name;
    Moments moments{};
    Origin origin;
};

// What its test gives, by either of two functions.
struct TestOfMean {
    double standardError;
    double lowerBound;
    double upperBound;
    double t;
    double pValue;
};

// How the test runs, and the words of a report on it.
struct OneSampleTest {
    TestOfMean (*run)(const Moments& moments, const OneSampleOptions& options);
    std::string name;
    std::string count;
    std::string mean;
    std::string sd;
};

// The library goes on with a standard error of 0, but no t test is meant then.
void CheckSpread(double standardError, const std::string& name) {
    if (!(standardError > 0)) throw InputError(name + ": a t test needs two values or more that differ");
}

Moments Given(double n, double mean, double sd) {
    if (n < 2) throw InputError("a t test needs two values or more, not " + AsGiven(n));
    return {static_cast<unsigned>(n), mean, sd};
}

void PrintT(std::ostream& out, double t, const std::string& dfLabel, double df, double pValue) {
    PrintTest(out, "t", t);
    PrintRow(out, dfLabel, AsGiven(df));
    PrintP(out, "p", pValue);
}

OneSample ReadOneSample(const OneSampleOptions& options) {
    if (options.isSummary) return {"a given mean", Given(options.n, options.mean, options.sd), {}};
    const Table table(options.input);
    const Rows rows(table, {options.columns.column});
    return {Quoted(rows.Names()[0]), MomentsOf(rows.Numbers(0)), OriginOf(table, rows.Missing())};
}

OneSample ReadDifferences(const OneSampleOptions& options) {
    if (options.isSummary) return {"given differences", Given(options.n, options.mean, options.sd), {}};
    const Table table(options.input);
    const Rows rows(table, {options.columns.column, options.columns.with.value_or("")});
    std::vector<double> differences = rows.Numbers(0);
    const std::vector<double> second = rows.Numbers(1);
    for (std::size_t i = 0; i < differences.size(); ++i)
        differences[i] -= second[i];
    return {Quoted(rows.Names()[0]) + " - " + Quoted(rows.Names()[1]), MomentsOf(differences),
            OriginOf(table, rows.Missing())};
}

TestOfMean RunOneSample(const Moments& moments, const OneSampleOptions& options) {
    zul::v0::OneSampleT test;
    test.n = moments.n;
    test.mean = moments.mean;
    test.standardDeviation = moments.sd;
    Expect(RunOneSampleT(&test, options.confidence, IntervalOf(options.alternative), options.alternative,
                         options.hypothesised),
           "the t test");
    return {test.standardError, test.lowerBound, test.upperBound, test.tStatistic, test.pValue};
}

TestOfMean RunPaired(const Moments& differences, const OneSampleOptions& options) {
    zul::v0::PairedT test;
    test.n = differences.n;
    test.meanDifference = differences.mean;
    test.standardDeviationDifference = differences.sd;
    Expect(RunPairedT(&test, options.confidence, IntervalOf(options.alternative), options.alternative,
                      options.hypothesised),
           "the paired t test");
    return {test.standardErrorDifference, test.lowerBound, test.upperBound, test.tStatistic, test.pValue};
}

void PrintOneSample(std::ostream& out, const OneSampleOptions& options, const OneSample& sample,
                    const OneSampleTest& as) {
    CheckSpread(sample.moments.sd, sample.name);
    const TestOfMean test = as.run(sample.moments, options);
    out << as.name << " t test of " << OneLine(sample.name) << '\n';
    PrintRow(out, as.count, std::to_string(sample.moments.n));
    PrintOrigin(out, sample.origin);
    PrintEstimate(out, as.mean, sample.moments.mean);
    PrintEstimate(out, as.sd, sample.moments.sd);
    PrintEstimate(out, "standard error", test.standardError);
    PrintInterval(out, as.mean, options, test.lowerBound, test.upperBound);
    PrintHypotheses(out, as.mean, options);
    PrintT(out, test.t, "df", sample.moments.n - 1.0, test.pValue);
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

// Two samples by their labels.
struct TwoSamples {
    std::string description;
    std::array<std::string, 2> labels;
    std::array<Moments, 2> moments;
    Origin origin;
};

TwoSamples ReadTwoMoments(const TwoSampleOptions& options) {
    if (options.isSummary)
        return {"given means",
                {"first", "second"},
                {Given(options.ns[0], options.means[0], options.sds[0]),
                 Given(options.ns[1], options.means[1], options.sds[1])},
                {}};
    const Table table(options.input);
    const Samples read = ReadTwoSamples(table, options.columns);
    const Sample& first = read.samples[0];
    const Sample& second = read.samples[1];
    TwoSamples samples{read.description,
                       {first.label, second.label},
                       {MomentsOf(table.Numbers(first.cells, first.column)),
                        MomentsOf(table.Numbers(second.cells, second.column))},
                       read.origin};
    if (samples.moments[0].n < 2 || samples.moments[1].n < 2)
        throw InputError(table.Place(options.columns.column) + ": each sample needs two values or more");
    return samples;
}

zul::v0::TwoSampleT RunTwoSample(const TwoSamples& samples, const TwoSampleOptions& options) {
    const auto& [first, second] = samples.moments;
    CheckSpread(std::hypot(first.sd, second.sd), samples.description);
    zul::v0::TwoSampleT test;
    test.n1 = first.n;
    test.n2 = second.n;
    test.mean1 = first.mean;
    test.mean2 = second.mean;
    test.standardDeviation1 = first.sd;
    test.standardDeviation2 = second.sd;
    Expect(RunTwoSampleT(&test, options.pooled, options.confidence, IntervalOf(options.alternative),
                         options.alternative, options.hypothesised),
           "the two-sample t test");
    return test;
}

void PrintTwoSample(std::ostream& out, const TwoSampleOptions& options) {
    const TwoSamples samples = ReadTwoMoments(options);
    const zul::v0::TwoSampleT test = RunTwoSample(samples, options);
    out << "Two-sample t test of " << OneLine(samples.description) << ", "
        << (options.pooled ? "equal variances, pooled" : "variances may differ (Welch)") << '\n';
    PrintSampleRow(out, "sample", {"n", "mean", "sd", "standard error"});
    PrintSample(out, samples.labels[0], test.n1, test.mean1, test.standardDeviation1, test.standardError1);
    PrintSample(out, samples.labels[1], test.n2, test.mean2, test.standardDeviation2, test.standardError2);
    PrintOrigin(out, samples.origin);
    PrintEstimate(out, "difference", test.difference);
    if (options.pooled) PrintEstimate(out, "pooled sd", test.pooledStandardDeviation);
    PrintInterval(out, "difference of the means", options, test.lowerBound, test.upperBound);
    PrintHypotheses(out, "difference", options);
    PrintT(out, test.tStatistic, options.pooled ? "df" : "df, rounded down", test.degreesOfFreedom,
           test.pValue);
}

void AddMoments(const Command& command, OneSampleOptions& options, const std::string& what) {
    AddNumber(command, "--mean", options.mean, Number("a number", IsAny), "Mean " + what + ", without FILE");
    AddNumber(command, "--sd", options.sd, Number("a positive number", IsPositive), "Its standard deviation");
    AddNumber(command, "--n", options.n, Number("a whole number", IsCount), "How many there are");
}

void AddDifference(const Command& command, TestOptions& options) {
    AddNumber(command, "--difference", options.hypothesised, Number("a number", IsAny),
              "Hypothesised difference (default: 0)");
}

void AddOneSample(const Command& app) {
    const auto options = std::make_shared<OneSampleOptions>();
    const Command t = app.AddCommand("t", "t interval and test of the mean of one column");
    AddInput(t, options->input, false);
    AddColumn(t, options->columns.column);
    AddMoments(t, *options, "of the values");
    AddNumber(t, "--mu", options->hypothesised, Number("a number", IsAny), "Hypothesised mean (default: 0)");
    AddInference(t, *options);
    t.OnCall([options, t] {
        options->isSummary = HasSummary(t, {"--mean", "--sd", "--n"});
        PrintOneSample(std::cout, *options, ReadOneSample(*options),
                       {&RunOneSample, "One-sample", "n", "mean", "sd"});
    });
}

void AddPaired(const Command& app) {
    const auto options = std::make_shared<OneSampleOptions>();
    const Command paired =
        app.AddCommand("paired", "t interval and test of the mean difference of two columns");
    AddInput(paired, options->input, false);
    AddColumn(paired, options->columns.column);
    AddHeading(paired, "--with", options->columns.with, "Heading of the second column");
    AddMoments(paired, *options, "of the differences");
    AddDifference(paired, *options);
    AddInference(paired, *options);
    paired.OnCall([options, paired] {
        options->isSummary = HasSummary(paired, {"--mean", "--sd", "--n"});
        if (!options->isSummary && !options->columns.with) throw InputError("--with is required");
        PrintOneSample(std::cout, *options, ReadDifferences(*options),
                       {&RunPaired, "Paired", "pairs", "mean difference", "sd of differences"});
    });
}

void AddTwoSample(const Command& app) {
    const auto options = std::make_shared<TwoSampleOptions>();
    const Command twoSample =
        app.AddCommand("two-sample", "t interval and test of the difference of two means");
    AddInput(twoSample, options->input, false);
    AddColumn(twoSample, options->columns.column);
    AddSecondSample(twoSample, options->columns);
    AddNumbers(twoSample, "--means", options->means, "The two means, without FILE", Number("a number", IsAny),
               2);
    AddNumbers(twoSample, "--sds", options->sds, "Their standard deviations",
               Number("a positive number", IsPositive), 2);
    AddNumbers(twoSample, "--ns", options->ns, "Their numbers of values", Number("a whole number", IsCount),
               2);
    AddDifference(twoSample, *options);
    twoSample.AddFlag("--pooled", options->pooled, "Take the variances as equal");
    AddInference(twoSample, *options);
    twoSample.OnCall([options, twoSample] {
        options->isSummary = HasSummary(twoSample, {"--means", "--sds", "--ns"});
        PrintTwoSample(std::cout, *options);
    });
}

}  // namespace

void AddMeanTests(const Command& app) {
    AddOneSample(app);
    AddPaired(app);
    AddTwoSample(app);
}

}  // namespace analyze
