/// @file
/// The correlations of columns, and the subcommand `correlate`.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>

#include "command/command.h"
#include "input/table.h"

namespace analyze {

/// Of the rows that have both values. The p-values are two-sided.
struct Correlation {
    std::string first;
    std::string second;
    unsigned n;
    std::size_t missing;
    double pearson;
    double pearsonP;
    double spearman;
    double spearmanP;
};

/// Throws InputError.
Correlation Correlate(const Table& table, const std::string& first, const std::string& second);

void PrintCorrelation(std::ostream& out, const Correlation& correlation);

void AddCorrelate(const Command& app);

}  // namespace analyze
