#include "describe/describe.h"

#include <zul/descriptive.h>

#include <array>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "command/options.h"
#include "describe/moments.h"
#include "input/counts.h"
#include "input/rows.h"
#include "input/samples.h"
#include "output/text.h"

namespace analyze {
namespace {

constexpr int kDigits = 8;
constexpr std::size_t kNameWidth = 18;
constexpr int kCountWidth = 8;
constexpr int kValueWidth = 13;
constexpr int kQuantileDigits = 13;
// Of the sources of the library's quantiles: the definition of the summaries, positions p (n + 1).
constexpr int kDefaultType = 6;

struct DescribeOptions {
    InputOptions input;
    std::vector<std::string> columns;
    std::string by;
};

struct QuantileOptions {
    InputOptions input;
    std::string column;
    std::vector<double> p;
    double type = kDefaultType;
};

// A line of the table: a column, or a group of it.
struct Described {
    std::string name;
    std::size_t missing;
    Moments moments;
    zul::v1::FiveNumberSummary five;
};

Described Describe(const std::string& name, std::size_t missing, const std::vector<double>& values) {
    Described line{name, missing, MomentsOf(values), {}};
    Expect(zul::v1::GetKelFiveNumberSummary(&line.five, values.data(), CountOf(values)), "the summary");
    return line;
}

std::vector<Described> DescribeColumn(const Table& table, const std::string& column, const std::string& by) {
    if (by.empty()) {
        const Rows rows(table, {column});
        return {Describe(column, rows.Missing(), rows.Numbers(0))};
    }
    const Samples groups = ReadGroups(table, column, by);
    std::vector<Described> lines;
    for (const Sample& group : groups.samples) {
        const Rows rows(table, {column, by}, {group.label});
        lines.push_back(Describe(Joined({column, group.label}), rows.Missing(), rows.Numbers(0)));
    }
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    for (const std::string& group : groups.empty)
        lines.push_back({Joined({column, group}), Rows(table, {by}, {group}).Count(), {0, kNaN, kNaN}, {}});
    return lines;
}

void PrintLine(std::ostream& out, const std::string& name, const std::string& n, const std::string& missing,
               const std::array<std::string, 7>& values) {
    out << "  " << std::left << std::setw(kNameWidth) << OneLine(ShortenedToEnd(name, kNameWidth))
        << std::right << std::setw(kCountWidth) << n << std::setw(kCountWidth) << missing;
    for (const std::string& value : values)
        out << std::setw(kValueWidth) << value;
    out << '\n';
}

void PrintDescriptions(std::ostream& out, const DescribeOptions& options) {
    const Table table(options.input);
    const NumericColumns columns = FindNumericColumns(table, options.columns, options.by, RowNumbers::Take);
    std::vector<Described> lines;
    for (const std::string& column : columns.names)
        for (const Described& line : DescribeColumn(table, column, options.by))
            lines.push_back(line);

    out << "Description of " << OneLine(Listed(columns.names))
        << (options.by.empty() ? "" : " by " + OneLine(Quoted(options.by))) << ", quartiles of type 6\n";
    PrintOrigin(out, {{}, table.HasHeading()});
    PrintLeftOut(out, columns.leftOut);
    PrintLine(out, "column", "n", "missing", {"mean", "sd", "minimum", "Q1", "median", "Q3", "maximum"});
    bool isComplete = true;
    for (const auto& [name, missing, moments, five] : lines) {
        std::array<std::string, 7> cells;
        const std::array values = {moments.mean, moments.sd,         five.minimum, five.firstQuartile,
                                   five.median,  five.thirdQuartile, five.maximum};
        for (std::size_t i = 0; i < values.size(); ++i)
            cells[i] = Cell(values[i], kDigits);
        PrintLine(out, name, std::to_string(moments.n), std::to_string(missing), cells);
        isComplete = isComplete && !std::isnan(moments.sd);
    }
    if (!isComplete) out << "  -: not defined, " << kTooFewForSd << " for an sd, one for the others" << '\n';
}

void PrintQuantiles(std::ostream& out, const QuantileOptions& options) {
    const Table table(options.input);
    const Rows rows(table, {options.column});
    const std::vector<double> values = rows.Numbers(0);
    const std::vector<double> p =
        options.p.empty() ? std::vector<double>{0, 0.01, 0.05, 0.1, 0.25, 0.5, 0.75, 0.9, 0.95, 0.99, 1}
                          : options.p;
    std::vector<double> quantiles(p.size());
    Expect(zul::v1::GetSampleQuantiles(values.data(), CountOf(values), static_cast<int>(options.type),
                                       quantiles.data(), p.data(), CountOf(p)),
           "the quantiles");
    out << "Quantiles of " << OneLine(Quoted(rows.Names()[0])) << ", type " << options.type
        << " of Hyndman and Fan\n";
    PrintRow(out, "n", std::to_string(values.size()));
    PrintOrigin(out, OriginOf(table, rows.Missing()));
    PrintRow(out, "p", "quantile");
    for (std::size_t i = 0; i < p.size(); ++i)
        PrintRow(out, AsGiven(p[i]), Significant(quantiles[i], kQuantileDigits));
}

bool IsType(double x) {
    return x >= 1 && x <= 9 && x == std::trunc(x);
}

bool IsShare(double x) {
    return x >= 0 && x <= 1;
}

}  // namespace

void AddDescribe(const Command& app) {
    const auto options = std::make_shared<DescribeOptions>();
    const Command describe =
        app.AddCommand("describe", "Size, mean, sd and quartiles of columns, a line for each");
    AddInput(describe, options->input);
    AddHeadings(describe, "--columns", options->columns, "Headings of the columns (default: all of numbers)");
    AddHeading(describe, "--by", options->by, "Heading of the column that names the group of each row");
    describe.OnCall([options] { PrintDescriptions(std::cout, *options); });
}

void AddQuantiles(const Command& app) {
    const auto options = std::make_shared<QuantileOptions>();
    const Command quantiles = app.AddCommand("quantiles", "Quantiles of one column");
    AddInput(quantiles, options->input);
    AddColumn(quantiles, options->column);
    AddNumbers(quantiles, "--p", options->p, "Shares of the values below (default: 0, 0.01, ..., 1)",
               Number("from 0 to 1", IsShare));
    AddNumber(quantiles, "--type", options->type, Number("a whole number from 1 to 9", IsType),
              "Definition by Hyndman and Fan, 1 to 9 (default: 6)");
    quantiles.OnCall([options] { PrintQuantiles(std::cout, *options); });
}

}  // namespace analyze
