#include "tables/crosstab.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "command/options.h"
#include "input/rows.h"
#include "output/text.h"
#include "tables/crosstab_text.h"

namespace analyze {
namespace {

struct CrosstabOptions {
    InputOptions input;
    std::string rows;
    std::string columns;
    std::optional<std::string> strata;
    std::optional<std::string> counts;  // absent: each line is one observation
    double confidence = 0.95;
};

/// The names in a column, and which of them each line has.
struct Classes {
    std::vector<std::string> names;
    std::vector<std::size_t> ofLines;
};

bool AreNumbers(const std::vector<std::string>& names) {
    return std::ranges::all_of(names, [](const std::string& name) { return ParseNumber(name).has_value(); });
}

// In the order of the file, numbers ascending: measures of order need one that means something.
std::vector<std::string> NamesIn(const CsvRow& cells) {
    std::vector<std::string> names;
    for (const CsvCell& cell : cells)
        if (std::ranges::find(names, cell.text) == names.end()) names.push_back(cell.text);
    if (AreNumbers(names)) std::ranges::sort(names, {}, [](const auto& name) { return *ParseNumber(name); });
    return names;
}

Classes ClassesOf(const CsvRow& cells, std::vector<std::string> names) {
    Classes classes{std::move(names), {}};
    for (const CsvCell& cell : cells) {
        const auto found = std::ranges::find(classes.names, cell.text);
        classes.ofLines.push_back(static_cast<std::size_t>(found - classes.names.begin()));
    }
    return classes;
}

Classes ReadClasses(const CsvRow& cells) {
    return ClassesOf(cells, NamesIn(cells));
}

// The columns in the order of the rows if both are the same classes.
Classes ReadColumnClasses(const CsvRow& cells, const Classes& rows) {
    std::vector<std::string> names = NamesIn(cells);
    if (std::ranges::is_permutation(names, rows.names)) names = rows.names;
    return ClassesOf(cells, std::move(names));
}

// The columns that the options name: rows, columns, then counts and strata where they are wanted.
std::vector<std::string> ColumnsOf(const CrosstabOptions& options) {
    std::vector<std::string> columns = {options.rows, options.columns};
    if (options.counts) columns.push_back(*options.counts);
    if (options.strata) columns.push_back(*options.strata);
    return columns;
}

std::vector<double> ReadCounts(const Table& table, const Rows& rows, const CrosstabOptions& options) {
    if (!options.counts) return std::vector<double>(rows.Count(), 1);
    std::vector<double> counts = rows.Numbers(2);
    if (std::ranges::min(counts) < 0)
        throw InputError(table.Place(*options.counts) + ": a count is negative");
    return counts;
}

// Stratum by stratum, row by row.
std::vector<double> Tabulate(const Classes& strata, const Classes& rows, const Classes& columns,
                             const std::vector<double>& counts) {
    std::vector<double> cells(strata.names.size() * rows.names.size() * columns.names.size());
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const std::size_t row = strata.ofLines[i] * rows.names.size() + rows.ofLines[i];
        cells[row * columns.names.size() + columns.ofLines[i]] += counts[i];
    }
    return cells;
}

void PrintCrosstab(std::ostream& out, const CrosstabOptions& options) {
    const Table file(options.input);
    const Rows lines(file, ColumnsOf(options));
    const Classes rows = ReadClasses(lines.Cells(0));
    const Classes columns = ReadColumnClasses(lines.Cells(1), rows);
    const std::vector<double> counts = ReadCounts(file, lines, options);
    const Classes all{{""}, std::vector<std::size_t>(counts.size())};
    const TwoWayTable table{options.rows,
                            options.columns,
                            rows.names,
                            columns.names,
                            Tabulate(all, rows, columns, counts),
                            OriginOf(file, lines.Missing())};
    if (std::ranges::max(table.cells) == 0) throw InputError(file.Path() + ": there are no observations");
    if (!options.strata) {
        PrintTwoWayTable(out, table, options.confidence);
        return;
    }
    if (rows.names.size() != 2 || columns.names.size() != 2)
        throw InputError(file.Path() + ": strata need two rows and two columns");
    const Classes strata = ReadClasses(lines.Cells(options.counts ? 3 : 2));
    const Strata tables{*options.strata, strata.names, Tabulate(strata, rows, columns, counts)};
    PrintTwoWayTable(out, table, options.confidence);
    PrintStrata(out, tables, options.confidence);
}

}  // namespace

void AddCrosstab(const Command& app) {
    const auto options = std::make_shared<CrosstabOptions>();
    const Command crosstab =
        app.AddCommand("crosstab",
                       "Two-way table of two columns: tests of independence, measures of association\n"
                       "(for one column of counts against given proportions: table)");
    AddInput(crosstab, options->input);
    AddHeading(crosstab, "--rows", options->rows, "Heading of the column whose classes are the rows")
        .Require();
    AddHeading(crosstab, "--columns", options->columns, "Heading of the one whose classes are the columns")
        .Require();
    AddHeading(crosstab, "--strata", options->strata,
               "Heading of the classes of strata of 2 x 2 tables, for a common odds ratio");
    AddHeading(crosstab, "--counts", options->counts,
               "Heading of how often each line counts (default: once)");
    AddConfidence(crosstab, options->confidence);
    crosstab.OnCall([options] { PrintCrosstab(std::cout, *options); });
}

}  // namespace analyze
