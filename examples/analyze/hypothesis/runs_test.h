/// @file
/// The subcommand `runs`: the runs test of the order of the values.
#pragma once

#include "command/command.h"

namespace analyze {

void AddRunsTest(const Command& app);

}  // namespace analyze
