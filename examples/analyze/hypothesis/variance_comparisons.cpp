#include "hypothesis/variance_comparisons.h"

#include <zul/variances.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "command/options.h"
#include "input/counts.h"
#include "input/samples.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

constexpr int kLabelWidth = 18;
constexpr int kCountWidth = 6;
constexpr int kValueWidth = 17;
constexpr std::size_t kPlotWidth = 54;
constexpr int kPlotDigits = 6;
// Of the library: no variation, for which most of a report would be missing.
constexpr int kNoVariation = 30007;

struct TwoVarianceOptions : TestOptions {
    std::vector<double> sds;  // instead of a file
    std::vector<double> ns;
    bool isSummary = false;
};

struct VariancesOptions {
    InputOptions input;
    std::string column;
    std::string by;
    double confidence = 0.95;
};

void CheckSizes(const std::vector<unsigned>& sizes, const std::string& description) {
    constexpr unsigned kFewest = 2;
    if (*std::ranges::min_element(sizes) < kFewest)
        throw InputError(description + ": each sample needs two values or more");
}

void CheckVariation(int status, const std::string& description) {
    if (status == kNoVariation) throw InputError(description + ": all values of a sample are equal");
    Expect(status, "the test of variances");
}

void PrintCells(std::ostream& out, const std::string& label, const std::string& count,
                const std::vector<std::string>& values) {
    out << "  " << std::left << std::setw(kLabelWidth) << OneLine(ShortenedToEnd(label, kLabelWidth))
        << std::right << std::setw(kCountWidth) << count;
    for (const std::string& value : values)
        out << std::setw(kValueWidth) << value;
    out << '\n';
}

void PrintF(std::ostream& out, double statistic, double df1, double df2, double p) {
    constexpr std::string_view kNoSpread = "the distances from the medians have no spread";
    PrintTest(out, "F", statistic, kNoSpread);
    PrintRow(out, "df", AsGiven(df1) + ", " + AsGiven(df2));
    // The library's tails of F end where F / df2 or its inverse is beyond 4e287: with few degrees of freedom before they
    // are small.
    const bool isFar = p == 0 && std::min(df1, df2) <= 2;
    PrintRow(out, "p", isFar ? "< 1e-138" : PValue(p, kNoSpread));
}

void PrintTwoVarianceTest(std::ostream& out, const Samples& samples, const zul::v0::TwoVariance& test,
                          const TwoVarianceOptions& options) {
    constexpr std::string_view kTooFew = "too few values for this confidence";
    out << "Comparison of the variances of " << OneLine(samples.description) << '\n';
    PrintCells(out, "sample", "n", {"variance", "sd"});
    const auto print = [&out](const std::string& label, unsigned n, double variance) {
        PrintCells(
            out, label, std::to_string(n),
            {Significant(variance, kEstimateDigits), Significant(std::sqrt(variance), kEstimateDigits)});
    };
    print(samples.samples[0].label, test.n1, test.variance1);
    print(samples.samples[1].label, test.n2, test.variance2);
    PrintOrigin(out, samples.origin);
    PrintEstimate(out, "ratio", test.ratio);
    PrintHypotheses(out, "ratio", options);
    out << "By F, for normal values\n";
    PrintInterval(out, "ratio", options, test.fLowerBound, test.fUpperBound);
    PrintF(out, test.fStatistic, test.degreesOfFreedom1, test.degreesOfFreedom2, test.fPValue);
    if (options.isSummary) return;
    out << "By Bonett's method, for any values\n";
    PrintInterval(out, "ratio", options, test.bonettLowerBound, test.bonettUpperBound, kTooFew);
    PrintP(out, "p", test.bonettPValue, kTooFew);
    out << "By Levene's test of the distances from the medians, whatever the ratio of H0\n";
    PrintF(out, test.leveneStatistic, 1, test.n1 + test.n2 - 2.0, test.levenePValue);
}

