#include "csv_table.h"

#include <csv.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>

#include "text.h"

namespace analyze {
namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text;
    char block[1 << 16];
    while (file) {
        file.read(block, sizeof block);
        text.append(block, static_cast<std::size_t>(file.gcount()));
    }
    // A regular end sets eof; a file that did not open, or a directory, does not get so far.
    if (!file.eof()) throw InputError(path + ": " + std::generic_category().message(errno));
    return text;
}

// Where the line that begins at `start` ends: after CR LF, or after a CR or LF alone.
std::size_t EndOfLine(std::string_view text, std::size_t start) {
    const std::size_t mark = text.find_first_of("\r\n", start);
    if (mark == std::string_view::npos) return text.size();
    return mark + (text.substr(mark, 2) == "\r\n" ? 2 : 1);
}

// Feeds libcsv line by line, so that the line of each cell is known: a quoted cell may hold line ends, and
// libcsv by itself counts none.
class RowParser {
public:
    RowParser() {
        // Without REPALL_NL a blank line would not be told from a line that ends within a quoted cell.
        if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI | CSV_REPALL_NL) != 0) throw std::bad_alloc();
    }
    ~RowParser() { csv_free(&parser_); }
    RowParser(const RowParser&) = delete;
    RowParser& operator=(const RowParser&) = delete;

    // The rows that have cells; stops at the first error.
    std::vector<CsvRow> Parse(std::string_view text) {
        for (std::size_t start = 0; start < text.size() && csv_error(&parser_) == CSV_SUCCESS; ++line_) {
            const std::size_t end = EndOfLine(text, start);
            csv_parse(&parser_, text.data() + start, end - start, AddCell, EndRow, this);
            start = end;
        }
        if (csv_error(&parser_) == CSV_SUCCESS) csv_fini(&parser_, AddCell, EndRow, this);
        return std::move(rows_);
    }

    int Error() { return csv_error(&parser_); }
    std::size_t CellLine() const { return cellLine_; }

private:
    // The two callbacks are noexcept because no exception may pass through the C code that calls them.
    static void AddCell(void* text, std::size_t length, void* self) noexcept {
        auto& parser = *static_cast<RowParser*>(self);
        parser.row_.push_back({std::string(static_cast<const char*>(text), length), parser.cellLine_});
        parser.cellLine_ = parser.line_;
    }

    // Called for the CR and for the LF of a line end, so mostly for an empty row too.
    static void EndRow(int, void* self) noexcept {
        auto& parser = *static_cast<RowParser*>(self);
        if (!parser.row_.empty()) parser.rows_.push_back(std::exchange(parser.row_, {}));
        parser.cellLine_ = parser.line_ + 1;
    }

    csv_parser parser_{};
    std::vector<CsvRow> rows_;
    CsvRow row_;
    std::size_t line_ = 1;      // the line that is being fed
    std::size_t cellLine_ = 1;  // the line on which the current cell began
};

std::string Headings(const CsvRow& heading) {
    std::string list;
    for (const CsvCell& cell : heading)
        list += (list.empty() ? "" : ", ") + cell.text;
    return list;
}

}  // namespace

CsvTable::CsvTable(const std::string& path) : path_(path) {
    const std::string text = ReadFile(path);
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    RowParser parser;
    rows_ = parser.Parse(std::string_view(text).substr(text.starts_with(kByteOrderMark) ? 3 : 0));
    if (parser.Error() == CSV_EPARSE)
        throw InputError(Place(parser.CellLine()) + ": a quotation mark is misplaced or missing");
    if (parser.Error() != CSV_SUCCESS) throw std::bad_alloc();
    if (rows_.empty()) throw InputError(path_ + ": the file has no heading line");

    heading_ = std::move(rows_.front());
    rows_.erase(rows_.begin());
    for (const CsvRow& row : rows_)
        if (row.size() != heading_.size())
            throw InputError(Place(row.front().line) + ": too " +
                             (row.size() < heading_.size() ? "few" : "many") + " cells, " +
                             std::to_string(row.size()) + " for " + std::to_string(heading_.size()) +
                             " columns");
}

std::vector<double> CsvTable::ReadColumn(const std::string& name) const {
    return ReadNumbers(ReadCells(name), name);
}

CsvRow CsvTable::ReadCells(const std::string& name) const {
    const std::size_t column = FindColumn(name);
    if (rows_.empty()) throw InputError(path_ + ": column " + Quoted(name) + " is empty");
    CsvRow cells;
    cells.reserve(rows_.size());
    for (const CsvRow& row : rows_)
        cells.push_back({std::string(WithoutBlanks(row[column].text)), row[column].line});
    return cells;
}

std::vector<double> CsvTable::ReadNumbers(const CsvRow& cells, const std::string& name) const {
    std::vector<double> values;
    values.reserve(cells.size());
    for (const CsvCell& cell : cells) {
        const auto value = ParseNumber(cell.text);
        if (!value) throw InputError(Place(cell, name) + ": " + Quoted(cell.text) + " is not a number");
        values.push_back(*value);
    }
    return values;
}

std::string CsvTable::Place(const CsvCell& cell, const std::string& name) const {
    return Place(cell.line) + ", column " + Quoted(name);
}

std::vector<std::string> CsvTable::NumericColumns() const {
    std::vector<std::string> names;
    for (std::size_t column = 0; column < heading_.size(); ++column) {
        const auto isNumber = [column](const CsvRow& row) {
            return ParseNumber(row[column].text).has_value();
        };
        if (!rows_.empty() && std::ranges::all_of(rows_, isNumber)) names.push_back(heading_[column].text);
    }
    if (names.empty()) throw InputError(path_ + ": no column of numbers");
    return names;
}

std::size_t CsvTable::FindColumn(const std::string& name) const {
    const auto found = std::ranges::find(heading_, name, &CsvCell::text);
    if (found == heading_.end())
        throw InputError(path_ + ": no column " + Quoted(name) + "; the columns are " + Headings(heading_));
    if (std::ranges::count(heading_, name, &CsvCell::text) > 1)
        throw InputError(path_ + ": more than one column " + Quoted(name));
    return static_cast<std::size_t>(found - heading_.begin());
}

std::string CsvTable::Place(std::size_t line) const {
    return path_ + ", line " + std::to_string(line);
}

}  // namespace analyze
