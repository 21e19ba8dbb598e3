// The gamma function, its logarithm and Stirling's remainder.
// Source for all three: Stirling's asymptotic series with seven Bernoulli terms for arguments of 10 or more;
// smaller arguments are raised by the recurrence gamma(a) = gamma(a + 1) / a. M. Abramowitz and I. A. Stegun,
// Handbook of Mathematical Functions, 1964, 6.1.15 and 6.1.41.
//
// There are four logarithms of it. The error is relative, absolute where the result is below 1, the worst of
// 6000 random arguments from 1e-12 to 1e8, as far as they are in the domain:
//
//   name             method                    error  domain                  used by
//   frame::LogGamma  Lanczos, nine terms       3e-15  a > 4e-16, throws       none; densities have its domain
//   LogGammaFn       Stirling, seven terms     6e-15  a > 0, sets errno       incomplete gamma and beta pairs,
//                                                                             binomial coefficients
//   FastLogGamma     Stirling, few steps wait  6e-15  0 < a <= 50, unchecked  densities
//   LogFactorial     what a shape keeps        4e-16  a > 0, of a + 1         gamma_quantiles.cpp
#pragma once

namespace zul::numerics {

// The gamma function. a <= 0: 0 and errno EDOM; overflow: DBL_MAX and errno ERANGE.
double GammaFn(double a);

// The logarithm of the gamma function. a <= 0: -DBL_MAX and errno EDOM; overflow: DBL_MAX and errno ERANGE.
double LogGammaFn(double a);

// log(gamma(a + 1)) - a log(a) + a: what Stirling's formula a log(a) - a leaves over. a < 0: DBL_MAX and
// errno EDOM.
double StirlingTerm(double a);

// The sum of B_2k / (2k (2k - 1) y^(2k - 1)), k = 1 to 7, for y >= 10: the logarithm of what Stirling's product
// lacks.
double StirlingCorrection(double y);

// The logarithm of the binomial coefficient of p over q, for whole numbers: -infinity for q > p, 0 at both
// ends. Arguments q and p - q give identical bits.
double LogBinomialCoefficient(double p, double q);

}  // namespace zul::numerics
