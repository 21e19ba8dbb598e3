// The gamma function, its logarithm and Stirling's remainder.
// Source for all three: Stirling's asymptotic series with seven Bernoulli terms for arguments of 10 or more;
// smaller arguments are raised by the recurrence gamma(a) = gamma(a + 1) / a. M. Abramowitz and I. A. Stegun,
// Handbook of Mathematical Functions, 1964, 6.1.15 and 6.1.41.
#pragma once

namespace zul::numerics {

// The gamma function. a <= 0: 0 and errno EDOM; overflow: DBL_MAX and errno ERANGE.
double GammaFn(double a);

// The logarithm of the gamma function, by Stirling's series (frame::LogGamma is Lanczos'). a <= 0: -DBL_MAX
// and errno EDOM; overflow: DBL_MAX and errno ERANGE.
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
