/// @file
/// The subcommand `crosstab`: two-way tables with their tests and measures of association.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddCrosstab(CLI::App& app);

}  // namespace analyze
