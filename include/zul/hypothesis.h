/// @file
/// Hypothesis tests with confidence bounds.
///
/// The caller owns a result record, sets its inputs (counts always; the summary statistics too for the
/// overloads without data) and passes it to a Run function, which fills the outputs and returns a status.
/// A constructor sets every double to NaN and every count to 0, so that a field that a routine does not
/// reach reads NaN.
///
/// | status | meaning |
/// |---|---|
/// | 0 | success |
/// | 30001 | working storage could not be obtained |
/// | 30002 | the interval type is none of the three: both bounds are NaN, the test is not computed |
///
/// An overload with an alternative does all that the one without it does, then the test. Data arrays are only
/// read; their lengths are the counts in the record. Values are not checked: NaN and infinities go through
/// the arithmetic into the results with status 0. A confidence level without a quantile (1 and above; 0 and
/// below for a single bound, -1 and below for both; NaN) gives NaN for the bounds that need it, an alternative
/// that is none of the three a p-value of 0, both with status 0. An infinite statistic has the p-value 0 for
/// every alternative.
///
/// The routines set no floating-point mode but around the distribution functions that they call, which leave
/// the thread in the default mode. Called in that mode they do not throw. Calls from several threads have to
/// be serialised.
#pragma once

#include <zul/export.h>

namespace zul {

/// Which bounds to compute.
enum class IntervalType : int {
    UpperBound = -1,  ///< upper bound at the confidence level; the lower bound is minus infinity
    TwoSided = 0,     ///< both bounds, each at (confidence + 1) / 2
    LowerBound = 1    ///< lower bound at the confidence level; the upper bound is plus infinity
};

/// The alternative to the hypothesised value. The numbers are those of EAlternative.
enum class AlternativeHypothesis : int {
    LessThan = -1,   ///< p-value: the lower tail
    NotEqual = 0,    ///< p-value: twice the smaller tail
    GreaterThan = 1  ///< p-value: the upper tail
};

namespace v0 {

/// One-sample z test of a mean with known standard deviation.
struct ZUL_API OneSampleZ {
    double mean;               ///< sample mean; output with data, else input
    double standardDeviation;  ///< sample standard deviation, divisor n - 1; output with data, else untouched
    double standardError;      ///< sigma / sqrt(n)
    double lowerBound;         ///< lower confidence bound of the mean
    double upperBound;         ///< upper confidence bound of the mean
    double zStatistic;         ///< (mean - mu0) / standardError
    double pValue;             ///< p-value of the test
    unsigned n;                ///< number of values; input
    OneSampleZ();
};

/// @name One-sample z test
/// Confidence bounds of a normal mean, mean -+ q sigma / sqrt(n) with the standard normal quantile q, and the
/// test of the hypothesis that the mean is mu0.
/// @{

/// Mean and standard deviation from data, then the bounds.
/// @param record in: n; out: mean, standardDeviation, standardError, bounds
/// @param data in: record->n values
/// @param sigma the known standard deviation of one value (not the variance)
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @return 0 or 30002
ZUL_API int RunOneSampleZ(OneSampleZ* record, const double* data, double sigma, double confidence,
                          IntervalType type);

/// Mean and standard deviation from data, then the bounds and the test.
/// @param record in: n; out: all other fields
/// @param data in: record->n values
/// @param sigma the known standard deviation of one value (not the variance)
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to mean = mu0
/// @param mu0 the hypothesised mean
/// @return 0 or 30002
ZUL_API int RunOneSampleZ(OneSampleZ* record, const double* data, double sigma, double confidence,
                          IntervalType type, AlternativeHypothesis alternative, double mu0);

/// The bounds from a given mean.
/// @param record in: n, mean; out: standardError, bounds
/// @param sigma the known standard deviation of one value (not the variance)
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @return 0 or 30002
ZUL_API int RunOneSampleZ(OneSampleZ* record, double sigma, double confidence, IntervalType type);

/// The bounds and the test from a given mean.
/// @param record in: n, mean; out: standardError, bounds, zStatistic, pValue
/// @param sigma the known standard deviation of one value (not the variance)
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to mean = mu0
/// @param mu0 the hypothesised mean
/// @return 0 or 30002
ZUL_API int RunOneSampleZ(OneSampleZ* record, double sigma, double confidence, IntervalType type,
                          AlternativeHypothesis alternative, double mu0);

/// @}

}  // namespace v0
}  // namespace zul
