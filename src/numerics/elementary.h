// Logarithm and exponential near their fixed points.
#pragma once

namespace zul::numerics {

// log(1 + t), by nine terms of its series for |t| <= 0.01. t < -1: -DBL_MAX and errno EDOM. Worst relative
// error: 1e-14, just outside the series' range, where 1 + t rounds.
double Log1p(double t);

// exp(t) - 1, by nine terms of its series for |t| <= 0.01. t outside [kLogUnderflow, kLogOverflow]: -DBL_MAX
// and errno EDOM. Worst relative error: 1e-14, just outside the series' range.
double Expm1(double t);

}  // namespace zul::numerics
