// The standard normal distribution: both tails, the quantile, the complementary error function. All rest on
// the incomplete gamma pair with shape 1/2, so that quantile and tails agree to its tolerance.
#pragma once

#include "frame/side.h"

namespace zul::numerics {

// The complementary error function: Q(1/2, x^2) for x >= 0, 1 + P(1/2, x^2) below. Relative error about
// 6e-10 up to x = 25.66, from where the pair underflows to 0. x > 26.5694 gives 0 and x < -5.625 gives 2;
// |x| < 1e-14 gives 1. Source: M. Abramowitz and
// I. A. Stegun, Handbook of Mathematical Functions, 1964, 6.5.17.
double Erfc(double x);

// Both tails of the standard normal at z; the one away from the centre is computed directly. On failure (z is
// NaN, LevelDomain) both are DBL_MAX.
void normal_df(double z, double* lower, double* upper);

// gamma_newton with the shape 1/2, to the bit and with the error state that it leaves, but without the evaluation that
// would only confirm the last step: one for most targets in place of two.
void NewtonOfOneHalf(double target, double* x, Side side);

// *z >= 0 with the upper tail q in [1e-100, 0.5]. LevelDomain: q outside, *z = -DBL_MAX. LevelNoConvergence:
// the refinement failed. Source of the start: J. D. Beasley and S. G. Springer, Algorithm AS 111, 1977; the
// refinement is gamma_newton.
void normal_upper_quant(double q, double* z);

// *z with the lower tail p in [1e-100, 1). LevelDomain: p outside, *z = -DBL_MAX. LevelNoConvergence: the
// refinement failed. Relative error: 2e-8 for |p - 0.5| < 0.03, 6e-9 up to 0.1, 3e-9 beyond.
void inv_normal_df(double p, double* z);

}  // namespace zul::numerics