void PrintGivenVariances(std::ostream& out, const TwoVarianceOptions& options) {
    zul::v0::TwoVariance test;
    test.n1 = static_cast<unsigned>(options.ns[0]);
    test.n2 = static_cast<unsigned>(options.ns[1]);
    test.variance1 = options.sds[0] * options.sds[0];
    test.variance2 = options.sds[1] * options.sds[1];
    CheckSizes({test.n1, test.n2}, "--ns");
    Expect(RunTwoVariance(&test, options.confidence, IntervalOf(options.alternative), options.alternative,
                          options.hypothesised),
           "the test of variances");
    PrintTwoVarianceTest(out, {{{"first", "", {}}, {"second", "", {}}}, {}, {}, "given sds"}, test, options);
}

void PrintTwoVariances(std::ostream& out, const TwoVarianceOptions& options) {
    if (options.isSummary) {
        PrintGivenVariances(out, options);
        return;
    }
    const Table table(options.input);
    const Samples samples = ReadTwoSamples(table, options.columns);
    const std::vector<double> x = table.Numbers(samples.samples[0].cells, samples.samples[0].column);
    const std::vector<double> y = table.Numbers(samples.samples[1].cells, samples.samples[1].column);
    zul::v0::TwoVariance test;
    test.n1 = CountOf(x);
    test.n2 = CountOf(y);
    CheckSizes({test.n1, test.n2}, samples.description);
    CheckVariation(RunTwoVariance(&test, x.data(), y.data(), options.confidence,
                                  IntervalOf(options.alternative), options.alternative, options.hypothesised),
                   samples.description);
    PrintTwoVarianceTest(out, samples, test, options);
}

// Bounds for each group.
struct Intervals {
    explicit Intervals(std::size_t groups) : lower(groups), upper(groups) {}
    std::vector<double> lower;
    std::vector<double> upper;
};

// The intervals of all groups on one scale, a line each.
void PrintPicture(std::ostream& out, const std::vector<Sample>& groups, const std::vector<double>& sds,
                  const Intervals& intervals) {
    const double low = *std::ranges::min_element(intervals.lower);
    const double high = *std::ranges::max_element(intervals.upper);
    const auto place = [=](double x) {
        return static_cast<std::size_t>(std::lround((x - low) / (high - low) * (kPlotWidth - 1)));
    };
    for (std::size_t i = 0; i < groups.size(); ++i) {
        std::string line(kPlotWidth, ' ');
        // The ends may have changed places.
        const auto [from, to] = std::minmax({place(intervals.lower[i]), place(intervals.upper[i])});
        line.replace(from, to - from, to - from, '-');
        line[from] = '(';
        line[to] = ')';
        line[place(sds[i])] = '+';
        out << "  " << std::left << std::setw(kLabelWidth)
            << OneLine(ShortenedToEnd(groups[i].label, kLabelWidth)) << line << std::right << '\n';
    }
    const std::string from = Significant(low, kPlotDigits);
    const std::string to = Significant(high, kPlotDigits);
    out << std::string(kLabelWidth + 2, ' ') << from << std::string(kPlotWidth - from.size() - to.size(), ' ')
        << to << '\n';
}

void PrintGroups(std::ostream& out, const std::vector<Sample>& groups, const std::vector<double>& sds,
                 const Intervals& simultaneous) {
    PrintCells(out, "group", "n", {"sd", "from", "to"});
    for (std::size_t i = 0; i < groups.size(); ++i)
        PrintCells(out, groups[i].label, std::to_string(groups[i].cells.size()),
                   {Significant(sds[i], kEstimateDigits), Cell(simultaneous.lower[i], kEstimateDigits),
                    Cell(simultaneous.upper[i], kEstimateDigits)});
}

