// The Poisson distribution: mass, both tails and the quantiles. The routines with lower-case names report
// through frame::ErrorState.
//
// Sources: C. Loader, Fast and accurate computation of binomial probabilities, 2000 (the mass); mass_sum.h
// (the tails); discrete_quantile.h (the quantiles).
#pragma once

#include "numerics/counts/kept_masses.h"

namespace zul::numerics {

// The mean, which converts by itself, with what depends on it alone. An object serves one thread at a time.
class PoissonShape {
public:
    PoissonShape(double mean) : mean_(mean) {}  // NOLINT: a shape is a number
    double Mean() const { return mean_; }
    // Whether Kept() has the whole number k >= 0, and its mass and lower tail for a mean >= 0.
    bool Keeps(double k) const { return k < KeptMasses::kNumbers && mean_ < KeptMasses::kMeanLimit; }
    const KeptMasses::Entry& Kept(double k) const;

private:
    double mean_;
    mutable KeptMasses kept_;
};

// P(X = k) for whole k >= 0 and a mean > 0; 0 where it is below 1e-307, but for the first numbers. Relative
// error: as of the tails.
double PoissonMass(double k, const PoissonShape& shape);

// *lower = P(X <= k) and *upper = P(X > k); for k between whole numbers the one below counts. k < 0 gives (0,
// 1). LevelUnderflow: a tail below kTinyArgument is an exact 0. LevelDomain (mean < 0, k + 1 > kShapeLimit,
// or NaN): nothing is written. LevelNoConvergence if the sum did not end, which has not been seen. Worst
// relative error of the smaller tail: 1e-13 down to 1e-250, where the exponent of the mass is large. Grid:
// 3000 random (k, mean) with a mean from 0.01 to 7e7 and k up to 34 standard deviations from it, against 40
// digits.
void poisson_df(double k, const PoissonShape& shape, double* lower, double* upper);

// *k = the smallest number with P(X <= k) > p and *c = the share (p - P(X <= k - 1)) / P(X = k) of its atom;
// *c = 1 at k = 0. LevelDomain: p outside [0, 1), mean outside [0, kShapeLimit], or k + 1 > kShapeLimit.
// Also LevelNoConvergence. On failure *k = *c = -DBL_MAX.
void poisson_lower_quant(double p, const PoissonShape& shape, double* k, double* c);

// *k = the smallest number with P(X > k) <= q and *c = the share (q - P(X > k)) / P(X = k) of its atom.
// LevelDomain: q outside (0, 1]; the rest as above.
void poisson_upper_quant(double q, const PoissonShape& shape, double* k, double* c);

}  // namespace zul::numerics
