/// @file
/// The subcommand `variance`: the test of one variance by two methods.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddVarianceTest(CLI::App& app);

}  // namespace analyze
