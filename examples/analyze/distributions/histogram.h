/// @file
/// A histogram of deviates beside what their distribution gives.
#pragma once

#include <ostream>

#include "distributions/families.h"

namespace analyze {

/// Every value is in a cell: the first one has no lower end and the last one no upper end. `sorted` are ascending, at
/// least one; `parameters` are those of the cumulative function.
void PrintHistogram(std::ostream& out, const Family& family, const Numbers& sorted,
                    const Numbers& parameters);

}  // namespace analyze
