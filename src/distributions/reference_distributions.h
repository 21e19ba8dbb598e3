// The distributions that the statistics of the hypothesis tests are referred to: quantiles, tails and p-values
// for callers that set no floating-point state of their own. Each runs in the call frame, so that the trapping
// mode ends with it; arguments for which the result is known without the distribution never enter it. All of
// them: a NaN argument gives NaN, and so does a number of degrees of freedom that is not positive.
#pragma once

#include "frame/side.h"

namespace zul::reference {

// Quantiles at p. p infinite or outside (0, 1): NaN.
double NormalQuantile(double p);
// df infinite: NaN.
double TQuantile(double p, double df);
// p = 0: 0.
double ChiSqQuantile(double p, double df);
// p outside (0, 1): NaN.
double FQuantile(double p, double df1, double df2);
// p = 0: 0; p = 1: 1. A zero shape puts all probability at its end: 0 for a = 0, 1 for b = 0.
double BetaQuantile(double p, double a, double b);

// P-values: one of the tails, or twice the smaller; 0 for an unknown side.
// Deliberate: an infinite z or t gives 0 for every side.
double NormalPValue(double z, Side side);
// df infinite: the normal tail.
double TPValue(double t, double df, Side side);
double ChiSqPValue(double x, double df, Side side);
// x infinite: NaN.
double FPValue(double x, double df1, double df2, Side side);

// P(Z <= z).
double NormalLowerTail(double z);
// P(X <= x) of the distributions that begin at 0.
double ExponentialLowerTail(double x, double scale);
double WeibullLowerTail(double x, double shape, double scale);

// P(X <= x), or P(X >= x), for whole x and n. p outside [0, 1]: NaN.
double BinomialTail(double x, double n, double p, bool upper);
// As zul::BinomialPValue. p0 outside [0, 1], or n above the largest int: NaN.
double BinomialPValue(double x, double n, double p0, Side side);
// P(X <= x), or P(X >= x), for whole numbers and x in the support. A population above the largest int: NaN.
double HypergeometricTail(double x, double population, double successes, double sample, bool upper);

}  // namespace zul::reference
