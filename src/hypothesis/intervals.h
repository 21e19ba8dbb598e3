// What all hypothesis tests share: bounds from an estimate and its standard error, p-values from a statistic.
#pragma once

#include "frame/missing_value.h"
#include "frame/status.h"
#include "zul/hypothesis.h"

namespace zul::hypothesis {

// Sets the bounds that the type asks for, lower() and upper(), and the other one to its open end. An unknown
// type: kBadIntervalType, and both are NaN.
template <typename Lower, typename Upper>
int SetBounds(IntervalType type, double openLower, double openUpper, Lower lower, Upper upper,
              double* lowerBound, double* upperBound) {
    switch (type) {
        case IntervalType::UpperBound:
        case IntervalType::TwoSided:
        case IntervalType::LowerBound:
            *lowerBound = type == IntervalType::UpperBound ? openLower : lower();
            *upperBound = type == IntervalType::LowerBound ? openUpper : upper();
            return kSuccess;
    }
    *lowerBound = *upperBound = frame::kQuietNaN;
    return kBadIntervalType;
}

// The probability of the quantile that belongs to a bound: (confidence + 1) / 2 for one of two, and the
// confidence itself for a single one. An unknown type: NaN, for which no quantile is evaluated.
double UpperLevel(double confidence, IntervalType type);
// That of the other tail, from the confidence rather than from the rounded level.
double LowerLevel(double confidence, IntervalType type);

// The bounds estimate -+ q * standardError, q the standard normal quantile at the upper level; the open side is
// infinite. A confidence without a quantile gives NaN for the bounds that need it, and kSuccess.
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
