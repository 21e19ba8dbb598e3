// Distribution evaluations for the hypothesis tests, which set no floating-point state of their own. Each
// runs in the call frame, so that the trapping mode ends with it; arguments for which the result is known
// without the distribution never enter it. All of them: a NaN argument gives NaN, and so does a number of
// degrees of freedom that is not positive.
#pragma once

#include "frame/side.h"

namespace zul {

// Quantiles at p. p infinite or outside (0, 1): NaN.
double FramedNormalQuantile(double p);
// df infinite: NaN.
double FramedTQuantile(double p, double df);
// p = 0: 0.
double FramedChiSqQuantile(double p, double df);
// p = 0: 0; p = 1: 1. A zero shape puts all probability at its end: 0 for a = 0, 1 for b = 0.
double FramedBetaQuantile(double p, double a, double b);

// P-values: one of the tails, or twice the smaller; 0 for an unknown side.
// Deliberate: an infinite z or t gives 0 for every side.
double FramedNormalTail(double z, Side side);
// df infinite: the normal tail.
double FramedTTail(double t, double df, Side side);
double FramedChiSqTail(double x, double df, Side side);

// P(Z <= z).
double FramedNormalLowerTail(double z);
// P(X <= x) of the distributions that begin at 0.
double FramedExponentialLowerTail(double x, double scale);
double FramedWeibullLowerTail(double x, double shape, double scale);

// P(X <= x), or P(X >= x), for whole x and n. p outside [0, 1]: NaN.
double FramedBinomialTail(double x, double n, double p, bool upper);
// BinomialPValue. p0 outside [0, 1], or n above the largest int: NaN.
double FramedBinomialPValue(double x, double n, double p0, Side side);
// P(X <= x), or P(X >= x), for whole numbers and x in the support. A population above the largest int: NaN.
double FramedHypergeometricTail(double x, double population, double successes, double sample, bool upper);

}  // namespace zul
