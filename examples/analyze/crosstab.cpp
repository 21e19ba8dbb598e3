#include "crosstab.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "crosstab_text.h"
#include "csv_table.h"
#include "options.h"
#include "text.h"

namespace analyze {
namespace {

struct CrosstabOptions {
    std::string file;
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

Classes ReadClasses(const CsvTable& table, const std::string& column) {
    const CsvRow cells = table.ReadCells(column);
    return ClassesOf(cells, NamesIn(cells));
}

// The columns in the order of the rows if both are the same classes.
Classes ReadColumnClasses(const CsvTable& table, const std::string& column, const Classes& rows) {
    const CsvRow cells = table.ReadCells(column);
    std::vector<std::string> names = NamesIn(cells);
    if (std::ranges::is_permutation(names, rows.names)) names = rows.names;
    return ClassesOf(cells, std::move(names));
}

std::vector<double> ReadCounts(const CsvTable& table, const CrosstabOptions& options, std::size_t lines) {
    if (!options.counts) return std::vector<double>(lines, 1);
    std::vector<double> counts = table.ReadColumn(*options.counts);
    if (std::ranges::min(counts) < 0)
        throw InputError(options.file + ", column " + Quoted(*options.counts) + ": a count is negative");
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
    const CsvTable file(options.file);
    const Classes rows = ReadClasses(file, options.rows);
    const Classes columns = ReadColumnClasses(file, options.columns, rows);
    const std::vector<double> counts = ReadCounts(file, options, rows.ofLines.size());
    const Classes all{{""}, std::vector<std::size_t>(counts.size())};
    const TwoWayTable table{options.rows, options.columns, rows.names, columns.names,
                            Tabulate(all, rows, columns, counts)};
    if (std::ranges::max(table.cells) == 0) throw InputError(options.file + ": there are no observations");
    if (!options.strata) {
        PrintTwoWayTable(out, table, options.confidence);
        return;
    }
    if (rows.names.size() != 2 || columns.names.size() != 2)
        throw InputError(options.file + ": strata need two rows and two columns");
    const Classes strata = ReadClasses(file, *options.strata);
    const Strata tables{*options.strata, strata.names, Tabulate(strata, rows, columns, counts)};
    PrintTwoWayTable(out, table, options.confidence);
    PrintStrata(out, tables, options.confidence);
}

void AddHeading(CLI::App& command, const std::string& name, std::optional<std::string>& target,
                const std::string& description) {
    command.add_option(name, target, description)->type_name("NAME");
}

}  // namespace

void AddCrosstab(CLI::App& app) {
    const auto options = std::make_shared<CrosstabOptions>();
    CLI::App& crosstab =
        *app.add_subcommand("crosstab",
                            "Two-way table of two columns: tests of independence, measures of association\n"
                            "(for one column of counts against given proportions: table)");
    crosstab.add_option("FILE", options->file, "CSV file, the first line is the heading")->required();
    crosstab.add_option("--rows", options->rows, "Heading of the column whose classes are the rows")
        ->required()
        ->type_name("NAME");
    crosstab.add_option("--columns", options->columns, "Heading of the one whose classes are the columns")
        ->required()
        ->type_name("NAME");
    AddHeading(crosstab, "--strata", options->strata,
               "Heading of the classes of strata of 2 x 2 tables, for a common odds ratio");
    AddHeading(crosstab, "--counts", options->counts,
               "Heading of how often each line counts (default: once)");
    AddConfidence(crosstab, options->confidence);
    crosstab.callback([options] { PrintCrosstab(std::cout, *options); });
}

}  // namespace analyze
