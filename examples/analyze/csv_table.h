/// @file
/// CSV files with a heading line.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace analyze {

/// The user's input cannot be used; what() tells where and why.
class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct CsvCell {
    std::string text;
    std::size_t line;  ///< the line of the file on which the cell begins, from 1
};

using CsvRow = std::vector<CsvCell>;

/// The cells of a CSV file: the first row is the heading, the others have as many cells as it. Blank lines
/// are passed over. A quotation mark stands around a whole cell or, doubled, within a quoted one.
class CsvTable {
public:
    /// Reads the file. Throws InputError.
    explicit CsvTable(const std::string& path);

    /// The column under a heading as numbers, at least one. Throws InputError.
    std::vector<double> ReadColumn(const std::string& name) const;

    /// The cells under a heading, at least one, without the blanks around them. Throws InputError.
    CsvRow ReadCells(const std::string& name) const;

    /// Cells of the column of that name as numbers. Throws InputError.
    std::vector<double> ReadNumbers(const CsvRow& cells, const std::string& name) const;

    /// "FILE, line N, column 'NAME'" for a message about a cell.
    std::string Place(const CsvCell& cell, const std::string& name) const;

    /// The headings of the columns that have a number in each row. Throws InputError when there is none.
    std::vector<std::string> NumericColumns() const;

private:
    std::size_t FindColumn(const std::string& name) const;
    std::string Place(std::size_t line) const;

    std::string path_;
    CsvRow heading_;
    std::vector<CsvRow> rows_;
};

}  // namespace analyze
