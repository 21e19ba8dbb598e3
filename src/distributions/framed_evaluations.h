// Distribution evaluations for the hypothesis tests, which set no floating-point state of their own. Each
// runs in the call frame, so that the trapping mode ends with it; arguments for which the result is known
// without the distribution never enter it.
#pragma once

namespace zul {

// The standard normal quantile. p NaN, infinite or outside (0, 1): NaN.
double FramedNormalQuantile(double p);

// The standard normal tail for the code of an alternative (-1 lower, 0 twice the smaller, 1 upper, else 0).
// z NaN: NaN. Deliberate: an infinite z gives 0 for every code.
double FramedNormalTail(double z, int alternative);

}  // namespace zul
