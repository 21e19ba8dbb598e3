// Both tails of the noncentral chi-square distribution. The routines report through frame::ErrorState.
#pragma once

#include "numerics/gamma/gamma_shape.h"

namespace zul::numerics {

// *lower = P(Y <= x), *upper = P(Y > x) for Y = X / 2, where X is noncentral chi-square with twice the shape
// in degrees of freedom and the given noncentrality: the mixture of the incomplete gamma pairs with the
// shapes a + j over a Poisson number j with the mean noncentrality / 2.
//
// The smaller tail is summed by itself, all terms positive; the upper one from 0.1 up may be the complement
// of the lower. Noncentrality 0 gives the bits of "gamma_df". LevelUnderflow: the smaller tail underflowed to
// an exact 0. LevelDomain (a outside (0, kShapeLimit], x < 0, noncentrality < 0, or NaN): nothing is written.
// LevelNoConvergence (a tail that is no exact 0 with a noncentrality above 2e10): nothing is written. Worst
// relative error of the smaller tail at 1000 random points, 2a and the noncentrality from 1e-3 to 5e3, tails
// from 1e-285: 3.1e-13.
//
// Sources: D. Benton and K. Krishnamoorthy, Computing discrete mixtures of continuous distributions, 2003
// (summation outward from the largest term); L. Birge, An alternative point of view on Lepski's method, 2001,
// lemma 8.1 (the bounds beyond which a tail is 0).
void gamma_ncdf(double x, const GammaShape& shape, double noncentrality, double* lower, double* upper);

// Whether "gamma_ncdf" is "gamma_df" for a noncentrality.
bool IsCentral(double noncentrality);

// The tails of the noncentral chi-square distribution at x with df >= 1e-323 degrees of freedom: gamma_ncdf at x /
// 2 with the shape df / 2, and its levels.
void chi2_ncdf(double x, double df, double noncentrality, double* lower, double* upper);

}  // namespace zul::numerics
