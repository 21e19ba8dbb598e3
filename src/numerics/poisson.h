// The Poisson distribution: both tails and the quantiles, all on the incomplete gamma pair, so that quantile
// and tails agree. The routines report through frame::errorState.
#pragma once

namespace zul::numerics {

// *lower = P(X <= k), *upper = P(X > k) for X with the given mean, by "gamma_df" at the mean with the shape
// k + 1, of which P is the upper tail here. For k between whole numbers the one below counts; k < 0 gives
// (0, 1). Relative error of the smaller tail about 6e-10, as of "gamma_df". Level 1: a tail underflowed.
// Level 2 (mean < 0, k + 1 > kShapeLimit, or NaN): nothing is written. Level 4: no convergence, nothing is
// written. Source: M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions, 1964, 26.4.21.
void poisson_df(double k, double mean, double* lower, double* upper);

// *k = the smallest number with P(X <= k) > p and *c = the share (p - P(X <= k - 1)) / P(X = k) of its atom;
// *c = 1 at k = 0. Level 2: p outside [0, 1), mean outside [0, kShapeLimit], or k + 1 > kShapeLimit. Level 4:
// no convergence. On failure *k = *c = -DBL_MAX. Source: discrete_quantile.h.
void poisson_lower_quant(double p, double mean, double* k, double* c);

// *k = the smallest number with P(X > k) <= q and *c = the share (q - P(X > k)) / P(X = k) of its atom.
// Level 2: q outside (0, 1]; the rest as above.
void poisson_upper_quant(double q, double mean, double* k, double* c);

}  // namespace zul::numerics