void PrintTests(std::ostream& out, const zul::v0::VariancesTest& test) {
    out << "By Bonett's method, for any values: the largest log ratio over its error\n";
    PrintTest(out, "statistic", test.comparisonStatistic, "too few values");
    PrintP(out, "p", test.comparisonPValue, "too few values");
    out << "By Levene's test of the distances from the medians\n";
    PrintF(out, test.leveneStatistic, test.leveneDegreesOfFreedom1, test.leveneDegreesOfFreedom2,
           test.levenePValue);
    out << "By Bartlett's test, for normal values\n";
    PrintTest(out, "chi-square", test.bartlettStatistic);
    PrintDf(out, test.groups - 1.0);
    PrintP(out, "p", test.bartlettPValue);
}

void PrintAllIntervals(std::ostream& out, const std::vector<Sample>& groups, const std::vector<double>& sds,
                       const Intervals& comparison) {
    out << "Intervals for comparison: of two that do not overlap the variances differ\n";
    const auto isPlain = [](double x) { return x > 0 && std::isfinite(x); };
    if (std::ranges::all_of(comparison.lower, isPlain) && std::ranges::all_of(comparison.upper, isPlain))
        PrintPicture(out, groups, sds, comparison);
    else
        out << "  not defined: a group has too few values for this confidence\n";
}

void PrintVariances(std::ostream& out, const VariancesOptions& options) {
    const Table table(options.input);
    const Samples samples = ReadGroups(table, options.column, options.by);
    const std::vector<Sample>& groups = samples.samples;
    std::vector<double> data;
    std::vector<unsigned> sizes;
    for (const Sample& group : groups) {
        const std::vector<double> values = table.Numbers(group.cells, group.column);
        data.insert(data.end(), values.begin(), values.end());
        sizes.push_back(CountOf(values));
    }
    CheckSizes(sizes, samples.description);
    zul::v0::VariancesTest test;
    test.groups = CountOf(sizes);
    std::vector<double> sds(groups.size());
    Intervals simultaneous(groups.size());
    Intervals comparison(groups.size());
    CheckVariation(RunVariancesTest(&test, data.data(), sizes.data(), options.confidence, sds.data(),
                                    simultaneous.lower.data(), simultaneous.upper.data(),
                                    comparison.lower.data(), comparison.upper.data()),
                   samples.description);

    out << "Comparison of the variances of " << OneLine(samples.description) << '\n';
    PrintRow(out, "n", std::to_string(test.n));
    PrintOrigin(out, samples.origin);
    PrintEstimate(out, "pooled sd", test.pooledStandardDeviation);
    out << AsGiven(100 * options.confidence)
        << " % confidence intervals of all sds together, by Bonett and Bonferroni\n";
    PrintGroups(out, groups, sds, simultaneous);
    PrintTests(out, test);
    PrintAllIntervals(out, groups, sds, comparison);
}

void AddTwo(const Command& app) {
    const auto two = std::make_shared<TwoVarianceOptions>();
    two->hypothesised = 1;
    const Command pair = app.AddCommand("two-variances", "Intervals and tests of the ratio of two variances");
    AddInput(pair, two->input, false);
    AddColumn(pair, two->columns.column);
    AddSecondSample(pair, two->columns);
    AddNumbers(pair, "--sds", two->sds, "The two standard deviations, without FILE: F alone",
               Number("a positive number", IsPositive), 2);
    AddNumbers(pair, "--ns", two->ns, "The numbers of values", Number("a whole number", IsCount), 2);
    AddNumber(pair, "--ratio", two->hypothesised, Number("a positive number", IsPositive),
              "Hypothesised ratio of the variances (default: 1)");
    AddInference(pair, *two);
    pair.OnCall([two, pair] {
        two->isSummary = HasSummary(pair, {"--sds", "--ns"});
        PrintTwoVariances(std::cout, *two);
    });
}

}  // namespace

void AddVarianceComparisons(const Command& app) {
    AddTwo(app);
    const auto options = std::make_shared<VariancesOptions>();
    const Command several =
        app.AddCommand("variances", "Intervals and tests of the variances of several groups");
    AddInput(several, options->input);
    AddColumn(several, options->column);
    AddBy(several, options->by);
    AddConfidence(several, options->confidence);
    several.OnCall([options] { PrintVariances(std::cout, *options); });
}

}  // namespace analyze
