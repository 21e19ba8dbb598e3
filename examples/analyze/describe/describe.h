/// @file
/// The subcommands `describe` and `quantiles`: a line for each column, and the quantiles of one.
#pragma once

#include "command/command.h"

namespace analyze {

void AddDescribe(const Command& app);
void AddQuantiles(const Command& app);

}  // namespace analyze
