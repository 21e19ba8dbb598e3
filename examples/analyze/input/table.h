/// @file
/// Tables of cells in files: how they are read, and what a number is in them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "input/csv_rows.h"
#include "input/input_error.h"

namespace analyze {

/// What becomes of a row that has no value where one is needed.
enum class MissingPolicy { Omit, Fail };

/// How a file is read; what is absent the file itself tells.
struct InputOptions {
    std::string file;               ///< "-": standard input
    std::optional<char> separator;  ///< of the cells
    std::optional<char> decimal;    ///< '.' or ','
    std::optional<bool> heading;    ///< whether the first row names the columns
    MissingPolicy missing = MissingPolicy::Omit;
};

/// Whether a cell says that there is no value: blank, NA, N/A, NaN or nan.
bool IsMissing(std::string_view text);

/// The rows of a file, all with as many cells as the first. It is the heading unless it is made of numbers; the
/// columns are numbered from 1 then. Without being told, the separator is the tab, semicolon or comma that each line
/// has the same number of; a decimal comma is taken where commas do not separate and no number has a point.
class Table {
public:
    /// Reads the file. Throws InputError.
    explicit Table(const InputOptions& options);

    const InputOptions& Options() const { return options_; }
    const std::string& Path() const { return path_; }
    const std::vector<std::string>& Headings() const { return headings_; }
    bool HasHeading() const { return hasHeading_; }
    std::size_t RowCount() const { return rows_.size(); }
    /// A cell, without the blanks around it.
    const CsvCell& Cell(std::size_t row, std::size_t column) const { return rows_[row][column]; }

    /// The column of that heading; without a name the only one. Throws InputError, which lists the headings.
    std::size_t FindColumn(const std::string& name) const;

    /// The number in a cell.
    std::optional<double> Number(const std::string& text) const;

    /// The numbers in cells of the column of that name. Throws InputError.
    std::vector<double> Numbers(const CsvRow& cells, const std::string& name) const;

    /// "FILE: column 'NAME'" for a message about a column.
    std::string Place(const std::string& name) const;
    /// "FILE, line N, column 'NAME'" for a message about a cell.
    std::string Place(const CsvCell& cell, const std::string& name) const;

private:
    void TakeHeading();
    void CheckWidths() const;
    char FindDecimal(char separator) const;

    InputOptions options_;
    std::string path_;
    std::vector<std::string> headings_;
    bool hasHeading_ = false;
    char decimal_ = '.';
    std::vector<CsvRow> rows_;
};

}  // namespace analyze
