// The binomial distribution: mass, both tails and the quantiles. X is the number of successes in n
// independent trials with the given success probability. The routines with lower-case names report through
// frame::ErrorState.
//
// Sources: C. Loader, Fast and accurate computation of binomial probabilities, 2000 (the mass); mass_sum.h
// (the tails); discrete_quantile.h (the quantiles).
#pragma once

#include "numerics/counts/kept_masses.h"
#include "numerics/gamma/gamma_shape.h"

namespace zul::numerics {

// The parameters with what depends on them alone; an object serves one thread at a time. Domain: n a whole
// number from 0 to 2^31, the probability in [0, 1].
class BinomialShape {
public:
    BinomialShape(double trials, double probability);
    bool Valid() const { return valid_; }
    double N() const { return n_; }
    double Success() const { return success_; }
    double Failure() const { return failure_; }
    // n times each.
    double Successes() const { return n_ * success_; }
    double Failures() const { return n_ * failure_; }
    // k - n success, rounded once.
    double Deviation(double k) const;
    double StirlingWeight() const { return weight_; }
    double StirlingError() const;
    // The rarer of the two outcomes: whether it is the success, and its probability, without a rounding.
    bool SuccessIsRarer() const { return success_ <= 0.5; }
    double Rarer() const { return SuccessIsRarer() ? success_ : failure_; }
    // Whether Kept() has the whole number k >= 0 of the rarer outcomes, and the mass and the lower tail
    // there.
    bool Keeps(double k) const { return k < KeptMasses::kNumbers && n_ * Rarer() < KeptMasses::kMeanLimit; }
    const KeptMasses::Entry& Kept(double k) const;

private:
    double n_;
    double success_;
    double failure_;
    bool valid_;
    // The smaller of the two probabilities in two parts, of which n times the first is exact.
    double head_ = 0;
    double tail_ = 0;
    double weight_ = 1;
    mutable Lazy error_;
    mutable KeptMasses kept_;
};

// P(X = k) for whole k, 0 outside the support and where it is below 1e-307. The shape has to be valid.
// Relative error: as of the tails.
double BinomialMass(double k, const BinomialShape& shape);

// *lower = P(X <= k) and *upper = P(X > k); for k between whole numbers the one below counts. Below the
// support they are (0, 1), from its top on (1, 0). LevelUnderflow: a tail below kTinyArgument is an exact 0.
// LevelDomain (outside the domain, or NaN): nothing is written. LevelNoConvergence if the sum did not end,
// which has not been seen. Worst relative error of the smaller tail: 2e-13 down to 1e-50, 9e-13 down to
// 1e-250, where the exponent of the mass is large; 2e-14 within 5 standard deviations of the mean. Grid:
// 73,000 random (k, n, probability) with n from 1 to 2^31 and k up to 34 standard deviations from the mean,
// against values of 60 digits.
void binomial_df(double k, const BinomialShape& shape, double* lower, double* upper);

// *k = the smallest number with P(X <= k) > p and *c = the share (p - P(X <= k - 1)) / P(X = k) of its atom;
// *c = 1 at k = 0. p = 1 gives n. LevelDomain: p outside [0, 1], or the parameters outside their domain. On
// failure *k = *c = -DBL_MAX.
void binomial_lower_quant(double p, const BinomialShape& shape, double* k, double* c);

// *k = the smallest number with P(X > k) <= q and *c = the share (q - P(X > k)) / P(X = k) of its atom. The
// rest as above.
void binomial_upper_quant(double q, const BinomialShape& shape, double* k, double* c);

}  // namespace zul::numerics
