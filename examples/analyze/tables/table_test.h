/// @file
/// The subcommand `table`: chi-square goodness of fit of a one-way table of counts.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddTableTest(CLI::App& app);

}  // namespace analyze
