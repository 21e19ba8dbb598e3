/// @file
/// The subcommands sign, wilcoxon and mann-whitney.
#pragma once

#include "command/command.h"

namespace analyze {

void AddRankTests(const Command& app);

}  // namespace analyze
