/// @file
/// The subcommand `runs`: the runs test of the order of the values.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddRunsTest(CLI::App& app);

}  // namespace analyze
