// What all hypothesis tests share: bounds from an estimate and its standard error, p-values from a statistic.
#pragma once

#include "zul/hypothesis.h"

namespace zul::hypothesis {

// The bounds estimate -+ q * standardError, q the standard normal quantile at (confidence + 1) / 2 for a
// two-sided interval and at the confidence itself for a single bound; the open side is infinite.
// kBadIntervalType: both bounds are NaN. A confidence without a quantile gives NaN for the bounds that need it,
// and kSuccess.
int NormalInterval(double confidence, IntervalType type, double estimate, double standardError, double* lower,
                   double* upper);

// The same with the quantile of the t distribution.
int TInterval(double df, double confidence, IntervalType type, double estimate, double standardError,
              double* lower, double* upper);

// The standard normal quantile of a two-sided interval, at (confidence + 1) / 2.
double TwoSidedNormalQuantile(double confidence);

// The standard normal p-value of z. z NaN: NaN; z infinite, or an unknown alternative: 0.
double NormalTestPValue(double z, AlternativeHypothesis alternative);

// The p-value of t with df degrees of freedom. NaN and infinite t as above; df infinite: the normal one; df not
// positive: NaN.
double TTestPValue(double t, double df, AlternativeHypothesis alternative);

}  // namespace zul::hypothesis
