#include "table_test.h"

#include <zul/hypothesis.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "csv_table.h"
#include "options.h"
#include "summary.h"
#include "test_text.h"
#include "text.h"

namespace analyze {
namespace {

constexpr std::size_t kLabelWidth = 18;
constexpr int kCountWidth = 14;
constexpr int kExpectedWidth = 20;
// Below it the chi-square distribution is doubtful: W. G. Cochran, The chi-square test of
// goodness of fit, 1952.
constexpr double kSmallExpected = 5;

struct TableOptions {
    std::string file;
    std::string column;
    std::optional<std::string> proportions;  // absent: all equal
    std::optional<std::string> labels;       // absent: numbers from 1
};

struct Fit {
    std::vector<double> expected;
    std::vector<double> contributions;
    double chiSquare = 0;
    double pValue = 0;
    double df = 0;
};

double SumOf(const std::vector<double>& values, const std::string& what) {
    const double sum = std::accumulate(values.begin(), values.end(), 0.0);
    if (!(sum > 0 && std::isfinite(sum))) throw InputError(what + " do not add up to a positive number");
    return sum;
}

std::string Place(const TableOptions& options, const std::string& column) {
    return options.file + ", column " + Quoted(column);
}

// Multiples of the proportions, such as 9 : 3 : 3 : 1, do as well.
std::vector<double> ReadProportions(const CsvTable& table, const TableOptions& options, std::size_t n) {
    if (!options.proportions) return std::vector<double>(n, 1.0 / static_cast<double>(n));
    std::vector<double> proportions = table.ReadColumn(*options.proportions);
    const std::string place = Place(options, *options.proportions);
    if (std::ranges::min(proportions) <= 0) throw InputError(place + ": the proportions must be positive");
    const double sum = SumOf(proportions, place + ": the proportions");
    for (double& proportion : proportions)
        proportion /= sum;
    return proportions;
}

std::vector<std::string> ReadLabels(const CsvTable& table, const TableOptions& options, std::size_t n) {
    std::vector<std::string> labels;
    if (options.labels)
        for (const CsvCell& cell : table.ReadCells(*options.labels))
            labels.push_back(cell.text);
    while (labels.size() < n)
        labels.push_back(std::to_string(labels.size() + 1));
    return labels;
}

Fit RunFit(const std::vector<double>& counts, const std::vector<double>& proportions, double total) {
    Fit fit;
    fit.expected.resize(counts.size());
    fit.contributions.resize(counts.size());
    Expect(zul::RunKelTabularChiSqGOFTest(counts.data(), proportions.data(), fit.expected.data(),
                                          fit.contributions.data(), &fit.chiSquare, &fit.pValue, &fit.df,
                                          total, CountOf(counts)),
           "the chi-square test");
    return fit;
}

void PrintCategory(std::ostream& out, const std::string& label, const std::string& observed,
                   const std::string& expected, const std::string& contribution) {
    out << "  " << std::left << std::setw(kLabelWidth) << label << std::right << std::setw(kCountWidth)
        << observed << std::setw(kExpectedWidth) << expected << std::setw(kExpectedWidth) << contribution
        << '\n';
}

void PrintTable(std::ostream& out, const TableOptions& options) {
    const CsvTable table(options.file);
    const std::vector<double> counts = table.ReadColumn(options.column);
    const std::string place = Place(options, options.column);
    if (counts.size() < 2) throw InputError(place + ": the chi-square test needs two counts or more");
    if (std::ranges::min(counts) < 0) throw InputError(place + ": a count is negative");
    const double total = SumOf(counts, place + ": the counts");
    const std::vector<double> proportions = ReadProportions(table, options, counts.size());
    const std::vector<std::string> labels = ReadLabels(table, options, counts.size());
    const Fit fit = RunFit(counts, proportions, total);

    out << "Chi-square goodness of fit of " << OneLine(Quoted(options.column)) << ", total " << AsGiven(total)
        << '\n';
    PrintCategory(out, "category", "observed", "expected", "(O - E)^2 / E");
    for (std::size_t i = 0; i < counts.size(); ++i)
        PrintCategory(out, OneLine(ShortenedToEnd(labels[i], kLabelWidth)), AsGiven(counts[i]),
                      Significant(fit.expected[i], kTestDigits),
                      Significant(fit.contributions[i], kTestDigits));
    out << "  H0: the proportions are "
        << (options.proportions ? "those of " + OneLine(Quoted(*options.proportions)) : "all equal")
        << "\n  H1: at least one differs\n";
    PrintTest(out, "chi-square", fit.chiSquare);
    PrintRow(out, "df", AsGiven(fit.df));
    PrintTest(out, "p", fit.pValue);
    const auto small = std::ranges::count_if(fit.expected, [](double e) { return e < kSmallExpected; });
    if (small > 0) PrintRow(out, "expected < 5", std::to_string(small));
}

void AddHeading(CLI::App& command, const std::string& name, std::optional<std::string>& target,
                const std::string& description) {
    command.add_option(name, target, description)->type_name("NAME");
}

}  // namespace

void AddTableTest(CLI::App& app) {
    const auto options = std::make_shared<TableOptions>();
    CLI::App& table = *app.add_subcommand("table",
                                          "Chi-square goodness of fit of a one-way table of counts\n"
                                          "(for one column against another: crosstab)");
    AddColumn(table, options->file, options->column);
    AddHeading(table, "--proportions", options->proportions,
               "Heading of the hypothesised proportions or multiples of them (default: all equal)");
    AddHeading(table, "--labels", options->labels, "Heading of the names of the categories");
    table.callback([options] { PrintTable(std::cout, *options); });
}

}  // namespace analyze
