/// @file
/// The subcommand `variance`: the test of one variance by two methods.
#pragma once

#include "command/command.h"

namespace analyze {

void AddVarianceTest(const Command& app);

}  // namespace analyze
