// What the derivatives of log(gamma(x)) leave over log(x) and 1 / x, to full relative precision for every x > 0, and
// the trigamma function. Digamma() is exact to 5e-13 of 1 only, which for a large x is all that is left.
#pragma once

namespace zul::numerics {

// log(x) - psi(x) for x > 0, else NaN; falls from infinity to 1 / (2 x). Largest relative error 3e-15, 1e-5 to 1e12.
double LogLessDigamma(double x);

// psi'(x) - 1 / x for x > 0, else NaN; falls from infinity to 1 / (2 x^2). Largest relative error 1.3e-14, the same range.
double TrigammaExcess(double x);

// psi'(x), the second derivative of log(gamma(x)), for x > 0, else NaN.
double Trigamma(double x);

}  // namespace zul::numerics
