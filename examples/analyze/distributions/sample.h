/// @file
/// The subcommand `sample`: random deviates, and their histogram beside the density.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddSample(CLI::App& app);

}  // namespace analyze
