/// @file
/// The subcommands sign, wilcoxon and mann-whitney.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddRankTests(CLI::App& app);

}  // namespace analyze
