/// @file
/// The subcommand `sample`: random deviates, and their histogram beside the density.
#pragma once

#include "command/command.h"

namespace analyze {

void AddSample(const Command& app);

}  // namespace analyze
