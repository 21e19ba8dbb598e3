/// @file
/// The subcommands `proportion` and `two-proportions`.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddProportionTests(CLI::App& app);

}  // namespace analyze
