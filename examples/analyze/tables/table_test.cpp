#include "tables/table_test.h"

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

#include "command/options.h"
#include "input/counts.h"
#include "input/rows.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

constexpr std::size_t kLabelWidth = 18;
constexpr int kCountWidth = 14;
constexpr int kExpectedWidth = 20;
// Below it the chi-square distribution is doubtful: W. G. Cochran, The chi-square test of
// goodness of fit, 1952.
constexpr double kSmallExpected = 5;

struct TableOptions {
    InputOptions input;
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

// Counts, hypothesised proportions and labels of the categories.
struct Categories {
    std::vector<double> counts;
    std::vector<double> proportions;
    std::vector<std::string> labels;
    double total = 0;
    std::string name;
    Origin origin;
};

// Multiples of the proportions, such as 9 : 3 : 3 : 1, do as well.
std::vector<double> Scaled(std::vector<double> proportions, const std::string& place) {
    if (std::ranges::min(proportions) <= 0) throw InputError(place + ": the proportions must be positive");
    const double sum = SumOf(proportions, place + ": the proportions");
    for (double& proportion : proportions)
        proportion /= sum;
    return proportions;
}

Categories ReadCategories(const TableOptions& options) {
    const Table table(options.input);
    std::vector<std::string> columns = {options.column};
    if (options.proportions) columns.push_back(*options.proportions);
    if (options.labels) columns.push_back(*options.labels);
    const Rows rows(table, columns);
    Categories categories{rows.Numbers(0), {}, {}, 0, rows.Names()[0], OriginOf(table, rows.Missing())};
    const std::size_t n = categories.counts.size();
    const std::string place = table.Place(categories.name);
    if (n < 2) throw InputError(place + ": the chi-square test needs two counts or more");
    if (std::ranges::min(categories.counts) < 0) throw InputError(place + ": a count is negative");
    categories.total = SumOf(categories.counts, place + ": the counts");
    categories.proportions = options.proportions ? Scaled(rows.Numbers(1), table.Place(*options.proportions))
                                                 : std::vector<double>(n, 1.0 / static_cast<double>(n));
    const CsvRow labels = options.labels ? rows.Cells(columns.size() - 1) : CsvRow();
    for (std::size_t i = 0; i < n; ++i)
        categories.labels.push_back(options.labels ? labels[i].text : std::to_string(rows.Places()[i] + 1));
    return categories;
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
    const Categories categories = ReadCategories(options);
    const std::vector<double>& counts = categories.counts;
    const Fit fit = RunFit(counts, categories.proportions, categories.total);

    out << "Chi-square goodness of fit of " << OneLine(Quoted(categories.name)) << ", total "
        << AsGiven(categories.total) << '\n';
    PrintRow(out, "categories", std::to_string(counts.size()));
    PrintOrigin(out, categories.origin);
    PrintCategory(out, "category", "observed", "expected", "(O - E)^2 / E");
    for (std::size_t i = 0; i < counts.size(); ++i)
        PrintCategory(out, OneLine(ShortenedToEnd(categories.labels[i], kLabelWidth)), AsGiven(counts[i]),
                      Significant(fit.expected[i], kTestDigits),
                      Significant(fit.contributions[i], kTestDigits));
    out << "  H0: the proportions are "
        << (options.proportions ? "those of " + OneLine(Quoted(*options.proportions)) : "all equal")
        << "\n  H1: at least one differs\n";
    PrintTest(out, "chi-square", fit.chiSquare);
    PrintDf(out, fit.df);
    PrintP(out, "p", fit.pValue);
    const auto small = std::ranges::count_if(fit.expected, [](double e) { return e < kSmallExpected; });
    if (small > 0) PrintRow(out, "expected < 5", std::to_string(small));
}

}  // namespace

void AddTableTest(const Command& app) {
    const auto options = std::make_shared<TableOptions>();
    const Command table = app.AddCommand("table",
                                         "Chi-square goodness of fit of a one-way table of counts\n"
                                         "(for one column against another: crosstab)");
    AddInput(table, options->input);
    AddColumn(table, options->column);
    AddHeading(table, "--proportions", options->proportions,
               "Heading of the hypothesised proportions or multiples of them (default: all equal)");
    AddHeading(table, "--labels", options->labels, "Heading of the names of the categories");
    table.OnCall([options] { PrintTable(std::cout, *options); });
}

}  // namespace analyze
