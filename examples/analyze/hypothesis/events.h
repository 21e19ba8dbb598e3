/// @file
/// Which cells say that an event took place.
#pragma once

#include <string>
#include <vector>

#include "input/table.h"

namespace analyze {

struct EventCount {
    unsigned events = 0;
    unsigned trials = 0;
};

/// The events among cells of a column; numbers are compared by their value, so that 1.0 is 1.
EventCount CountEvents(const Table& table, const CsvRow& cells, const std::string& event);

/// Throws InputError, which lists the values that there are, unless one of the cells says that the event took place.
void CheckEvent(const Table& table, const CsvRow& cells, const std::string& column, const std::string& event);

}  // namespace analyze
