/// @file
/// The subcommands `proportion` and `two-proportions`.
#pragma once

#include "command/command.h"

namespace analyze {

void AddProportionTests(const Command& app);

}  // namespace analyze
