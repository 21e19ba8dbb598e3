/// @file
/// The cells of a text of separated values.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace analyze {

struct CsvCell {
    std::string text;
    std::size_t line;  ///< the line of the file on which the cell begins, from 1
};

using CsvRow = std::vector<CsvCell>;

/// The rows that have cells; blank lines are passed over. A quotation mark stands around a whole cell or, doubled,
/// within a quoted one. Throws InputError, which names the `path`.
std::vector<CsvRow> ParseRows(const std::string& path, std::string_view text, char separator);

/// "PATH, line N".
std::string PlaceOf(const std::string& path, std::size_t line);

}  // namespace analyze
