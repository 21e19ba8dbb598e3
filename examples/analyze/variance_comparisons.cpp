#include "variance_comparisons.h"

#include <zul/variances.h>

#include <algorithm>
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

constexpr int kLabelWidth = 18;
constexpr int kCountWidth = 6;
constexpr int kValueWidth = 17;
constexpr std::size_t kPlotWidth = 54;
constexpr int kPlotDigits = 6;
// Of the library: no variation, for which most of a report would be missing.
constexpr int kNoVariation = 30007;

void CheckSizes(const std::vector<unsigned>& sizes, const TestOptions& options) {
    constexpr unsigned kFewest = 2;
    if (sizes.size() < 2)
        throw InputError(options.file + ": column " + Quoted(*options.by) + " has a single group");
    if (*std::ranges::min_element(sizes) < kFewest)
        throw InputError(options.file + ": column " + Quoted(options.column) +
                         ": each sample needs two values or more");
}

void CheckVariation(int status, const TestOptions& options) {
    if (status == kNoVariation)
        throw InputError(options.file + ": column " + Quoted(options.column) +
                         ": all values of a sample are equal");
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
    PrintTest(out, "F", statistic);
    PrintRow(out, "df", AsGiven(df1) + ", " + AsGiven(df2));
    PrintTest(out, "p", p);
}

void PrintTwoVariances(std::ostream& out, const TestOptions& options) {
    const CsvTable table(options.file);
    const auto [first, second] = ReadTwoSamples(table, options);
    const std::vector<double> x = table.ReadNumbers(first.cells, first.column);
    const std::vector<double> y = table.ReadNumbers(second.cells, second.column);
    zul::v0::TwoVariance test;
    test.n1 = CountOf(x);
    test.n2 = CountOf(y);
    CheckSizes({test.n1, test.n2}, options);
    CheckVariation(RunTwoVariance(&test, x.data(), y.data(), options.confidence,
                                  IntervalOf(options.alternative), options.alternative, options.hypothesised),
                   options);

    out << "Comparison of two variances\n";
    PrintCells(out, "sample", "n", {"variance", "sd"});
    const auto print = [&out](const std::string& label, unsigned n, double variance) {
        PrintCells(
            out, label, std::to_string(n),
            {Significant(variance, kEstimateDigits), Significant(std::sqrt(variance), kEstimateDigits)});
    };
    print(first.label, test.n1, test.variance1);
    print(second.label, test.n2, test.variance2);
    PrintEstimate(out, "ratio", test.ratio);
    PrintHypotheses(out, "ratio", options);
    out << "By F, for normal values\n";
    PrintInterval(out, "ratio", options, test.fLowerBound, test.fUpperBound);
    PrintF(out, test.fStatistic, test.degreesOfFreedom1, test.degreesOfFreedom2, test.fPValue);
    out << "By Bonett's method, for any values\n";
    PrintInterval(out, "ratio", options, test.bonettLowerBound, test.bonettUpperBound);
    PrintTest(out, "p", test.bonettPValue);
    out << "By Levene's test of the distances from the medians, whatever the ratio of H0\n";
    PrintF(out, test.leveneStatistic, 1, test.n1 + test.n2 - 2.0, test.levenePValue);
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
                   {Significant(sds[i], kEstimateDigits), Significant(simultaneous.lower[i], kEstimateDigits),
                    Significant(simultaneous.upper[i], kEstimateDigits)});
}

void PrintTests(std::ostream& out, const zul::v0::VariancesTest& test) {
    out << "By Bonett's method, for any values: the largest log ratio over its error\n";
    PrintTest(out, "statistic", test.comparisonStatistic);
    PrintTest(out, "p", test.comparisonPValue);
    out << "By Levene's test of the distances from the medians\n";
    PrintF(out, test.leveneStatistic, test.leveneDegreesOfFreedom1, test.leveneDegreesOfFreedom2,
           test.levenePValue);
    out << "By Bartlett's test, for normal values\n";
    PrintTest(out, "chi-square", test.bartlettStatistic);
    PrintRow(out, "df", AsGiven(test.groups - 1.0));
    PrintTest(out, "p", test.bartlettPValue);
}

void PrintVariances(std::ostream& out, const TestOptions& options) {
    const CsvTable table(options.file);
    const std::vector<Sample> groups = ReadGroups(table, options.column, *options.by);
    std::vector<double> data;
    std::vector<unsigned> sizes;
    for (const Sample& group : groups) {
        const std::vector<double> values = table.ReadNumbers(group.cells, group.column);
        data.insert(data.end(), values.begin(), values.end());
        sizes.push_back(CountOf(values));
    }
    CheckSizes(sizes, options);
    zul::v0::VariancesTest test;
    test.groups = CountOf(sizes);
    std::vector<double> sds(groups.size());
    Intervals simultaneous(groups.size());
    Intervals comparison(groups.size());
    CheckVariation(RunVariancesTest(&test, data.data(), sizes.data(), options.confidence, sds.data(),
                                    simultaneous.lower.data(), simultaneous.upper.data(),
                                    comparison.lower.data(), comparison.upper.data()),
                   options);

    out << "Comparison of the variances of " << OneLine(Quoted(options.column)) << " by "
        << OneLine(Quoted(*options.by)) << '\n';
    PrintEstimate(out, "pooled sd", test.pooledStandardDeviation);
    out << AsGiven(100 * options.confidence) << " % confidence intervals of all sds together\n";
    PrintGroups(out, groups, sds, simultaneous);
    PrintTests(out, test);
    out << "Intervals for comparison: of two that do not overlap the variances differ\n";
    const auto isPlain = [](double x) { return x > 0 && std::isfinite(x); };
    if (std::ranges::all_of(comparison.lower, isPlain) && std::ranges::all_of(comparison.upper, isPlain))
        PrintPicture(out, groups, sds, comparison);
}

}  // namespace

void AddVarianceComparisons(CLI::App& app) {
    const auto two = std::make_shared<TestOptions>();
    two->hypothesised = 1;
    CLI::App& pair =
        *app.add_subcommand("two-variances", "Intervals and tests of the ratio of two variances");
    AddColumn(pair, two->file, two->column);
    AddSecondSample(pair, *two);
    AddNumber(pair, "--ratio", two->hypothesised, Number("a positive number", IsPositive),
              "Hypothesised ratio of the variances (default: 1)");
    AddInference(pair, *two);
    pair.callback([two] { PrintTwoVariances(std::cout, *two); });

    const auto options = std::make_shared<TestOptions>();
    CLI::App& several =
        *app.add_subcommand("variances", "Intervals and tests of the variances of several groups");
    AddColumn(several, options->file, options->column);
    several.add_option("--by", options->by, "Heading of the column that names the group of each value")
        ->required()
        ->type_name("NAME");
    AddConfidence(several, options->confidence);
    several.callback([options] { PrintVariances(std::cout, *options); });
}

}  // namespace analyze
