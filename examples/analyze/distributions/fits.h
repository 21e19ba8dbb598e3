/// @file
/// The subcommand `fit`: all distributions that a column allows, the best one first.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddFits(CLI::App& app);

}  // namespace analyze
