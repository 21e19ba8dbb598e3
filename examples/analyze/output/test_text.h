/// @file
/// What the reports of the tests have in common: hypotheses, intervals, p-values.
#pragma once

#include <zul/hypothesis.h>

#include <ostream>
#include <string>
#include <string_view>

#include "command/options.h"

namespace analyze {

/// Quantiles and tails of the distributions are good to at least eight digits.
inline constexpr int kEstimateDigits = 8;
inline constexpr int kTestDigits = 6;

/// "<", "not equal to" or ">".
std::string_view RelationOf(zul::AlternativeHypothesis alternative);

/// The type of the interval that holds the hypothesised values which the test does not reject.
zul::IntervalType IntervalOf(zul::AlternativeHypothesis alternative);

/// An estimate with its label; why there may be none.
void PrintEstimate(std::ostream& out, std::string_view label, double value, std::string_view reason = {});

/// The interval, or the one bound, of `parameter` that belongs to the alternative; why there may be none.
void PrintInterval(std::ostream& out, std::string_view parameter, const TestOptions& options, double lower,
                   double upper, std::string_view reason = {});

/// The null hypothesis about `parameter` and its alternative.
void PrintHypotheses(std::ostream& out, std::string_view parameter, const TestOptions& options);

/// A statistic with its label; why there may be none.
void PrintTest(std::ostream& out, std::string_view label, double value, std::string_view reason = {});

/// A probability of a test as it is printed: below 1e-287 as that bound, since the library's tails end.
std::string PValue(double p, std::string_view reason = {});

/// A p-value with its label; why there may be none.
void PrintP(std::ostream& out, std::string_view label, double p, std::string_view reason = {});

/// The numbers of degrees of freedom.
void PrintDf(std::ostream& out, double df);

/// "p = 0.12", or "p < 0.005" and "p > 0.25" where the status tells that the value is a bound. Throws
/// std::runtime_error for the status of a failure.
std::string PValueText(double pValue, int status);

}  // namespace analyze
