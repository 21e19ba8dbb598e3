#pragma once

#include <cmath>

#include "zul/descriptive.h"

namespace zul::descriptive {

// The quantile definition of the five-number summary and the boxplot.
inline constexpr int kSummaryMethod = 6;

// The quantile of n sorted values at the probability p by a method from 1 to 9. n = 0, p outside [0, 1] or
// NaN: NaN.
// Source: R. J. Hyndman and Y. Fan, Sample quantiles in statistical packages, 1996; their numbers.
double SortedQuantile(const double* sorted, unsigned n, int method, double p);

// (a + b) / 2, also where the sum of two huge values overflows.
inline double Average(double a, double b) {
    const double sum = a + b;
    return std::isinf(sum) ? a / 2 + b / 2 : sum / 2;
}

// The middle value of n > 0 sorted ones, or the average of the middle two.
double SortedMedian(const double* sorted, unsigned n);

// Minimum, quartiles, median and maximum of n sorted values.
void SummariseSorted(const double* sorted, unsigned n, v1::FiveNumberSummary* out);

}  // namespace zul::descriptive
