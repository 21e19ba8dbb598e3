/// @file
/// Descriptive statistics: sums, moments, correlation.
///
/// Every accumulation is compensated (W. Kahan, 1965), in index order; means and centred sums are updated in
/// one pass (B. P. Welford, 1962): a mean forms differences of two values, not their total, and so holds for
/// values whose sum overflows.
///
/// The functions look neither for NaN nor for the library's missing value: each of the n values takes part in
/// the arithmetic, a NaN makes the result NaN, 1.23456e30 is a number. They set no floating-point mode, in
/// the default mode never throw, allocate nothing, and may run on several threads at once on different
/// outputs.
#pragma once

#include <zul/export.h>

namespace zul {
namespace v1 {

/// Variance, sums and mean of a sample. The constructor sets the doubles to NaN and the count to 0.
struct ZUL_API SecondSampleMoments {
    double variance;      ///< sample variance, divisor n - 1
    double sumOfSquares;  ///< the sum of x^2, not centred
    double mean;          ///< arithmetic mean
    double sum;           ///< sum of the data
    unsigned count;       ///< number of values; an input of GetSecondSampleMoments()
    SecondSampleMoments();
};

/// The sum of x. An infinite value before the last gives NaN.
/// @param x in: n values
/// @param n number of values
/// @return the sum; n = 0: NaN
ZUL_API double GetSum(const double* x, unsigned n);

/// The running sums x[0] + ... + x[i]. n = 0 writes nothing.
/// @param x in: n values
/// @param n number of values
/// @param out out: n values, may equal x
ZUL_API void GetCumulativeSums(const double* x, unsigned n, double* out);

/// The share of each value in the sum, x[i] / sum. A zero sum gives infinities or NaN.
/// @param x in: n values
/// @param n number of values; n = 0 writes nothing
/// @param out out: n values, may equal x
/// @return the sum; n = 0: NaN
ZUL_API double GetProportions(const double* x, unsigned n, double* out);

/// The arithmetic mean.
/// @param x in: n values
/// @param n number of values
/// @return the mean; n = 0: NaN
ZUL_API double GetSampleMean(const double* x, unsigned n);

/// The sample variance, divisor n - 1, from the deviations from a given mean. The mean need not be exact: the
/// sum of the deviations corrects for it (T. F. Chan, G. H. Golub and R. J. LeVeque, Algorithms for computing
/// the sample variance, 1983).
/// @param x in: n values
/// @param n number of values
/// @param mean the mean of the values
/// @return the variance; n = 0: NaN; n = 1: 0
ZUL_API double GetSampleVariance(const double* x, unsigned n, double mean);

/// The sample variance, divisor n - 1, in one pass.
/// @param x in: n values
/// @param n number of values
/// @return the variance; n = 0: NaN; n = 1: 0
ZUL_API double GetSampleVariance(const double* x, unsigned n);

/// Mean and sample variance, divisor n - 1, in one pass.
/// @param x in: n values
/// @param n number of values
/// @param mean out: the mean; n = 0: NaN
/// @param variance out: the variance; n = 0: NaN; n = 1: 0
ZUL_API void GetSampleMeanAndVariance(const double* x, unsigned n, double* mean, double* variance);

/// The sample covariance of x and y and their variances, divisor n - 1, in one pass.
/// @param x in: n values
/// @param y in: n values
/// @param n number of pairs
/// @param varianceX out: the variance of x; n < 2: not written
/// @param varianceY out: the variance of y; n < 2: not written
/// @return the covariance; n < 2: NaN
ZUL_API double GetCovariance(const double* x, const double* y, unsigned n, double* varianceX,
                             double* varianceY);

/// Pearson's product-moment correlation, in [-1, 1] but for rounding. Data whose spread is near 1e-80 or 1e80
/// and beyond give NaN or lose it: products of four deviations are formed.
/// @param x in: n values
/// @param y in: n values
/// @param n number of pairs
/// @return the correlation; n < 2, or a constant x or y: NaN
ZUL_API double GetPearsonCorrelation(const double* x, const double* y, unsigned n);

/// The mean and the sums of the second, third and fourth powers of the deviations from it, in one pass
/// (T. B. Terriberry, Computing higher-order moments online, 2007).
/// @param x in: n values
/// @param n number of values; n = 0: NaN for each; n = 1: x[0] and zeros
/// @param out out: k values, in the order mean, second, third, fourth power; NaN from the fifth on
/// @param k how many of them are wanted; k = 0 writes nothing
/// @return 0; 30011 for k > 4
ZUL_API int GetCenteredOrderKPowerSums(const double* x, unsigned n, double* out, unsigned k);

/// Fills a record from its count and the data: variance and mean as GetSampleMeanAndVariance(), then
/// sum = n mean and sumOfSquares = (n - 1) variance + sum mean.
/// @param record in: count; out: the other fields, all NaN for count = 0
/// @param x in: record->count values
ZUL_API void GetSecondSampleMoments(SecondSampleMoments* record, const double* x);

/// The adjusted sample skewness G1 and excess kurtosis G2 (0 for a normal population), D. N. Joanes and
/// C. A. Gill, Comparing measures of sample skewness and kurtosis, 1998.
/// @param x in: n values; constant values give NaN for both
/// @param n number of values
/// @param skewness out: n < 3: NaN
/// @param kurtosis out: n < 4: NaN
ZUL_API void GetKelSkewnessAndKurtosis(const double* x, unsigned n, double* skewness, double* kurtosis);

}  // namespace v1

namespace v2 {

/// The geometric mean, by a running product that is scaled back between 2^-256 and 2^256 after each value.
///
/// Values from 3e-231 to 1e231 are safe; beyond, the product may underflow, which gives 0, or overflow, which
/// gives infinity. The first value that decides ends the loop, and the values after it are not looked at: 0
/// gives 0, plus infinity gives infinity, a negative value gives NaN.
/// @param x in: n values, not negative
/// @param n number of values
/// @return the geometric mean; n = 0, or NaN among the values: NaN
ZUL_API double GetGeometricMean(const double* x, unsigned n);

}  // namespace v2
}  // namespace zul
