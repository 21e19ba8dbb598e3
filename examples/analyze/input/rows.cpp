#include "input/rows.h"

#include <algorithm>

#include "output/text.h"

namespace analyze {
namespace {

std::string Described(const std::vector<std::string>& names) {
    if (names.size() == 1) return "column " + Quoted(names.front()) + " is empty";
    return "no row has a value in each of the columns " + Listed(names);
}

// Row numbers and other ids are no measurements.
bool NumbersTheRows(const Table& table, std::size_t column) {
    std::string name = Lower(table.Headings()[column]);
    if (table.HasHeading() && (name.empty() || name == "id")) return true;
    for (std::size_t row = 0; row < table.RowCount(); ++row)
        if (table.Number(table.Cell(row, column).text) != static_cast<double>(row + 1)) return false;
    return table.RowCount() > 2;
}

// Why a column that the user has not named is not taken.
std::optional<std::string> ReasonAgainst(const Table& table, std::size_t column, RowNumbers rowNumbers) {
    std::size_t numbers = 0;
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
        const CsvCell& cell = table.Cell(row, column);
        if (IsMissing(cell.text)) continue;
        if (!table.Number(cell.text))
            return Quoted(cell.text) + " in line " + std::to_string(cell.line) + " is not a number";
        ++numbers;
    }
    if (numbers == 0) return "it is empty";
    if (rowNumbers == RowNumbers::LeaveOut && NumbersTheRows(table, column))
        return "it numbers the rows; --columns takes it all the same";
    return std::nullopt;
}

}  // namespace

Rows::Rows(const Table& table, const std::vector<std::string>& columns,
           const std::vector<std::string>& groups)
    : table_(&table) {
    for (const std::string& name : columns) {
        columns_.push_back(table.FindColumn(name));
        names_.push_back(table.Headings()[columns_.back()]);
    }
    const auto isMissing = [&](std::size_t row, std::size_t column) {
        return IsMissing(table.Cell(row, column).text);
    };
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
        if (!groups.empty() && !isMissing(row, columns_.back()) &&
            std::ranges::find(groups, table.Cell(row, columns_.back()).text) == groups.end())
            continue;
        const auto gap =
            std::ranges::find_if(columns_, [&](std::size_t column) { return isMissing(row, column); });
        if (gap == columns_.end()) {
            rows_.push_back(row);
            continue;
        }
        if (table.Options().missing == MissingPolicy::Fail)
            throw InputError(table.Place(table.Cell(row, *gap), table.Headings()[*gap]) +
                             ": the value is missing; --missing omit leaves such rows out");
        ++missing_;
    }
    if (rows_.empty()) throw InputError(table.Path() + ": " + Described(names_));
}

CsvRow Rows::Cells(std::size_t column) const {
    CsvRow cells;
    cells.reserve(rows_.size());
    for (const std::size_t row : rows_)
        cells.push_back(table_->Cell(row, columns_[column]));
    return cells;
}

std::vector<double> Rows::Numbers(std::size_t column) const {
    return table_->Numbers(Cells(column), names_[column]);
}

NumericColumns FindNumericColumns(const Table& table, const std::vector<std::string>& wanted,
                                  const std::string& except, RowNumbers rowNumbers) {
    if (!wanted.empty()) return {wanted, {}};
    NumericColumns columns;
    for (std::size_t column = 0; column < table.Headings().size(); ++column) {
        const std::string& name = table.Headings()[column];
        if (!except.empty() && name == except) continue;
        if (const auto reason = ReasonAgainst(table, column, rowNumbers))
            columns.leftOut.push_back({name, *reason});
        else
            columns.names.push_back(name);
    }
    if (columns.names.empty()) throw InputError(table.Path() + ": no column of numbers");
    return columns;
}

Origin OriginOf(const Table& table, std::size_t missing) {
    return {missing, table.HasHeading()};
}

void PrintOrigin(std::ostream& out, const Origin& origin) {
    if (origin.missing) PrintRow(out, "missing", std::to_string(*origin.missing));
    if (!origin.hasHeading) PrintRow(out, "heading", "none, columns by number");
}

void PrintLeftOut(std::ostream& out, const std::vector<LeftOut>& leftOut) {
    for (const LeftOut& column : leftOut)
        out << "  left out: " << OneLine(Quoted(column.name)) << ", " << OneLine(column.reason) << '\n';
}

}  // namespace analyze
