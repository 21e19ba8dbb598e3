/// @file
/// The subcommand `cluster`: hierarchical clustering of the rows or the columns of a table.
#pragma once

#include "command/command.h"

namespace analyze {

void AddCluster(const Command& app);

}  // namespace analyze
