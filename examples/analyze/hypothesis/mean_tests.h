/// @file
/// The subcommands `t`, `paired` and `two-sample`: t tests of means.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddMeanTests(CLI::App& app);

}  // namespace analyze
