#include "input/table.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <iostream>
#include <system_error>
#include <utility>

#include "output/text.h"

namespace analyze {
namespace {

std::string ReadAll(std::istream& stream, const std::string& path) {
    std::string text;
    std::array<char, 1 << 16> block{};
    while (stream) {
        stream.read(block.data(), block.size());
        text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    }
    // A regular end sets eof; a file that did not open, or a directory, does not get so far.
    if (!stream.eof()) throw InputError(path + ": " + std::generic_category().message(errno));
    return text;
}

std::string ReadFile(const std::string& path) {
    if (path == "-") return ReadAll(std::cin, "standard input");
    std::ifstream file(path, std::ios::binary);
    return ReadAll(file, path);
}

std::string_view WithoutByteOrderMark(std::string_view text, const std::string& path) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
        throw InputError(path + ": the text is UTF-16; save it as UTF-8");
    return text.substr(text.starts_with(kMark) ? kMark.size() : 0);
}

// How often each line that is not blank has the character outside quotation marks: the first one, and whether the
// others have it as often.
std::pair<std::size_t, bool> CountPerLine(std::string_view text, char separator) {
    std::optional<std::size_t> first;
    bool same = true;
    bool quoted = false;
    bool blank = true;
    std::size_t count = 0;
    const auto endLine = [&] {
        if (!blank && !first) first = count;
        if (!blank && count != *first) same = false;
        count = 0;
        blank = true;
    };
    for (const char c : text) {
        if (c == '"') quoted = !quoted;
        if (!quoted && (c == '\n' || c == '\r')) {
            endLine();
            continue;
        }
        if (c != '\r' && c != '\n') blank = false;
        if (!quoted && c == separator) ++count;
    }
    endLine();
    return {first.value_or(0), same};
}

char FindSeparator(std::string_view text) {
    constexpr std::string_view kSeparators = "\t;,";
    char ofFirstLine = 0;
    for (const char separator : kSeparators) {
        const auto [count, same] = CountPerLine(text, separator);
        if (count > 0 && same) return separator;
        if (count > 0 && ofFirstLine == 0) ofFirstLine = separator;
    }
    return ofFirstLine != 0 ? ofFirstLine : ',';
}

std::optional<double> ParseWithComma(const std::string& text) {
    std::string withPoint = text;
    if (std::ranges::count(text, ',') != 1 || text.find('.') != std::string::npos) return std::nullopt;
    std::ranges::replace(withPoint, ',', '.');
    return ParseNumber(withPoint);
}

}  // namespace

bool IsMissing(std::string_view text) {
    constexpr std::array<std::string_view, 5> kMarks = {"", "NA", "N/A", "NaN", "nan"};
    return std::ranges::find(kMarks, text) != kMarks.end();
}

Table::Table(const InputOptions& options)
    : options_(options), path_(options.file == "-" ? "standard input" : options.file) {
    const std::string file = ReadFile(options.file);
    const std::string_view text = WithoutByteOrderMark(file, path_);
    const char separator = options.separator.value_or(FindSeparator(text));
    rows_ = ParseRows(path_, text, separator);
    if (rows_.empty()) throw InputError(path_ + ": the file has no heading line");
    for (CsvRow& row : rows_)
        for (CsvCell& cell : row)
            cell.text = WithoutBlanks(cell.text);
    CheckWidths();
    decimal_ = options.decimal.value_or(FindDecimal(separator));
    TakeHeading();
}

// A heading of numbers is none, unless the user says so.
void Table::TakeHeading() {
    const CsvRow& first = rows_.front();
    const auto isNumber = [this](const CsvCell& cell) { return Number(cell.text).has_value(); };
    const auto isData = [&](const CsvCell& cell) { return IsMissing(cell.text) || isNumber(cell); };
    hasHeading_ = options_.heading.value_or(!std::ranges::all_of(first, isData) ||
                                            std::ranges::none_of(first, isNumber));
    for (std::size_t i = 0; i < first.size(); ++i)
        headings_.push_back(hasHeading_ ? first[i].text : std::to_string(i + 1));
    if (hasHeading_) rows_.erase(rows_.begin());
}

void Table::CheckWidths() const {
    const std::size_t columns = rows_.front().size();
    for (const CsvRow& row : rows_)
        if (row.size() != columns)
            throw InputError(
                PlaceOf(path_, row.front().line) + ": too " + (row.size() < columns ? "few" : "many") +
                " cells, " + std::to_string(row.size()) + " for " + std::to_string(columns) +
                (columns == 1 ? " column; if commas are decimal, give --separator semicolon" : " columns"));
}

char Table::FindDecimal(char separator) const {
    bool hasComma = false;
    if (separator == ',') return '.';
    for (const CsvRow& row : rows_)
        for (const CsvCell& cell : row) {
            if (cell.text.find('.') != std::string::npos && ParseNumber(cell.text)) return '.';
            if (ParseWithComma(cell.text)) hasComma = true;
        }
    return hasComma ? ',' : '.';
}

std::size_t Table::FindColumn(const std::string& name) const {
    const auto listed = [this] {
        return (hasHeading_ ? "the columns are " : "there is no heading line, the columns are ") +
               Joined(headings_);
    };
    if (name.empty() && headings_.size() > 1)
        throw InputError(path_ + ": choose a column with --column; " + listed());
    if (name.empty()) return 0;
    const auto found = std::ranges::find(headings_, name);
    if (found == headings_.end()) throw InputError(path_ + ": no column " + Quoted(name) + "; " + listed());
    if (std::ranges::count(headings_, name) > 1)
        throw InputError(path_ + ": more than one column " + Quoted(name));
    return static_cast<std::size_t>(found - headings_.begin());
}

std::optional<double> Table::Number(const std::string& text) const {
    if (decimal_ == '.' || text.find_first_of(".,") == std::string::npos) return ParseNumber(text);
    return ParseWithComma(text);
}

std::vector<double> Table::Numbers(const CsvRow& cells, const std::string& name) const {
    std::vector<double> values;
    values.reserve(cells.size());
    for (const CsvCell& cell : cells) {
        const auto value = Number(cell.text);
        const bool otherDecimal = !value && (ParseNumber(cell.text) || ParseWithComma(cell.text));
        if (!value)
            throw InputError(Place(cell, name) + ": " + Quoted(cell.text) + " is not a number" +
                             (otherDecimal
                                  ? " with a decimal " + std::string(decimal_ == ',' ? "comma" : "point") +
                                        "; see --decimal"
                                  : ""));
        values.push_back(*value);
    }
    return values;
}

std::string Table::Place(const std::string& name) const {
    return path_ + ": column " + Quoted(name);
}

std::string Table::Place(const CsvCell& cell, const std::string& name) const {
    return PlaceOf(path_, cell.line) + ", column " + Quoted(name);
}

}  // namespace analyze
