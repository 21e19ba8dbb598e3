/// @file
/// The subcommands "two-variances" and "variances".
#pragma once

#include "command/command.h"

namespace analyze {

void AddVarianceComparisons(const Command& app);

}  // namespace analyze
