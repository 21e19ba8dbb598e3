/// @file
/// What the reports of the tests have in common: hypotheses, intervals, p-values.
#pragma once

#include <zul/hypothesis.h>

#include <ostream>
#include <string>
#include <string_view>

#include "options.h"

namespace analyze {

/// Quantiles and tails of the distributions are good to at least eight digits.
inline constexpr int kEstimateDigits = 8;
inline constexpr int kTestDigits = 6;

/// "<", "not equal to" or ">".
std::string_view RelationOf(zul::AlternativeHypothesis alternative);

/// The type of the interval that holds the hypothesised values which the test does not reject.
zul::IntervalType IntervalOf(zul::AlternativeHypothesis alternative);

/// An estimate with its label.
void PrintEstimate(std::ostream& out, std::string_view label, double value);

/// The interval, or the one bound, of `parameter` that belongs to the alternative.
void PrintInterval(std::ostream& out, std::string_view parameter, const TestOptions& options, double lower,
                   double upper);

/// The null hypothesis about `parameter` and its alternative.
void PrintHypotheses(std::ostream& out, std::string_view parameter, const TestOptions& options);

/// A statistic or p-value with its label.
void PrintTest(std::ostream& out, std::string_view label, double value);

/// "p = 0.12", or "p < 0.005" and "p > 0.25" where the status tells that the value is a bound. Throws
/// std::runtime_error for the status of a failure.
std::string PValueText(double pValue, int status);

}  // namespace analyze
