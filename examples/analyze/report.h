/// @file
/// The subcommand `report`: summary and boxplot of one column, its correlation with another, z interval and
/// z tests of its mean.
#pragma once

#include <optional>
#include <ostream>
#include <string>

namespace analyze {

struct ReportOptions {
    std::string file;
    std::string column;
    std::optional<std::string> with;  ///< second column, of which the correlations are wanted
    std::optional<double> sigma;      ///< known standard deviation of one value; absent: that of the sample
    double mu = 0;                    ///< hypothesised mean
    double confidence = 0.95;         ///< confidence level of the intervals, in (0, 1)
};

/// Writes the report. Throws InputError, before anything is written.
void PrintReport(std::ostream& out, const ReportOptions& options);

}  // namespace analyze
