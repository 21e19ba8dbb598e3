/// @file
/// The subcommands "two-variances" and "variances".
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddVarianceComparisons(CLI::App& app);

}  // namespace analyze
