// Quantiles of the beta and F distributions, from the incomplete beta pair.
//
// The routines report through frame::ErrorState. Worst relative error of a quantile and of its complement:
// 1.1e-9, which comes from the pair, times the condition, the smaller tail / (x density); random shapes from
// 1e-6 to 1e7, tails down to 1e-300. Sources: G. W. Cran, K. J. Martin and G. E. Thomas, Remark AS R19 and
// Algorithm AS 109: a remark on algorithms AS 63 and AS 64, 1977 (the start); E. Halley's iteration for the
// logarithm of the tail as a function of log(x / (1 - x)), between bounds.
#pragma once

#include "frame/side.h"
#include "numerics/beta/beta_shapes.h"

namespace zul::numerics {

// *x with the lower tail p in [0, 1], and *complement = 1 - *x, each to full relative precision, so that at
// the end |tail - target| <= 1e-9 target for the smaller of the two tails. LevelUnderflow: the one that
// underflows is 0. LevelDomain (p outside [0, 1], a shape outside (0, kShapeLimit], or NaN): both are
// -DBL_MAX. LevelNoConvergence: seen for shapes below 1e-280, and for targets below 1e-285
// with one shape near 1e-4 and the other above 1e5; both are -DBL_MAX. A target below 1e-288 is met by the
// logarithm of its tail, where beta_df itself is an exact 0.
void beta_lower_quant(double p, const BetaShapes& shapes, double* x, double* complement);

// The same for the upper tail q.
void beta_upper_quant(double q, const BetaShapes& shapes, double* x, double* complement);

// Either, for tests: with the last evaluation, which the others leave out where it surely changes nothing.
void beta_quant_in_full(double target, const BetaShapes& shapes, Side side, double* x, double* complement);

// Newton's iteration from *x to the point where I, or J for the upper side, is the target, to a relative
// kSeriesTolerance. LevelDomain: the target is outside [0, 1]. LevelNoConvergence: kNewtonLimit steps did not
// do, *x left the domain, or the density vanished.
// Deliberate: the last step, the one that is small enough, is not applied.
void beta_newton(double target, const BetaShapes& shapes, double* x, Side side);

// *value of the F distribution with the lower tail p; the shapes are the halves of its degrees of freedom,
// the numerator's first. LevelUnderflow: *value overflowed to DBL_MAX, which is usable as well. LevelDomain
// and LevelNoConvergence as above, p = 1 is outside as well: -DBL_MAX.
void F_lower_quant(double p, const BetaShapes& halves, double* value);

// The same for the upper tail q > 0.
void F_upper_quant(double q, const BetaShapes& halves, double* value);

}  // namespace zul::numerics
