/// @file
/// The subcommand `fit`: all distributions that a column allows, the best one first.
#pragma once

#include "command/command.h"

namespace analyze {

void AddFits(const Command& app);

}  // namespace analyze
