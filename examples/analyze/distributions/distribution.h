/// @file
/// The subcommand `distribution`: a small table of one distribution.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddDistribution(CLI::App& app);

}  // namespace analyze
