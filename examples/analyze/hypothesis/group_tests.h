/// @file
/// The subcommands kruskal-wallis, mood and friedman.
#pragma once

#include "command/command.h"

namespace analyze {

void AddGroupTests(const Command& app);

}  // namespace analyze
