/// @file
/// The subcommand `report`: summary and boxplot of one column, its correlation with another, interval and tests of its
/// mean by t or, with a known sd, by z.
#pragma once

#include "command/command.h"

namespace analyze {

void AddReport(const Command& app);

}  // namespace analyze
