// The regularised incomplete beta pair I_x(a, b) and J_x(a, b) = 1 - I_x(a, b), always computed together, the
// smaller one directly, on the side of 0.5 where x or 1 - x is the smaller.
//
// Routines with lower-case names report through frame::ErrorState.
// Sources: M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions, 1964, 26.5.4 and 15.3.4 (the
// series), 15.2 (the upper factor); A. R. DiDonato and A. H. Morris, Algorithm 708: significant digit
// computation of the incomplete beta function ratios, 1992 (small shapes); L. Lorentzen and H. Waadeland,
// Continued Fractions with Applications, 1992, VI.1 (Gauss's continued fraction); C. Loader, Fast and
// accurate computation of binomial probabilities, 2000 (the density).
#pragma once

#include "numerics/beta/beta_shapes.h"

namespace zul::numerics {

// The branch of "beta_df" that gave the result, left in ErrorState().method; 0 outside or at the ends.
enum BetaMethod : int {
    BetaLower = 10,
    BetaLowerUnderflow = 15,
    BetaLowerCannotRise = 20,
    BetaLowerByLogUnderflow = 30,
    BetaLowerByLog = 40,
    BetaSmallShape = 50,
    BetaUpper = 60,
    BetaUpperCannotRise = 70,
    BetaUpperByLogUnderflow = 80,
    BetaUpperByLog = 90,
};

// What the density is where it is not computed: at the ends and for vanishing shapes.
inline constexpr double kNoBetaDensity = -1;

// Both tails at x and the density x^(a - 1) (1 - x)^(b - 1) / B(a, b); density may be null, which saves its
// exponential where no tail needs it. Worst relative error of a tail: 9.6e-10, from kSeriesTolerance, and of
// the density 3e-12 (4e-13 for a + b < 1e5); random shapes from 1e-6 to 1e7, tails down to 1e-280.
// LevelUnderflow: a tail underflowed to an exact 0, or a shape vanishes beside the other. LevelDomain (x
// outside [0, 1], a or b outside [0, kShapeLimit], both 0, or NaN): nothing is written. LevelNoConvergence:
// nothing is written but the density. x < kTinyArgument, x = 1 and shapes that both vanish:
// the density is kNoBetaDensity.
void beta_df(double x, const BetaShapes& shapes, double* lower, double* upper, double* density);

// The same for callers that know 1 - x, too, to full precision: a complement below kTinyArgument counts as 0.
void beta_df(double x, double complement, const BetaShapes& shapes, double* lower, double* upper,
             double* density);

// Whether beta_df at x, where it was last called at a point whose odds x / (1 - x) differ by at most a relative 0.005
// divided by the count of terms, would sum the same terms of the same series again and leave the same method and count
// in ErrorState(), which stays as it is. False also where that is not sure. Both points are on the same side of 0.5 and
// far from an underflow.
bool RepeatsBetaTerms(double x, double complement, const BetaShapes& shapes);

// The logarithm of the beta density at y, log(y^(p - 1) (1 - y)^(q - 1) / B(p, q)), for 0 < y < 1 and
// positive shapes. y >= kTinyArgument. Worst absolute error where the density does not underflow: 4e-13 for
// p + q < 1e5, 3e-12 up to 6e7.
double BetaLogDensity(const BetaOrientation& shapes, double y);

// The two factors and the fraction are for what beta_df hands them: y >= kTinyArgument, 1 - y likewise, shapes
// that are normal numbers up to kShapeLimit. Elsewhere they may trap.

// *factor with I = factor * density at y in (0, 1): y / p times the hypergeometric series. y is meant to be
// below the median. Status kNotConverged and LevelNoConvergence: 1e6 terms did not do, or they grow.
int beta_Iabx(const BetaOrientation& shapes, double y, double* factor);

// *factor with J = factor * exp(log(1 - y) + log(density) - log(q)), 0 < y < 1. y is meant to be above the
// median. Status kNotConverged and LevelNoConvergence: neither the expansion nor the continued fraction did
// converge.
int beta_Jabx(const BetaOrientation& shapes, double y, double* factor);

// *value = 2F1(1 - b, 1; q + 1; -(1 - y) / y) for 0 <= b <= 1, q >= 0, 0 < y < 1 by Gauss's continued
// fraction. False: 1e4 steps did not do.
bool BetaContinuedFraction(double b, double q, double y, double* value);

}  // namespace zul::numerics
