// Logarithms of gamma and beta functions for densities: with the absolute error that an exponent can bear, and
// in half the time from argument to result that LogGammaFn takes, since no step waits for more than a few others.
#pragma once

namespace zul::numerics {

// The largest sum of shapes for which densities take these; beyond it the terms of an exponent cancel.
inline constexpr double kPromptLimit = 50;

// log(gamma(a)) for 0 < a <= kPromptLimit, with an absolute error of at most 1e-14. Source: M. Abramowitz and
// I. A. Stegun, Handbook of Mathematical Functions, 1964, 6.1.41 for a >= 10, else at a + 8, and 6.1.15.
double PromptLogGamma(double a);

// log(gamma(a) gamma(b) / gamma(a + b)) for a, b > 0 and a + b <= kPromptLimit.
double PromptLogBeta(double a, double b);

// The domain of log-gammas in a density, that of GuardedLogGamma, with its exceptions.
void RequireGammaArgument(double a);

}  // namespace zul::numerics
