// The exact p-value of a two-by-two table. Kernels return NA for "no result".
#pragma once

namespace zul::kernels {

// The p-value of x successes in a sample of n from N, M of which are successes, for the code of an
// EAlternative: -1 lower tail, 1 upper tail, 0 two-sided. Deliberate: any other code gives NA, where the
// other p-values give 0.
//
// Two-sided: the tail of x and the tail on the other side of the mode that begins with the first mass not
// above that of x. Source: J. O. Irwin, Tests of significance for differences between percentages based on
// small numbers, 1935.
double HypergeometricPValueKernel(int x, int N, int M, int n, int alternative);

}  // namespace zul::kernels
