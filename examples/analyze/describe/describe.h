/// @file
/// The subcommands `describe` and `quantiles`: a line for each column, and the quantiles of one.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddDescribe(CLI::App& app);
void AddQuantiles(CLI::App& app);

}  // namespace analyze
