/// @file
/// The subcommand `distribution`: a small table of one distribution.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace analyze {

struct DistributionOptions {
    std::string family;              ///< a name of the library, such as Gamma
    std::vector<double> parameters;  ///< in the order of the library's function
    std::vector<double> x;           ///< where density and tails are wanted
    std::vector<double> p;           ///< whose quantiles are wanted; one of the two lists is empty
    bool upper = false;              ///< whether p are upper tails
};

/// Writes the table. Throws InputError, before anything is written.
void PrintDistribution(std::ostream& out, const DistributionOptions& options);

}  // namespace analyze
