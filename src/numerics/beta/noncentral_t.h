// The noncentral t distribution: both tails.
#pragma once

#include "numerics/beta/student_t.h"

namespace zul::numerics {

// Both tails at t of the noncentral t distribution with df degrees of freedom and the noncentrality delta:
// for t > 0 and m = 0, 1/2, 1, ...
//   lower = Phi(-delta) + sum of (sign of delta)^(2 m) W(m) I_x(m + 1/2, df / 2) / 2,
//   upper = the same sum with 1 - I in place of I, without Phi,
// where x = t^2 / (df + t^2) and W(m) = h^m exp(-h) / gamma(m + 1), h = delta^2 / 2; for t < 0 with the tails
// and the signs of t and delta exchanged. Where delta and t have different signs the terms alternate, and the
// small tail, from the loss of three digits on, is integrated instead: the mean of Phi(delta - t s) over the
// distribution of s = sqrt(chi-square / df), by the trapezoidal rule in log(s).
//
// delta = 0 is t_df, in every bit. LevelUnderflow: a tail is 0 by underflow. LevelDomain, nothing written: df
// <= 0 or NaN. LevelNoncentrality, nothing written: df / 2 + h + 6.1738 |delta| / sqrt(2) > kShapeLimit
// (delta = 0 excepted). Also LevelNoConvergence. The time grows with |delta|.
//
// Worst relative error of a tail, also of the small one where the signs differ: 1.2e-13. Grids:
// noncentral_t.csv; 120 random points, df from 0.5 to 1e5, |delta| from 1e-3 to 50, tails down to 1e-280. Below
// df = 0.01, down to 1e-90: 3.5e-13; noncentral_small_t.csv, and 1000 random points, |delta| up to 25, tails
// down to 1e-60.
//
// Sources: R. V. Lenth, Algorithm AS 243: Cumulative distribution function of the non-central t distribution,
// 1989; D. Benton and K. Krishnamoorthy, Computing discrete mixtures of continuous distributions, 2003.
void t_ncdf(double t, const TShape& shape, double delta, double* lower, double* upper);

}  // namespace zul::numerics
