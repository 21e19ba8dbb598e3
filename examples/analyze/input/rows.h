/// @file
/// The rows of a table that are used: the one place that decides on missing values.
#pragma once

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "input/table.h"

namespace analyze {

/// The rows that have a value in each of some columns.
class Rows {
public:
    /// Omits the incomplete rows, or fails at the first one, as the options of the table say. With `groups` the rows
    /// whose last column has another text are none of these data, and not counted. Throws InputError, also where no
    /// row is left.
    Rows(const Table& table, const std::vector<std::string>& columns,
         const std::vector<std::string>& groups = {});

    std::size_t Count() const { return rows_.size(); }
    /// How many rows were omitted.
    std::size_t Missing() const { return missing_; }
    const std::vector<std::string>& Names() const { return names_; }
    /// The places of the rows among those of the table.
    const std::vector<std::size_t>& Places() const { return rows_; }

    /// The cells of a column, counted among the chosen ones.
    CsvRow Cells(std::size_t column) const;
    /// Its numbers. Throws InputError.
    std::vector<double> Numbers(std::size_t column) const;

private:
    const Table* table_;
    std::vector<std::string> names_;
    std::vector<std::size_t> columns_;
    std::vector<std::size_t> rows_;
    std::size_t missing_ = 0;
};

/// A column that is not taken, and why.
struct LeftOut {
    std::string name;
    std::string reason;
};

struct NumericColumns {
    std::vector<std::string> names;
    std::vector<LeftOut> leftOut;
};

/// Whether a column that only numbers the rows, or is named so, is one of numbers.
enum class RowNumbers { Take, LeaveOut };

/// The columns of numbers but `except`; those that the user names, if any. Throws InputError when there is none.
NumericColumns FindNumericColumns(const Table& table, const std::vector<std::string>& wanted,
                                  const std::string& except, RowNumbers rowNumbers);

/// What a report says of where its numbers come from.
struct Origin {
    std::optional<std::size_t> missing;  ///< rows that were omitted; absent: there is no file
    bool hasHeading = true;              ///< whether the file names its columns
};

Origin OriginOf(const Table& table, std::size_t missing);

/// How many values are missing, and whether columns have numbers for names.
void PrintOrigin(std::ostream& out, const Origin& origin);

/// A line for each.
void PrintLeftOut(std::ostream& out, const std::vector<LeftOut>& leftOut);

}  // namespace analyze
