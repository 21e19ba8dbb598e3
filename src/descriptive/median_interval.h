#pragma once

namespace zul::descriptive {

struct MedianBounds {
    double lower;
    double upper;
};

// The depth d of an order statistic, counted from either end, and the coverage of the interval between the
// values of depth d and of that between the values of depth d + 1. All NaN: there is no depth.
struct MedianDepth {
    double d;
    double coverage;
    double coverageOfNext;
};

// The largest depth whose coverage of the median of the population, by n > 0 values, is above the confidence: by
// the exact binomial coverage up to n = 50, by its normal approximation beyond. 0: even the extremes cover less.
MedianDepth FindMedianDepth(unsigned n, double confidence);

// Whether no pair of inner values belongs to the depth.
bool ReachesMiddle(const MedianDepth& depth, unsigned n);

// The interval for the median between the values of a depth from 1 to n and the next inner ones, interpolated so that
// its coverage is near the confidence; the median stands for the inner values where the depth reaches the middle.
// Source: T. P. Hettmansperger and S. J. Sheather, Confidence intervals based on interpolated order
// statistics, 1986.
MedianBounds InterpolatedInterval(const double* sorted, unsigned n, double median, double confidence,
                                  const MedianDepth& depth);

// The interval at the depth that belongs to the confidence. NaN for n = 0, and where there is none from 1 to n; one
// value is its own interval.
MedianBounds MedianInterval(const double* sorted, unsigned n, double median, double confidence);

}  // namespace zul::descriptive
