// Logarithms for densities: with the absolute error that an exponent can bear, and in half the time from
// argument to result that LogGammaFn and elementary::Log1p take, since few steps wait for others. The other
// log-gammas are listed in numerics/gamma.h, the other log1ps in numerics/elementary.h.
#pragma once

#include "elementary/logarithm.h"

namespace zul::numerics {

// The largest sum of shapes for which densities take these; beyond it the terms of an exponent cancel.
inline constexpr double kFastLimit = 50;

// log(gamma(a)) for 0 < a <= kFastLimit, with an absolute error of at most 6e-14. Source: M. Abramowitz and
// I. A. Stegun, Handbook of Mathematical Functions, 1964, 6.1.41 for a >= 10, else at a + 8, and 6.1.15.
double FastLogGamma(double a);

// log(gamma(a) gamma(b) / gamma(a + b)) for a, b > 0 and a + b <= kFastLimit: twice that error.
double FastLogBeta(double a, double b);

// log(gamma(b + 1/2) / (gamma(b) sqrt(b))) for b >= 10. Source: its expansion in powers of 1 / b, from
// 6.1.40.
double FastLogHalfStep(double b);

// log(1 + t) for t > -1, to a few roundings. Source: W. Kahan's correction of the rounding of 1 + t, in the
// Hewlett-Packard HP-15C Advanced Functions Handbook, 1982.
inline double FastLog1p(double t) {
    const double sum = 1 + t;
    return elementary::Log(sum) + (t - (sum - 1)) / sum;
}

// The domain of log-gammas in a density, that of frame::LogGamma, with its exceptions.
void RequireGammaArgument(double a);

}  // namespace zul::numerics
