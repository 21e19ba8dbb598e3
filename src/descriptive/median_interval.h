#pragma once

namespace zul::descriptive {

struct MedianBounds {
    double lower;
    double upper;
};

// A confidence interval for the median of the population, between order statistics of the n sorted values and
// interpolated so that its coverage is near the confidence. The exact binomial coverage up to n = 50, its
// normal approximation beyond. NaN for n = 0, and where no depth from 1 to n belongs to the confidence.
// Source: T. P. Hettmansperger and S. J. Sheather, Confidence intervals based on interpolated order
// statistics, 1986.
MedianBounds MedianInterval(const double* sorted, unsigned n, double median, double confidence);

}  // namespace zul::descriptive
