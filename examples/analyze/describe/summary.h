/// @file
/// The part of the report that describes one sample: table and boxplot.
#pragma once

#include <zul/descriptive.h>

#include <array>
#include <ostream>
#include <vector>

#include "describe/moments.h"

namespace analyze {

struct Summary {
    Moments moments;
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

/// All but the number of values.
void PrintSummary(std::ostream& out, const Summary& summary, double confidence);

/// The values, at least one, on a line of text: the quartiles as a box, the rest as whiskers and outliers.
void PrintBoxplot(std::ostream& out, const std::vector<double>& values, const Summary& summary);

}  // namespace analyze
