// The exact p-value of a two-by-two table. Kernels return NA for "no result".
#pragma once

#include "frame/side.h"

namespace zul::kernels {

// The p-value of x successes in a sample of n from N, M of which are successes. Deliberate: an unknown side
// gives NA, where the other p-values give 0.
//
// Two-sided: the tail of x and the tail on the other side of the mode that begins with the first mass not
// above that of x. Source: J. O. Irwin, Tests of significance for differences between percentages based on
// small numbers, 1935.
double HypergeometricPValue(int x, int N, int M, int n, Side side);

}  // namespace zul::kernels
