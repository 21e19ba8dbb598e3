/// @file
/// The samples of a test: two columns, or the groups of one column that another column tells apart.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "input/rows.h"
#include "input/table.h"

namespace analyze {

struct Sample {
    std::string label;
    std::string column;
    CsvRow cells;  ///< at least one
};

struct Samples {
    std::vector<Sample> samples;
    std::vector<std::string> empty;  ///< groups without values
    Origin origin;
    std::string description;  ///< "'weight' by 'group'", and the groups without values
};

/// Which two samples a test compares.
struct TwoSampleColumns {
    std::string column;
    std::optional<std::string> with;  ///< the column of the second sample
    std::optional<std::string> by;    ///< the column that tells the samples apart
    std::vector<std::string> groups;  ///< two values of it; empty: those that there are, ascending
};

/// The two samples. Those of two columns may differ in size. Throws InputError.
Samples ReadTwoSamples(const Table& table, const TwoSampleColumns& columns);

/// All groups of the column that the column `by` tells apart, at least two, ascending: numbers by their value, other
/// texts by their characters. Throws InputError.
Samples ReadGroups(const Table& table, const std::string& column, const std::string& by);

/// Whether the groups stand in this order.
bool Precedes(const std::string& a, const std::string& b);

}  // namespace analyze
