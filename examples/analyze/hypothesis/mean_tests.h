/// @file
/// The subcommands `t`, `paired` and `two-sample`: t tests of means.
#pragma once

#include "command/command.h"

namespace analyze {

void AddMeanTests(const Command& app);

}  // namespace analyze
