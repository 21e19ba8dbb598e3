/// @file
/// The subcommand `crosstab`: two-way tables with their tests and measures of association.
#pragma once

#include "command/command.h"

namespace analyze {

void AddCrosstab(const Command& app);

}  // namespace analyze
