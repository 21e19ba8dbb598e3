// The quantile of a distribution on whole numbers, with the share of the atom there that belongs to the tail
// asked for: the search behind the routines "poisson_lower_quant", "binomial_upper_quant" and their like.
#pragma once

#include "frame/error_state.h"

namespace zul::numerics {

// Both tails at a whole number k: P(X <= k) and P(X > k).
struct DiscreteTails {
    double lower;
    double upper;
};

// A distribution on the whole numbers from first to last, with its parameters in it.
class DiscreteFamily {
public:
    DiscreteFamily(double firstNumber, double lastNumber) : first(firstNumber), last(lastNumber) {}
    // Both tails at the whole number k, first <= k <= last: the very numbers of the family's cumulative
    // routine, so that cumulative and quantile agree. False: failed, and frame::ErrorState says how.
    virtual bool Evaluate(double k, DiscreteTails* tails) const = 0;

    // Finite. For a distribution without an upper end, last is where its cumulative routine ends.
    const double first;
    const double last;

protected:
    // Deliberate: trivial, since a trap may end Evaluate.
    ~DiscreteFamily() = default;
};

// A whole number near the quantile with the lower tail p or, if upper, the upper tail p, from the first three
// moments; finite for any p and any sd >= 0. Source: R. A. Fisher and E. A. Cornish,
// The percentile points of distributions having known cumulants, 1960, the first correction.
double CornishFisherStart(double mean, double sd, double skewness, double p, bool upper);

// *k = the smallest whole number with P(X <= k) > p, *c = (p - P(X <= k - 1)) / P(X = k), in [0, 1).
// Deliberate: *c = 1 at *k = first, so that a caller who goes one down for a vanishing share stays in the
// support. p = 0 gives first, p = 1 gives last, both with *c = 1. The search begins at the finite number
// start.
//
// On failure *k = *c = -DBL_MAX. LevelDomain: p is outside [0, 1], or the quantile lies beyond last.
// LevelNoConvergence: the search did not end. The level of Evaluate if that failed. Each of them is reported
// under the given name.
void DiscreteLowerQuantile(const DiscreteFamily& family, double p, double start,
                           const frame::RoutineName& name, double* k, double* c);

// *k = the smallest whole number with P(X > k) <= q, *c = (q - P(X > k)) / P(X = k), in [0, 1]. q = 0 gives
// last and *c = 0. The rest as above.
void DiscreteUpperQuantile(const DiscreteFamily& family, double q, double start,
                           const frame::RoutineName& name, double* k, double* c);

}  // namespace zul::numerics
