// Logarithm and exponential near their fixed points.
//
// There are three logarithms of 1 + t. The error is relative, of 6000 random arguments from -1 to 1e8 the worst:
//
//   name               method                               error     domain             used by
//   elementary::Log1p  tables and polynomials               1.1e-16   t > -1             tails and quantiles
//   Log1p              nine terms, or log of 1 + t          1.1e-14   sets errno         incomplete gamma pair
//   FastLog1p          log of 1 + t, rounding corrected     2e-16     t > -1, unchecked  densities
#pragma once

namespace zul::numerics {

// log(1 + t), by nine terms of its series for |t| <= 0.01. t < -1: -DBL_MAX and errno EDOM. The error is worst
// just outside the series' range, where 1 + t rounds.
double Log1p(double t);

// exp(t) - 1, by nine terms of its series for |t| <= 0.01. t outside [kLogUnderflow, kLogOverflow]: -DBL_MAX
// and errno EDOM. Worst relative error: 1e-14, just outside the series' range.
double Expm1(double t);

}  // namespace zul::numerics
