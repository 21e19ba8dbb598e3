// What the tests take from data.
#pragma once

namespace zul::hypothesis {

// Mean and sample standard deviation, divisor n - 1. n = 0: NaN.
void MeanAndStandardDeviation(const double* data, unsigned n, double* mean, double* standardDeviation);

// The sum, modulo 2^32 as the counts are.
unsigned SumCounts(const int* data, unsigned n);

}  // namespace zul::hypothesis
