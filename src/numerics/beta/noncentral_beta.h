// The noncentral beta and F distributions: both tails, as Poisson mixtures of incomplete beta pairs.
#pragma once

#include "numerics/beta/beta_shapes.h"

namespace zul::numerics {

// Both tails of the noncentral beta distribution at x in [0, 1]: the sums over j >= 0 of
// exp(-h) h^j / j! times I_x(a + j, b), and times its complement, with h = noncentrality / 2. The second form
// takes 1 - x as well, for x whose complement is known better than by subtraction.
//
// noncentrality = 0 is beta_df, in every bit. LevelUnderflow: a tail is 0 by underflow. LevelDomain, nothing
// written: x outside [0, 1], shapes not in (0, kShapeLimit], noncentrality < 0. LevelNoConvergence:
// noncentrality above 2 kMixtureMeanLimit, or a continued fraction that did not converge. The time grows with
// the square root of the noncentrality.
//
// Worst relative error of a tail: 7e-13, where x and its rounding count 5,000 times; else 2.4e-13. Grids:
// noncentral_beta.csv; 150 random points, a from 1e-4 to 1e4, b from 0.01 to 1e4, noncentrality from 1e-3 to
// 1e4, tails down to 1e-280. A shape a from kTinyShape to 0.1 that draws the distribution to within 1e-4 of 0
// leaves the upper tail there with an absolute error of some 1e-16. Both shapes from 5e-10 to 0.1: 4.7e-13;
// noncentral_small_f.csv, and 15,000 random points, f from 1e-30 to 1e280, noncentrality up to 1e4, tails
// down to 1e-280. A shape below kTinyShape, down to 1e-100, counts likewise; smaller ones count as 1e-100.
//
// The pair is 0 and 1 for x below kTinyArgument, 1 and 0 for 1 - x below it, or, with b < 1, below the
// smallest normal number.
//
// Sources: see numerics/beta_mixture.h.
void beta_ncdf(double x, const BetaShapes& shapes, double noncentrality, double* lower, double* upper);
void beta_ncdf(double x, double complement, const BetaShapes& shapes, double noncentrality, double* lower,
               double* upper);

// Both tails of the noncentral F distribution with df1 and df2 degrees of freedom at f >= 0: beta_ncdf at
// x = df1 f / (df1 f + df2) with the shapes df1 / 2 and df2 / 2. The second form takes these shapes prepared.
//
// LevelDomain, nothing written: f < 0, df1 or df2 not in (0, 2 kShapeLimit], noncentrality < 0. Otherwise as
// beta_ncdf.
void F_ncdf(double f, double df1, double df2, double noncentrality, double* lower, double* upper);
void F_ncdf(double f, const BetaShapes& halfDf, double noncentrality, double* lower, double* upper);

}  // namespace zul::numerics
