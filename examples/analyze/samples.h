/// @file
/// The two samples of a test: two columns, or the groups of one column that another column tells apart.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "csv_table.h"
#include "options.h"

namespace analyze {

struct Sample {
    std::string label;
    std::string column;
    CsvRow cells;  ///< at least one
};

/// The samples that the options choose. Of two columns the blank cells are passed over, so that the samples
/// may differ in size. Throws InputError.
std::array<Sample, 2> ReadTwoSamples(const CsvTable& table, const TestOptions& options);

/// All groups of the column that the column `by` tells apart, ascending: numbers by their value, other texts by
/// their characters. Blank cells are passed over. Throws InputError.
std::vector<Sample> ReadGroups(const CsvTable& table, const std::string& column, const std::string& by);

}  // namespace analyze
