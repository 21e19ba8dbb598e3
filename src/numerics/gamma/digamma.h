#pragma once

namespace zul::numerics {

// The derivative of log(gamma(x)) for x > 0, else NaN; absolute error about 1e-11.
double Digamma(double x);

}  // namespace zul::numerics
