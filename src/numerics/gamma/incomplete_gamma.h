// The regularised incomplete gamma pair P(a, x) and Q(a, x) = 1 - P(a, x), always computed together, the
// smaller one directly. a is the shape, x the argument, the scale is 1.
//
// Routines with lower-case names report through frame::ErrorState.
// Sources: W. Gautschi, A computational procedure for incomplete gamma functions, 1979 (the small-argument
// form, the series and the split); A. R. DiDonato and A. H. Morris, Computation of the incomplete gamma
// function ratios and their inverse, 1986 (the expansion of the upper side); M. Abramowitz and I. A. Stegun,
// Handbook of Mathematical Functions, 1964, 6.5.29 and 6.5.31 (series and continued fraction).
#pragma once

#include "frame/side.h"
#include "numerics/gamma/gamma_shape.h"

namespace zul::numerics {

// The branch of "gamma_df" that gave the result, left in ErrorState().method. To the codes 60, 90 and 100
// comes the method that "gamma_Jax" used: 0 expansion, 1 continued fraction, 2 small argument.
enum GammaMethod : int {
    GammaTinyArgument = 1,
    GammaHugeArgument = 2,
    GammaLower = 10,
    GammaLowerCannotRise = 20,
    GammaLowerUnderflow = 30,
    GammaLowerByLog = 40,
    GammaSmallShapeAndArgument = 50,
    GammaUpper = 60,
    GammaUpperFalling = 70,
    GammaUpperCannotRise = 80,
    GammaUpperUnderflow = 90,
    GammaUpperByLog = 100,
};

// Statuses of the routines that return one.
inline constexpr int kConverged = 0;
inline constexpr int kNotConverged = 4;

// The logarithm of the gamma density, (a - 1) log(x) - x - log(gamma(a)), without its cancellation near
// x = a.
double GammaLogDensity(const GammaShape& shape, double x);

// Both tails at x and the density; density may be null, which saves its exponential where no tail needs it.
// Relative error of the smaller tail about 6e-10, from kSeriesTolerance; 1.8e-9 for shapes of some millions, 30
// deviations from the centre. LevelUnderflow: a tail underflowed to an exact 0. LevelDomain
// (a <= 0, a > kShapeLimit, x < 0, or NaN), LevelNoConvergence: nothing is written. x < kTinyArgument: the
// density is not written.
void gamma_df(double x, const GammaShape& shape, double* lower, double* upper, double* density);

// *sum = 1 + x / (a + 1) + x^2 / ((a + 1)(a + 2)) + ..., with P = x^a exp(-x) / gamma(a + 1) * sum.
int gamma_Iax(const GammaShape& shape, double x, double* sum);

// *factor = 1 + (a - 1) / x + (a - 1)(a - 2) / x^2 + ..., with Q = density * factor.
int gamma_Jax(const GammaShape& shape, double x, double* factor);

// The upper incomplete gamma function gamma(b, x), not regularised, for 0 <= b < 1 and 0 < x < 1.
double UpperGammaSmall(double x, const FractionalShape& shape);

// *factor = Q / density for the shape b in [0, 1).
int GammaContinuedFraction(double x, const FractionalShape& shape, double* factor);

// Newton's iteration from *x to the point where P, or Q for the upper side, is the target, to a relative
// kSeriesTolerance. LevelDomain: the target is outside [0, 1]. LevelNoConvergence: kNewtonLimit steps did not
// do, *x left the domain, or the density vanished.
// Deliberate: the last step, the one that is small enough, is not applied.
void gamma_newton(double target, const GammaShape& shape, double* x, Side side);

}  // namespace zul::numerics
