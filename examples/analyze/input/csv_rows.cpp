#include "input/csv_rows.h"

#include <csv.h>

#include <new>
#include <utility>

#include "input/input_error.h"

namespace analyze {
namespace {

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
    explicit RowParser(char separator) {
        // Without REPALL_NL a blank line would not be told from a line that ends within a quoted cell.
        if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI | CSV_REPALL_NL) != 0) throw std::bad_alloc();
        csv_set_delim(&parser_, static_cast<unsigned char>(separator));
        // A tab would else be a blank around a cell, not the end of one.
        csv_set_space_func(&parser_, IsBlank);
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
    // The callbacks are noexcept because no exception may pass through the C code that calls them.
    static int IsBlank(unsigned char character) noexcept { return character == ' '; }

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

}  // namespace

std::vector<CsvRow> ParseRows(const std::string& path, std::string_view text, char separator) {
    RowParser parser(separator);
    std::vector<CsvRow> rows = parser.Parse(text);
    if (parser.Error() == CSV_EPARSE)
        throw InputError(PlaceOf(path, parser.CellLine()) + ": a quotation mark is misplaced or missing");
    if (parser.Error() != CSV_SUCCESS) throw std::bad_alloc();
    return rows;
}

std::string PlaceOf(const std::string& path, std::size_t line) {
    return path + ", line " + std::to_string(line);
}

}  // namespace analyze
