/// @file
/// The subcommand `cluster`: hierarchical clustering of the rows or the columns of a table.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddCluster(CLI::App& app);

}  // namespace analyze
