/// @file
/// The part of the report that describes one sample: table and boxplot.
#pragma once

#include <zul/descriptive.h>

#include <array>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace analyze {

/// At most as many values as an unsigned counts. Throws std::length_error.
template <typename T>
unsigned CountOf(const std::vector<T>& values) {
    if (values.size() > std::numeric_limits<unsigned>::max()) throw std::length_error("too many values");
    return static_cast<unsigned>(values.size());
}

/// Throws std::runtime_error unless the status of `what` is that of success.
void Expect(int status, const std::string& what);

struct Summary {
    unsigned n;
    double mean;
    double standardDeviation;  ///< NaN for a single value
    double skewness;
    double kurtosis;
    double trimmedMean;
    std::array<double, 5> modes;
    unsigned modeCount;
    unsigned modeFrequency;
    zul::v1::FiveNumberSummary five;
    zul::v1::KelBoxplotHelper box;
};

/// `confidence` is that of the interval for the median. Throws std::runtime_error where the library fails.
Summary Summarise(const std::vector<double>& values, double confidence);

void PrintSummary(std::ostream& out, const Summary& summary, double confidence);

/// The values, at least one, on a line of text: the quartiles as a box, the rest as whiskers and outliers.
void PrintBoxplot(std::ostream& out, const std::vector<double>& values, const Summary& summary);

}  // namespace analyze
