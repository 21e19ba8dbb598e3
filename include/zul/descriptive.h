/// @file
/// Descriptive statistics: sums, moments, correlation, ranks, quantiles, summaries.
#pragma once

#include <zul/export.h>

/// @defgroup descriptive Descriptive statistics
/// Descriptive statistics: sums, moments, correlation, ranks, quantiles, summaries.
///
/// Every accumulation is compensated (W. Kahan, 1965), in index order; means and centred sums are updated in
/// one pass (B. P. Welford, 1962): a mean forms the differences of the values from it, not their total, and
/// so holds for values whose sum overflows. The sums and moments allocate nothing.
///
/// What needs the data in order sorts a private copy, once, and leaves x as it is. Memory that cannot be
/// obtained is status 30001, never an exception. Where n is 0, x may be null.
///
/// The functions look neither for NaN nor for the library's missing value: 1.23456e30 is a number; each of
/// the n values takes part in the arithmetic, where a NaN makes the result NaN, and in the order, where NaN
/// come after plus infinity. An infinite value gives an infinity or NaN, as the arithmetic has it. The
/// functions set no floating-point mode, in the default mode never throw, and may run on any thread at any time, on
/// different outputs.

namespace zul {

/// Signatures of version 1.
namespace v1 {

/// Variance, sums and mean of a sample. The constructor sets the doubles to NaN and the count to 0.
/// @ingroup moments
struct ZUL_API SecondSampleMoments {
    double variance;        ///< sample variance, divisor n - 1
    double sumOfSquares;    ///< the sum of x^2, not centred
    double mean;            ///< arithmetic mean
    double sum;             ///< sum of the data
    unsigned count;         ///< number of values; an input of GetSecondSampleMoments()
    SecondSampleMoments();  ///< NaN and a count of 0
};

/// Minimum, quartiles, median and maximum. The constructor sets them to NaN.
/// @ingroup summaries
struct ZUL_API FiveNumberSummary {
    double minimum;        ///< smallest value
    double firstQuartile;  ///< quantile at 0.25, method 6
    double median;         ///< quantile at 0.5, method 6
    double thirdQuartile;  ///< quantile at 0.75, method 6
    double maximum;        ///< largest value
    FiveNumberSummary();   ///< all NaN
};

/// What a boxplot shows. The constructor sets all to NaN.
/// @ingroup summaries
struct ZUL_API KelBoxplotHelper {
    double minimum;            ///< smallest value
    double maximum;            ///< largest value
    double firstQuartile;      ///< quantile at 0.25, method 6
    double thirdQuartile;      ///< quantile at 0.75, method 6
    double median;             ///< quantile at 0.5, method 6
    double medianLowerBound;   ///< lower end of the confidence interval for the median
    double medianUpperBound;   ///< upper end of that interval
    double lowerHinge;         ///< quantile at h = (n + 3) / (4 (n + 1)), method 6: depth (n + 3) / 4
    double upperHinge;         ///< quantile at 1 - h, method 6: the same depth from the top
    double mean;               ///< arithmetic mean
    double standardDeviation;  ///< root of the sample variance, divisor n - 1
    KelBoxplotHelper();        ///< all NaN
};

/// @defgroup moments Sums, mean, variance and moments
/// @ingroup descriptive
/// Sum, mean, variance (the standard deviation is its root), skewness, kurtosis and geometric mean, each in one pass.
///
/// @f[\bar x = \frac{1}{n} \sum x_i, \qquad s^2 = \frac{1}{n-1} \sum (x_i - \bar x)^2@f]
///
/// @see GetSampleVariance(const double *, unsigned, double), by a given mean, for values that differ little
/// from each other; @ref summaries
/// @{

/// The sum of x. An infinite value before the last gives NaN.
/// @param x in: n values
/// @param n number of values
/// @return the sum; n = 0: NaN
ZUL_API double GetSum(const double* x, unsigned n);

/// The running sums x[0] + ... + x[i], NaN after an infinite value. n = 0 writes nothing.
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

/// The arithmetic mean, the sum of x / n.
/// @param x in: n values
/// @param n number of values
/// @return the mean; n = 0: NaN
ZUL_API double GetSampleMean(const double* x, unsigned n);

/// The sample variance from the deviations d from a given mean, (sum of d^2 - (sum of d)^2 / n) / (n - 1).
/// The mean need not be exact: the sum of the deviations corrects for it.
/// Method: T. F. Chan, G. H. Golub and R. J. LeVeque, Algorithms for computing the sample variance, 1983.
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

/// @}

/// @defgroup correlation Covariance and correlation
/// @ingroup descriptive
/// Covariance, and the correlations of Pearson and of Spearman.
///
/// @f[\operatorname{cov} = \frac{1}{n-1} \sum (x_i - \bar x)(y_i - \bar y), \qquad r = \frac{\operatorname{cov}}{s_x s_y}@f]
///
/// @see v0::GetKelCorrelationPValue(), IContingencyTable::GetAssociation() for classes,
/// dax::clustering::CreateForClusterVariables() for the matrix of a table
/// @{

/// The sample covariance of x and y, the sum of (x - mean x) (y - mean y) / (n - 1), and their variances, in
/// one pass.
/// @param x in: n values
/// @param y in: n values
/// @param n number of pairs
/// @param varianceX out: the variance of x; n < 2: not written
/// @param varianceY out: the variance of y; n < 2: not written
/// @return the covariance; n < 2: NaN
ZUL_API double GetCovariance(const double* x, const double* y, unsigned n, double* varianceX,
                             double* varianceY);

/// Pearson's product-moment correlation, covariance / root of the product of the variances, in [-1, 1] but
/// for rounding. Products of four deviations are formed: where these are below 1e-75 or above 1e75 or so, the
/// result may be inaccurate or NaN.
/// Source: K. Pearson, Regression, heredity and panmixia, 1896.
/// @param x in: n values
/// @param y in: n values
/// @param n number of pairs
/// @return the correlation; n < 2, or a constant x or y: NaN
ZUL_API double GetPearsonCorrelation(const double* x, const double* y, unsigned n);

/// Spearman's rank correlation: Pearson's correlation of the ranks by GetRank(), ties with their mean rank.
/// Source: C. Spearman, The proof and measurement of association between two things, 1904.
/// @param x in: n values
/// @param y in: n values
/// @param n number of pairs
/// @param status out: 0, for n < 2 as well; 30001 if memory for the ranks could not be obtained; left as it
/// was if a ranking could not obtain the memory that it works in, so let it be nonzero before the call
/// @return the correlation; n < 2, a constant x or y, or a failure: NaN
ZUL_API double GetSpearmanCorrelation(const double* x, const double* y, unsigned n, int* status);

/// @}

/// @addtogroup moments
/// @{

/// The mean and the sums of the second, third and fourth powers of the deviations from it, in one pass.
/// Method: T. B. Terriberry, Computing higher-order moments online, 2007.
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

/// The adjusted sample skewness G1 and excess kurtosis G2 (0 for a normal population), from the sums M2, M3
/// and M4 of the powers of the deviations:
///
///     G1 = n sqrt(n - 1) M3 / ((n - 2) M2^1.5)
///     G2 = (n + 1) n (n - 1) M4 / ((n - 2) (n - 3) M2^2) - 3 (n - 1)^2 / ((n - 2) (n - 3))
///
/// Source: D. N. Joanes and C. A. Gill, Comparing measures of sample skewness and kurtosis, 1998.
/// @param x in: n values; constant values give NaN for both
/// @param n number of values
/// @param skewness out: n < 3: NaN
/// @param kurtosis out: n < 4: NaN
ZUL_API void GetKelSkewnessAndKurtosis(const double* x, unsigned n, double* skewness, double* kurtosis);

/// @}

/// @defgroup order Order, ranks and quantiles
/// @ingroup descriptive
/// What rests on the order of the values: the order itself, ranks with ties, quantiles (percentiles,
/// quartiles, the median) by the nine definitions in use.
///
/// @see @ref summaries, @ref rank_tests
/// @{

/// The order of the values: x[order[0]], x[order[1]], ... ascend, NaN last. Which of tied values comes first
/// is not promised. Needs no memory to succeed, but is faster with it.
/// @param x in: n values
/// @param n number of values
/// @param order out: n indices, from 0
ZUL_API void GetOrder(const double* x, unsigned n, unsigned* order);

/// The ranks of the values, from 1. Tied values have the mean of their ranks; NaN have the last ranks, each
/// its own.
/// @param x in: n values
/// @param n number of values
/// @param ranks out: n ranks, in the order of the values, may equal x; all NaN without memory
/// @return 0; 30001 if memory could not be obtained
ZUL_API int GetRank(const double* x, unsigned n, double* ranks);

/// Sample quantiles by one of nine definitions, by their numbers in the source: 1 to 3 are steps, 4 to 9
/// interpolate between the values next to the position
///
///     4: n p    5: n p + 1/2    6: n p + p    7: n p + (1 - p)    8: n p + (p + 1) / 3    9: n p + (p + 1.5) / 4
///
/// or give the end value beyond the first or last. 1 is the inverse of the empirical distribution function, 2
/// the same with averages at its steps, 3 the value whose number, from 1, is nearest to n p, the even one of
/// two.
/// Source: R. J. Hyndman and Y. Fan, Sample quantiles in statistical packages, 1996.
/// @param x in: n values
/// @param n number of values
/// @param method from 1 to 9
/// @param out out: count quantiles, may equal probabilities: the minimum at 0, the maximum at 1, NaN for a
/// probability outside [0, 1] or NaN, and for n = 0
/// @param probabilities in: count probabilities
/// @param count number of quantiles
/// @return 0; 30001 if memory could not be obtained, 30017 for another method, for n = 0 as well: then
/// nothing is written
ZUL_API int GetSampleQuantiles(const double* x, unsigned n, int method, double* out,
                               const double* probabilities, unsigned count);

/// @}

/// @defgroup summaries Trimmed means, modes and summaries
/// @ingroup descriptive
/// Median and quartiles, trimmed means, modes, the five-number summary, and a boxplot with a confidence
/// interval for the median.
///
/// @see @ref order, @ref moments, @ref sign_test
/// @{

/// The mean without the five percent smallest and the five percent largest values, as many at each end as
/// 0.05 n rounded half up.
/// @param x in: n values
/// @param n number of values
/// @param status out: 0; 30001 if memory could not be obtained
/// @return the trimmed mean; n = 0, or a failure: NaN
ZUL_API double GetKelTrimmedMean(const double* x, unsigned n, int* status);

/// The mean without the smallest and the largest values, as many at each end as the integer part of n times
/// the fraction.
/// @param x in: n values
/// @param n number of values
/// @param fraction of the values to cut from each end, from 0 to below 1/2
/// @param status out: 0; 30001 if memory could not be obtained
/// @return the trimmed mean; a negative or NaN fraction, no value left, or a failure: NaN
ZUL_API double GetTrimmedMean(const double* x, unsigned n, double fraction, int* status);

/// The most frequent values, in ascending order. Values that occur once are never modes: without repeats
/// there is none. Modes for which there is no room are not counted.
/// @param x in: n values
/// @param n number of values
/// @param modes out: maxModes values, NaN after the last mode; null is allowed for maxModes = 0
/// @param maxModes room for modes; 0: no mode is looked for
/// @param modeCount out: number of modes written, 0 without any
/// @param modeFrequency out: how often each mode occurs, 0 without any
/// @return 0; 30001 if memory could not be obtained: modes are all NaN then, and both counts 0
ZUL_API int GetMode(const double* x, unsigned n, double* modes, unsigned maxModes, unsigned* modeCount,
                    unsigned* modeFrequency);

/// Minimum, quartiles, median and maximum, the quartiles and the median as quantiles by method 6.
/// @param out out: the summary, all NaN for n = 0; not written on failure
/// @param x in: n values
/// @param n number of values
/// @return 0; 30001 if memory could not be obtained
ZUL_API int GetKelFiveNumberSummary(FiveNumberSummary* out, const double* x, unsigned n);

/// GetSecondSampleMoments(), GetKelFiveNumberSummary() and GetMode() with room for five modes, sorting once.
/// @param moments in: count; out: the other fields
/// @param five out: the summary
/// @param modes out: 5 values, NaN after the last mode
/// @param modeCount out: number of modes written
/// @param modeFrequency out: how often each mode occurs
/// @param x in: moments->count values
/// @return 0; 30001 if memory could not be obtained: only the moments are written
ZUL_API int GetKel2013ExtendedSummary(SecondSampleMoments* moments, FiveNumberSummary* five, double* modes,
                                      unsigned* modeCount, unsigned* modeFrequency, const double* x);

/// Fills the record of a boxplot.
///
/// The interval for the median is interpolated between the values of depth d and d + 1 from either end, or
/// between those of depth d and the median where d reaches the middle. Up to n = 50 d is the quantile of the
/// binomial distribution with n trials and success probability 1/2 at (1 - confidence) / 2; from n = 51 on it
/// is floor(n / 2 + z sqrt(n) / 2 + 1/2), z the standard normal quantile there. The interval is NaN where d
/// is 0, the values being too few for the confidence; n = 1 gives the value itself for both ends.
/// Source: T. P. Hettmansperger and S. J. Sheather, Confidence intervals based on interpolated order
/// statistics, 1986.
/// @param out out: the record, all NaN for n = 0 and on failure
/// @param confidence of the interval for the median, in (0, 1), such as 0.95; otherwise the interval is NaN
/// or without meaning
/// @param x in: n values
/// @param n number of values
/// @return 0; 30001 if memory could not be obtained
ZUL_API int RunKelBoxplotHelper(KelBoxplotHelper* out, double confidence, const double* x, unsigned n);

/// @}

}  // namespace v1

/// Signatures of version 2.
namespace v2 {

/// The geometric mean, the n-th root of the product of x, by a running product that is scaled back between
/// 2^-256 and 2^256 after each value.
///
/// Values from 3e-231 to 1e231 are safe; beyond, the product may underflow, which gives 0, or overflow, which
/// gives infinity. The first value that decides ends the loop, and the values after it are not looked at: 0
/// gives 0, plus infinity gives infinity, a negative value gives NaN.
/// @ingroup moments
/// @param x in: n values, not negative
/// @param n number of values
/// @return the geometric mean; n = 0, or NaN among the values: NaN
ZUL_API double GetGeometricMean(const double* x, unsigned n);

}  // namespace v2
}  // namespace zul
