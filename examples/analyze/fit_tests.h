/// @file
/// The subcommand `fit`: Anderson-Darling tests of four distributions.
#pragma once

#include <CLI/CLI.hpp>

namespace analyze {

void AddFitTests(CLI::App& app);

}  // namespace analyze
