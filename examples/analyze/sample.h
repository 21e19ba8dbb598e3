/// @file
/// The subcommand `sample`: random deviates, and their histogram beside the density.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace analyze {

struct SampleOptions {
    std::string family;              ///< a name of the library, such as Gamma
    std::vector<double> parameters;  ///< in the order of the library's sampler
    double n = 1000;                 ///< number of deviates, a whole number from 1 to 10,000,000
    std::optional<double> seed;      ///< absent: from the clock
};

/// Writes the seed, the moments and the histogram. Throws InputError, before anything is written.
void PrintSample(std::ostream& out, const SampleOptions& options);

}  // namespace analyze
