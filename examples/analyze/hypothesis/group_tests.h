/// @file
/// The subcommands kruskal-wallis, mood and friedman.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddGroupTests(CLI::App& app);

}  // namespace analyze
