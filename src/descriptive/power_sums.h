#pragma once

namespace zul::descriptive {

// Sums of powers of the deviations from the mean, in one pass: out receives the mean and the sums of the
// second, third and fourth powers. n = 0: four NaN. n = 1: x[0] and zeros.
// Source: T. B. Terriberry, Computing higher-order moments online, 2007.
void AccumulateCenteredPowerSums(const double* x, unsigned n, double (&out)[4]);

// Sums of squares and products of the deviations from the means.
struct CoMoments {
    double sxx;
    double syy;
    double sxy;
};

// In one pass over n >= 1 pairs. Source: B. P. Welford, Note on a method for calculating corrected sums of
// squares and products, 1962.
CoMoments AccumulateCoMoments(const double* x, const double* y, unsigned n);

}  // namespace zul::descriptive
