/// @file
/// What the subcommand `crosstab` prints.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "input/rows.h"

namespace analyze {

struct TwoWayTable {
    std::string rowHeading;
    std::string columnHeading;
    std::vector<std::string> rows;
    std::vector<std::string> columns;
    std::vector<double> cells;  ///< row by row, not all 0
    Origin origin;
};

/// The table with margins and percentages, the tests and the measures that its shape allows. Throws
/// std::runtime_error where the library fails.
void PrintTwoWayTable(std::ostream& out, const TwoWayTable& table, double confidence);

struct Strata {
    std::string heading;
    std::vector<std::string> names;
    std::vector<double> cells;  ///< four of each stratum, row by row
};

/// The odds ratio of each stratum, the common one and the test by Mantel and Haenszel.
void PrintStrata(std::ostream& out, const Strata& strata, double confidence);

}  // namespace analyze
