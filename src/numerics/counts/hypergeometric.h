// The hypergeometric distribution: mass, both tails and the quantiles. X is the number of successes in a
// sample of n without replacement from a population of N, M of which are successes. The routines with
// lower-case names report through frame::ErrorState.
//
// Sources: C. Loader, Fast and accurate computation of binomial probabilities, 2000 (the form of the mass);
// mass_sum.h (the tails); discrete_quantile.h (the quantiles).
#pragma once

#include <cstdint>

namespace zul::numerics {

// The parameters with what depends on them alone. Domain: whole numbers, N from 0 to 2^31, M and n from 0 to
// N.
class HypergeometricShape {
public:
    HypergeometricShape(double population, double successes, double sample);
    bool Valid() const { return valid_; }
    double Population() const { return population_; }
    double Successes() const { return successes_; }
    double Sample() const { return sample_; }
    // The support.
    double First() const { return first_; }
    double Last() const { return last_; }
    // k N - n M, exact: N times the deviation of k from the mean.
    double ScaledDeviation(double k) const {
        return static_cast<double>(static_cast<std::int64_t>(k) * static_cast<std::int64_t>(population_) -
                                   scaledMean_);
    }
    // Of the margins of the two-by-two table: the quotient of their StirlingWeight and the sum of their
    // StirlingError.
    double StirlingWeight() const { return weight_; }
    double StirlingError() const { return error_; }

private:
    double population_;
    double successes_;
    double sample_;
    bool valid_;
    double first_ = 0;
    double last_ = 0;
    std::int64_t scaledMean_ = 0;
    double weight_ = 1;
    double error_ = 0;
};

// P(X = k) for whole k, 0 outside the support and where it is below 1e-307. The shape has to be valid.
// Relative error: as of the tails.
double HypergeometricMass(double k, const HypergeometricShape& shape);

// *lower = P(X <= k), *above = P(X > k) and *mass = P(X = k), so that *mass + *above = P(X >= k); for k
// between whole numbers the one below counts. Below the support they are (0, 1, 0), above it (1, 0, 0).
// LevelUnderflow: a tail below kTinyArgument is an exact 0. LevelDomain (outside the domain, or NaN): nothing
// is written. LevelNoConvergence if the sum did not end, which has not been seen. Worst relative error of the
// smaller tail: 2e-13 down to 1e-50, 8e-13 down to 1e-250, where the exponent of the mass is large; 2e-14
// within 5 standard deviations of the mean. Grid: 28,000 random (k, N, M, n) with N from 1 to 2^31 and k up
// to 34 standard deviations from the mean, against values of 60 digits.
void hypergeo_df(double k, const HypergeometricShape& shape, double* lower, double* above, double* mass);

// *k = the smallest number with P(X <= k) > p and *c = the share (p - P(X <= k - 1)) / P(X = k) of its atom;
// *c = 1 at the first number of the support. p = 1 gives the last one. LevelDomain: p outside [0, 1], or the
// parameters outside their domain. On failure *k = *c = -DBL_MAX.
void hypergeo_lower_quant(double p, const HypergeometricShape& shape, double* k, double* c);

// *k = the smallest number with P(X > k) <= q and *c = the share (q - P(X > k)) / P(X = k) of its atom, for
// any q > 0. The rest as above.
void hypergeo_upper_quant(double q, const HypergeometricShape& shape, double* k, double* c);

}  // namespace zul::numerics
