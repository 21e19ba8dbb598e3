/// @file
/// The subcommand `report`: summary and boxplot of one column, its correlation with another, interval and tests of its
/// mean by t or, with a known sd, by z.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddReport(CLI::App& app);

}  // namespace analyze
