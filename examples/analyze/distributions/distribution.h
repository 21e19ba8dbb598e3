/// @file
/// The subcommand `distribution`: a small table of one distribution.
#pragma once

#include "command/command.h"

namespace analyze {

void AddDistribution(const Command& app);

}  // namespace analyze
