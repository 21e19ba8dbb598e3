// Fisher's exact test of a two-by-two table.
#pragma once

#include "frame/side.h"

namespace zul::hypothesis {

// The p-value of x marked items among those drawn from a population, `marked` of which are marked; whole
// numbers. Two-sided: the tail at x plus, beyond the mode, the tail from the first number on that is not more
// probable; 1 at the mode. An unknown side, or a population above the largest int: NaN.
double HypergeometricTestPValue(double x, double population, double marked, double drawn, Side side);

}  // namespace zul::hypothesis
