/// @file
/// The subcommand `table`: chi-square goodness of fit of a one-way table of counts.
#pragma once

#include "command/command.h"

namespace analyze {

void AddTableTest(const Command& app);

}  // namespace analyze
