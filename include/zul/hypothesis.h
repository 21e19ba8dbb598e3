/// @file
/// Hypothesis tests with confidence bounds.
#pragma once

#include <zul/export.h>

/// @defgroup hypothesis Hypothesis tests
/// Hypothesis tests with confidence bounds: t and z, proportions, one variance, runs, goodness of fit.
///
/// The caller owns a result record, sets its inputs (counts always; the summary statistics too for the
/// overloads without data) and passes it to a Run function, which fills the outputs and returns a status.
/// A constructor sets every double to NaN and every count to 0, so that a field that a routine does not
/// reach reads NaN.
///
/// | status | meaning |
/// |---|---|
/// | 0 | success |
/// | 10003, 10004 | Anderson-Darling tests: the p-value is only an upper, or only a lower, bound |
/// | 30001 | working storage could not be obtained |
/// | 30002 | the interval type is none of the three: both bounds are NaN, the test is not computed |
/// | 30002 | exact tests of one proportion: the alternative is none of the three |
///
/// An overload with an alternative does all that the one without it does, then the test. An overload with data
/// computes the summary statistics, stores them in the record, and goes on as the one without data. Data
/// arrays are only read; their lengths are the counts in the record.
///
/// Values are not checked: NaN and infinities go through the arithmetic into the results with status 0. A
/// confidence level without a quantile (1 and above; 0 and below for a single bound, -1 and below for both;
/// NaN) gives NaN for the bounds that need it, or the end of the range where the distribution has one; an
/// alternative that is none of the three gives a p-value of 0; both with status 0, unless a routine says
/// otherwise. An infinite t or z statistic has the p-value 0 for every alternative.
///
/// The routines set no floating-point mode but around the distribution functions that they call, which leave
/// the thread in the default mode. Called in that mode they do not throw, except RunOneVariance(),
/// v0::RunKelExponentialADTest() and v0::RunKelWeibullADTest() where they say so: these pass on what stopped the
/// computation in trapping mode (see frame.h). The routines may run on any thread at any time, on different records.

namespace zul {

/// Which bounds to compute.
/// @ingroup hypothesis
enum class IntervalType : int {
    UpperBound = -1,  ///< upper bound at the confidence level; the lower bound is open
    TwoSided = 0,     ///< both bounds, each at (confidence + 1) / 2
    LowerBound = 1    ///< lower bound at the confidence level; the upper bound is open
};

/// The alternative to the hypothesised value. The numbers are those of EAlternative.
/// @ingroup hypothesis
enum class AlternativeHypothesis : int {
    LessThan = -1,   ///< p-value: the lower tail
    NotEqual = 0,    ///< p-value: twice the smaller tail
    GreaterThan = 1  ///< p-value: the upper tail
};

/// Signatures of version 0.
namespace v0 {

/// One-sample t test of a mean.
/// @ingroup one_sample_t
struct ZUL_API OneSampleT {
    double mean;               ///< sample mean; output with data, else input
    double standardDeviation;  ///< sample standard deviation, divisor n - 1; output with data, else input
    double standardError;      ///< standardDeviation / sqrt(n)
    double lowerBound;         ///< lower confidence bound of the mean
    double upperBound;         ///< upper confidence bound of the mean
    double tStatistic;         ///< (mean - mu0) / standardError
    double pValue;             ///< p-value of the test
    unsigned n;                ///< number of values; input
    OneSampleT();              ///< NaN and counts of 0
};

/// One-sample z test of a mean with known standard deviation.
/// @ingroup one_sample_z
struct ZUL_API OneSampleZ {
    double mean;               ///< sample mean; output with data, else input
    double standardDeviation;  ///< sample standard deviation, divisor n - 1; output with data, else untouched
    double standardError;      ///< sigma / sqrt(n)
    double lowerBound;         ///< lower confidence bound of the mean
    double upperBound;         ///< upper confidence bound of the mean
    double zStatistic;         ///< (mean - mu0) / standardError
    double pValue;             ///< p-value of the test
    unsigned n;                ///< number of values; input
    OneSampleZ();              ///< NaN and counts of 0
};

/// Paired t test of the mean difference first - second.
/// @ingroup paired_t
struct ZUL_API PairedT {
    double mean1;                        ///< mean of the first sample; output with data, else untouched
    double mean2;                        ///< mean of the second sample; likewise
    double standardDeviation1;           ///< standard deviation of the first sample, divisor n - 1; likewise
    double standardDeviation2;           ///< standard deviation of the second sample; likewise
    double standardError1;               ///< standardDeviation1 / sqrt(n); likewise
    double standardError2;               ///< standardDeviation2 / sqrt(n); likewise
    double meanDifference;               ///< mean of the differences; output with data, else input
    double standardDeviationDifference;  ///< standard deviation of the differences; likewise
    double standardErrorDifference;      ///< standardDeviationDifference / sqrt(n)
    double lowerBound;                   ///< lower confidence bound of the mean difference
    double upperBound;                   ///< upper confidence bound of the mean difference
    double tStatistic;                   ///< (meanDifference - difference0) / standardErrorDifference
    double pValue;                       ///< p-value of the test
    unsigned n;                          ///< number of pairs; input
    PairedT();                           ///< NaN and counts of 0
};

/// Two-sample t test of the difference of two means.
/// @ingroup two_sample_t
struct ZUL_API TwoSampleT {
    double mean1;                    ///< mean of sample 1; output with data, else input
    double mean2;                    ///< mean of sample 2; likewise
    double standardDeviation1;       ///< standard deviation of sample 1, divisor n1 - 1; likewise
    double standardDeviation2;       ///< standard deviation of sample 2, divisor n2 - 1; likewise
    double standardError1;           ///< standardDeviation1 / sqrt(n1)
    double standardError2;           ///< standardDeviation2 / sqrt(n2)
    double difference;               ///< mean1 - mean2
    double pooledStandardDeviation;  ///< the pooled standard deviation; untouched without equal variances
    double degreesOfFreedom;         ///< n1 + n2 - 2, or Welch's, rounded down
    double lowerBound;               ///< lower confidence bound of the difference
    double upperBound;               ///< upper confidence bound of the difference
    double tStatistic;               ///< (difference - difference0) / its standard error
    double pValue;                   ///< p-value of the test
    unsigned n1;                     ///< size of sample 1; input
    unsigned n2;                     ///< size of sample 2; input
    TwoSampleT();                    ///< NaN and counts of 0
};

/// Test of one binomial proportion.
/// @ingroup one_proportion
struct ZUL_API OneProportion {
    double proportion;  ///< x / n; output of RunOneProportion() and RunKelOneProportion()
    double lowerBound;  ///< lower confidence bound of the proportion
    double upperBound;  ///< upper confidence bound of the proportion
    double zStatistic;  ///< statistic of the normal test; untouched by an exact test
    double pValue;      ///< p-value of the test
    unsigned x;         ///< number of events; output with data, else input
    unsigned n;         ///< number of trials; input
    OneProportion();    ///< NaN and counts of 0
};

/// Test of the difference of two binomial proportions.
/// @ingroup two_proportions
struct ZUL_API TwoProportion {
    double proportion1;  ///< x1 / n1
    double proportion2;  ///< x2 / n2
    double difference;   ///< proportion1 - proportion2
    double lowerBound;   ///< lower confidence bound of the difference
    double upperBound;   ///< upper confidence bound of the difference
    double zStatistic;   ///< statistic of the normal test
    double pValue;       ///< p-value of the normal test
    double
        fisherPValue;  ///< p-value of Fisher's exact test; untouched unless the hypothesised difference is 0
    unsigned x1;       ///< events in sample 1; output with data, else input
    unsigned x2;       ///< events in sample 2; output with data, else input
    unsigned n1;       ///< trials in sample 1; input
    unsigned n2;       ///< trials in sample 2; input
    TwoProportion();   ///< NaN and counts of 0
};

/// Test of one variance, by the chi-square and by Bonett's method.
/// @ingroup one_variance
struct ZUL_API OneVariance {
    double variance;             ///< sample variance, divisor n - 1; output with data, else input
    double chiSquareLowerBound;  ///< lower confidence bound of the variance for normal values
    double chiSquareUpperBound;  ///< upper confidence bound of the variance for normal values
    double bonettLowerBound;     ///< lower confidence bound by Bonett's method; NaN without data
    double bonettUpperBound;     ///< upper confidence bound by Bonett's method; NaN without data
    double chiSquareStatistic;   ///< (n - 1) variance / variance0; NaN without a test
    double chiSquarePValue;      ///< p-value of the chi-square test; NaN without a test
    double degreesOfFreedom;     ///< n - 1; NaN without a test
    double bonettPValue;         ///< p-value of Bonett's test; NaN without a test or without data
    unsigned n;                  ///< number of values; input
    OneVariance();               ///< NaN and counts of 0
};

/// @defgroup one_sample_t One-sample t test
/// @ingroup hypothesis
/// Is the mean of a population mu0? From a sample whose standard deviation s stands for the unknown one; for
/// normal values, or many.
///
/// @f[t = \frac{\bar x - \mu_0}{s / \sqrt n}, \qquad \bar x \pm q\, \frac{s}{\sqrt n}, \qquad \text{df} = n - 1@f]
///
/// @see @ref one_sample_z, @ref paired_t, @ref wilcoxon, @ref sign_test
/// @{

/// Confidence bounds of a mean, mean -+ q s / sqrt(n) with the t quantile q at n - 1 degrees of freedom, and
/// the test of the hypothesis that the mean is mu0, by t = (mean - mu0) sqrt(n) / s. From data.
///
/// n = 1 or constant data give a standard error of 0.
/// Source: Student, The probable error of a mean, 1908.
/// @param record in: n; out: all other fields
/// @param data in: record->n values
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to mean = mu0
/// @param mu0 the hypothesised mean
/// @return 0 or 30002
ZUL_API int RunOneSampleT(OneSampleT* record, const double* data, double confidence, IntervalType type,
                          AlternativeHypothesis alternative, double mu0);

/// The bounds from data. In: n; out: all but tStatistic and pValue.
ZUL_API int RunOneSampleT(OneSampleT* record, const double* data, double confidence, IntervalType type);

/// Bounds and test from a summary. In: n, mean, standardDeviation; out: all other fields.
ZUL_API int RunOneSampleT(OneSampleT* record, double confidence, IntervalType type,
                          AlternativeHypothesis alternative, double mu0);

/// The bounds from a summary. In: n, mean, standardDeviation; out: standardError, bounds.
ZUL_API int RunOneSampleT(OneSampleT* record, double confidence, IntervalType type);

/// @}

/// @defgroup one_sample_z One-sample z test
/// @ingroup hypothesis
/// Is the mean of a population mu0, where the standard deviation sigma of a value is known? With that of the
/// sample take @ref one_sample_t.
///
/// @f[z = \frac{\bar x - \mu_0}{\sigma / \sqrt n}, \qquad \bar x \pm q\, \frac{\sigma}{\sqrt n}@f]
///
/// @see @ref one_sample_t, NormalPValue()
/// @{

/// Confidence bounds of a normal mean, mean -+ q sigma / sqrt(n) with the standard normal quantile q, and the
/// test of the hypothesis that the mean is mu0, by z = (mean - mu0) sqrt(n) / sigma. From data.
/// @param record in: n; out: all other fields
/// @param data in: record->n values
/// @param sigma the known standard deviation of one value (not the variance)
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to mean = mu0
/// @param mu0 the hypothesised mean
/// @return 0 or 30002
ZUL_API int RunOneSampleZ(OneSampleZ* record, const double* data, double sigma, double confidence,
                          IntervalType type, AlternativeHypothesis alternative, double mu0);

/// The bounds from data. In: n; out: all but zStatistic and pValue.
ZUL_API int RunOneSampleZ(OneSampleZ* record, const double* data, double sigma, double confidence,
                          IntervalType type);

/// Bounds and test from a mean. In: n, mean; out: all other fields but standardDeviation.
ZUL_API int RunOneSampleZ(OneSampleZ* record, double sigma, double confidence, IntervalType type,
                          AlternativeHypothesis alternative, double mu0);

/// The bounds from a mean. In: n, mean; out: standardError, bounds.
ZUL_API int RunOneSampleZ(OneSampleZ* record, double sigma, double confidence, IntervalType type);

/// @}

/// @defgroup paired_t Paired t test
/// @ingroup hypothesis
/// Is the mean difference of two values of the same subject difference0? The one-sample t test of the
/// differences d.
///
/// @f[t = \frac{\bar d - d_0}{s_d / \sqrt n}, \qquad \bar d \pm q\, \frac{s_d}{\sqrt n}, \qquad \text{df} = n - 1@f]
///
/// @see @ref two_sample_t for independent samples, @ref wilcoxon, @ref sign_test
/// @{

/// Confidence bounds of the mean difference of pairs and the test of the hypothesis that it is difference0: the
/// one-sample t test of the differences first - second. From data.
/// @param record in: n; out: all other fields
/// @param first in: record->n values
/// @param second in: record->n values, the partners of those of first
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to mean difference = difference0
/// @param difference0 the hypothesised mean difference
/// @return 0 or 30002; 30001 if memory for the differences could not be obtained: the fields from
/// meanDifference on are untouched
ZUL_API int RunPairedT(PairedT* record, const double* first, const double* second, double confidence,
                       IntervalType type, AlternativeHypothesis alternative, double difference0);

/// The bounds from data. In: n; out: all but tStatistic and pValue.
ZUL_API int RunPairedT(PairedT* record, const double* first, const double* second, double confidence,
                       IntervalType type);

/// Bounds and test from a summary. In: n, meanDifference, standardDeviationDifference; out: the fields after
/// these.
ZUL_API int RunPairedT(PairedT* record, double confidence, IntervalType type,
                       AlternativeHypothesis alternative, double difference0);

/// The bounds from a summary. In: n, meanDifference, standardDeviationDifference; out: standardErrorDifference,
/// bounds.
ZUL_API int RunPairedT(PairedT* record, double confidence, IntervalType type);

/// @}

/// @defgroup two_sample_t Two-sample t test
/// @ingroup hypothesis
/// Is the difference of the means of two independent samples difference0? With the pooled standard deviation
/// of equal variances, or by Welch's test without that assumption, whose degrees of freedom are rounded down.
///
/// @f[t = \frac{\bar x_1 - \bar x_2 - d_0}{\text{se}}, \qquad \text{se}^2 = s_p^2 \left(\frac{1}{n_1} + \frac{1}{n_2}\right) \text{ or } \frac{s_1^2}{n_1} + \frac{s_2^2}{n_2}@f]
///
/// @see @ref paired_t, @ref mann_whitney, @ref variances, @ref multiple_comparison for more than two groups
/// @{

/// Confidence bounds of the difference of two means, difference -+ q se with the t quantile q, and the test of
/// the hypothesis that it is difference0, by t = (difference - difference0) / se. From data.
///
/// Equal variances: n1 + n2 - 2 degrees of freedom, se = sp sqrt(1 / n1 + 1 / n2) with the pooled standard
/// deviation sp. Otherwise, with a = s1^2 / n1 and b = s2^2 / n2, se = sqrt(a + b) and the degrees of freedom
/// are the integer part of (a + b)^2 / (a^2 / (n1 - 1) + b^2 / (n2 - 1)); rounding may put what should be
/// a whole number one below.
/// Source: B. L. Welch, The generalization of Student's problem when several different population variances
/// are involved, 1947.
/// @param record in: n1, n2; out: all other fields
/// @param sample1 in: record->n1 values
/// @param sample2 in: record->n2 values
/// @param equalVariances whether the two populations have the same variance
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to mean 1 - mean 2 = difference0
/// @param difference0 the hypothesised difference
/// @return 0 or 30002
ZUL_API int RunTwoSampleT(TwoSampleT* record, const double* sample1, const double* sample2,
                          bool equalVariances, double confidence, IntervalType type,
                          AlternativeHypothesis alternative, double difference0);

/// The bounds from data. In: n1, n2; out: all but tStatistic and pValue.
ZUL_API int RunTwoSampleT(TwoSampleT* record, const double* sample1, const double* sample2,
                          bool equalVariances, double confidence, IntervalType type);

/// Bounds and test from a summary. In: n1, n2, means, standard deviations; out: all other fields.
ZUL_API int RunTwoSampleT(TwoSampleT* record, bool equalVariances, double confidence, IntervalType type,
                          AlternativeHypothesis alternative, double difference0);

/// The bounds from a summary. In: n1, n2, means, standard deviations; out: all but tStatistic and pValue.
ZUL_API int RunTwoSampleT(TwoSampleT* record, bool equalVariances, double confidence, IntervalType type);

/// @}

/// @defgroup one_proportion_methods One proportion: single methods
/// @ingroup hypothesis
/// They read x and n and write the bounds alone, or the statistic and the p-value alone. Nothing is clipped to
/// [0, 1] unless so said. n = 0 and x > n are not checked.
/// @{

/// The sample proportion x / n.
/// @param x number of events
/// @param n number of trials
/// @return x / n; NaN for 0 / 0
ZUL_API double GetSampleProportion(unsigned x, unsigned n);

/// Wilson's score bounds, those p with |x / n - p| = q sqrt(p (1 - p) / n).
///
/// With the continuity correction x is moved away from the bound by 1/2 in all terms. For a single bound the
/// centre and the terms in the root keep the two-sided quantile; only its factor is the one-sided one.
/// Source: E. B. Wilson, Probable inference, the law of succession, and statistical inference, 1927.
/// @param record in: x, n; out: bounds, the open one infinite
/// @param continuity whether to correct for continuity; the lower bound at x = 0 and the upper one at x = n are
/// then NaN where the root has no real value
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @return 0 or 30002
ZUL_API int RunOneProportionWilson(OneProportion* record, bool continuity, double confidence,
                                   IntervalType type);

/// The normal test of the hypothesis that the proportion is p0, z = (x - n p0 + c) / sqrt(n p0 (1 - p0)).
///
/// c = 0 without the continuity correction. With it c = 1/2 for LessThan and -1/2 for GreaterThan; for NotEqual
/// c is -1/2 if |x - n p0| >= n / 2 and 0 otherwise.
/// @param record in: x, n; out: zStatistic, pValue
/// @param continuity whether to correct for continuity
/// @param alternative the alternative to proportion = p0
/// @param p0 the hypothesised proportion, in (0, 1)
/// @return 0
ZUL_API int RunOneProportionWilson(OneProportion* record, bool continuity, AlternativeHypothesis alternative,
                                   double p0);

/// Exact bounds: the beta quantiles with shapes (x, n - x + 1) and (x + 1, n - x). The open bound is 0 or 1, and
/// so is the lower bound at x = 0 and the upper one at x = n. Any other bound is NaN where one of its shapes is
/// above 94906265: from n = 94906266 on for x close to 0 or n, from n = 189812530 on for every x.
/// Source: C. J. Clopper and E. S. Pearson, The use of confidence or fiducial limits illustrated in the case of
/// the binomial, 1934.
/// @param record in: x, n; out: bounds
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @return 0 or 30002
ZUL_API int RunOneProportionClopperPearson(OneProportion* record, double confidence, IntervalType type);

/// The exact binomial test: P(X <= x), P(X >= x), or twice the smaller of them, at most 1.
/// @param record in: x, n; out: pValue, NaN for p0 outside [0, 1] and for n above 2147000000
/// @param alternative the alternative to proportion = p0
/// @param p0 the hypothesised proportion, in [0, 1]
/// @return 0; 30002 for another alternative: nothing is written
ZUL_API int RunOneProportionClopperPearson(OneProportion* record, AlternativeHypothesis alternative,
                                           double p0);

/// Wald's bounds x / n -+ q sqrt(p (1 - p) / n), p = x / n; the correction moves each outward by 1 / (2 n).
/// @param record in: x, n; out: bounds, the open one infinite
/// @param continuity whether to correct for continuity
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @return 0 or 30002
ZUL_API int RunOneProportionWaldCI(OneProportion* record, bool continuity, double confidence,
                                   IntervalType type);

/// Wald's bounds after adding q^2 / 2 events in q^2 trials, q the two-sided quantile for every type, or 2 in 4.
/// Source: A. Agresti and B. A. Coull, Approximate is better than "exact" for interval estimation of binomial
/// proportions, 1998.
/// @param record in: x, n; out: bounds, the open one infinite
/// @param addTwo whether to add 2 events and 2 failures whatever the confidence
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @return 0 or 30002
ZUL_API int RunOneProportionAgrestiCoullCI(OneProportion* record, bool addTwo, double confidence,
                                           IntervalType type);

/// Mid-p bounds: where the tail with half of the mass at x is 1 - confidence, or half of it for two bounds. The
/// open bound is 0 or 1. By at most 50 of Newton's steps from x / n, each ending in [0, 1]; the last one is the
/// result although it may not have converged, as for a confidence near 1. A NaN confidence gives 0; n = 0
/// without events and n above 2147000000 give NaN instead of the bound sought; x > n gives bounds in [0, 1],
/// which mean nothing.
/// Source: G. Berry and P. Armitage, Mid-P confidence intervals: a brief review, 1995.
/// @param record in: x, n; out: bounds
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @return 0 or 30002
ZUL_API int RunOneProportionMidP(OneProportion* record, double confidence, IntervalType type);

/// The mid-p test: a tail less half of the mass at x; two-sided, twice the smaller full tail, at most 1, less
/// that mass.
/// @param record in: x, n; out: pValue, NaN for p0 outside [0, 1] and for n above 2147000000
/// @param alternative the alternative to proportion = p0
/// @param p0 the hypothesised proportion, in [0, 1]
/// @return 0; 30002 for another alternative: nothing is written
ZUL_API int RunOneProportionMidP(OneProportion* record, AlternativeHypothesis alternative, double p0);

/// @}

/// @defgroup one_proportion One proportion
/// @ingroup hypothesis
/// Is the probability of an event p0, after x events in n trials? Bounds and test in one call, normal or
/// exact; the methods behind it, and others, are @ref one_proportion_methods.
///
/// @see @ref binomial, BinomialPValue(), @ref two_proportions
/// @{

/// The sample proportion, its bounds and the test of the hypothesis that the proportion is p0. From data.
///
/// Normal: RunOneProportionWilson() without correction. Exact: RunOneProportionClopperPearson().
/// @param record in: n; out: all other fields, zStatistic only by the normal test
/// @param data in: record->n values, 1 for an event and 0 otherwise
/// @param normal the normal approximation rather than the exact method
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to proportion = p0
/// @param p0 the hypothesised proportion, in (0, 1)
/// @return 0; 30002 for another type, and by the exact test for another alternative
ZUL_API int RunOneProportion(OneProportion* record, const int* data, bool normal, double confidence,
                             IntervalType type, AlternativeHypothesis alternative, double p0);

/// The bounds from data. In: n; out: x, proportion, bounds.
ZUL_API int RunOneProportion(OneProportion* record, const int* data, bool normal, double confidence,
                             IntervalType type);

/// Bounds and test from counts. In: x, n; out: all other fields.
ZUL_API int RunOneProportion(OneProportion* record, bool normal, double confidence, IntervalType type,
                             AlternativeHypothesis alternative, double p0);

/// The bounds from counts. In: x, n; out: proportion, bounds.
ZUL_API int RunOneProportion(OneProportion* record, bool normal, double confidence, IntervalType type);

/// As RunOneProportion() with other methods. From data.
///
/// Normal: Wald's bounds without correction. Exact: Clopper and Pearson's bounds, for x = 0 always the upper
/// bound alone and for x = n the lower one, whatever the type; BinomialPValue() for the test.
/// @param record in: n; out: all other fields, zStatistic only by the normal test
/// @param data in: record->n values, 1 for an event and 0 otherwise
/// @param normal the normal approximation rather than the exact method
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to proportion = p0; another one gives a p-value of 0
/// @param p0 the hypothesised proportion; the exact p-value is NaN outside [0, 1], and for n above 2147000000
/// @return 0 or 30002
ZUL_API int RunKelOneProportion(OneProportion* record, const int* data, bool normal, double confidence,
                                IntervalType type, AlternativeHypothesis alternative, double p0);

/// The bounds from data. In: n; out: x, proportion, bounds.
ZUL_API int RunKelOneProportion(OneProportion* record, const int* data, bool normal, double confidence,
                                IntervalType type);

/// Bounds and test from counts. In: x, n; out: all other fields.
ZUL_API int RunKelOneProportion(OneProportion* record, bool normal, double confidence, IntervalType type,
                                AlternativeHypothesis alternative, double p0);

/// The bounds from counts. In: x, n; out: proportion, bounds.
ZUL_API int RunKelOneProportion(OneProportion* record, bool normal, double confidence, IntervalType type);

/// @}

/// @defgroup two_proportions Two proportions
/// @ingroup hypothesis
/// Do the probabilities of an event in two populations differ, by difference0? The normal test, Fisher's
/// exact test, and bounds of the difference.
///
/// @f[z = \frac{\hat p_1 - \hat p_2 - d_0}{\text{se}}, \qquad \text{se}^2 = \hat p (1 - \hat p) \left(\frac{1}{n_1} + \frac{1}{n_2}\right) \text{ or } \frac{\hat p_1 (1 - \hat p_1)}{n_1} + \frac{\hat p_2 (1 - \hat p_2)}{n_2}@f]
///
/// @see HypergeometricPValue(), IContingencyTable::GetFisher(), IContingencyTable::GetRisk() for ratios
/// @{

/// The proportions, the bounds of their difference and the tests of the hypothesis that it is difference0:
/// the normal test, and for difference0 = 0 Fisher's exact test. From data.
///
/// The bounds are those of RunTwoProportionWaldCI() without correction. z = (p1 - p2 - difference0) / se with
/// se^2 = p (1 - p) (1 / n1 + 1 / n2), p the pooled proportion, if pooled and difference0 = 0; otherwise
/// se^2 = p1 (1 - p1) / n1 + p2 (1 - p2) / n2. Fisher's two-sided p-value adds the tail at x1 and the one that
/// begins on the other side of the mode with the first table that is not more probable; probabilities within
/// 1e-30 count as equal.
/// Source: R. A. Fisher, The logic of inductive inference, 1935.
/// @param record in: n1, n2; out: all other fields, fisherPValue only for difference0 = 0. fisherPValue is NaN
/// for another alternative, and for n1 + n2 above 2147483647
/// @param data1 in: record->n1 values, 1 for an event and 0 otherwise
/// @param data2 in: record->n2 values, 1 for an event and 0 otherwise
/// @param pooled whether to estimate the variance from both samples together; ignored for difference0 != 0
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to proportion 1 - proportion 2 = difference0
/// @param difference0 the hypothesised difference, in (-1, 1)
/// @return 0 or 30002
ZUL_API int RunKelTwoProportion(TwoProportion* record, const int* data1, const int* data2, bool pooled,
                                double confidence, IntervalType type, AlternativeHypothesis alternative,
                                double difference0);

/// Bounds and tests from counts. In: x1, x2, n1, n2; out: all other fields.
ZUL_API int RunKelTwoProportion(TwoProportion* record, bool pooled, double confidence, IntervalType type,
                                AlternativeHypothesis alternative, double difference0);

/// The tests from counts. In: x1, x2, n1, n2; out: zStatistic, pValue, fisherPValue. The status is 0.
ZUL_API int RunKelTwoProportion(TwoProportion* record, bool pooled, AlternativeHypothesis alternative,
                                double difference0);

/// Wald's bounds p1 - p2 -+ q sqrt(p1 (1 - p1) / n1 + p2 (1 - p2) / n2); the correction moves each outward by
/// (1 / n1 + 1 / n2) / 2.
/// @param record in: x1, x2, n1, n2; out: bounds, the open one infinite
/// @param continuity whether to correct for continuity
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @return 0 or 30002
ZUL_API int RunTwoProportionWaldCI(TwoProportion* record, bool continuity, double confidence,
                                   IntervalType type);

/// Wald's bounds after adding q^2 / 4 events in q^2 / 2 trials to each sample, q the two-sided quantile for
/// every type, or 1 in 2.
/// Source: A. Agresti and B. Caffo, Simple and effective confidence intervals for proportions and differences
/// of proportions result from adding two successes and two failures, 2000.
/// @param record in: x1, x2, n1, n2; out: bounds, the open one infinite
/// @param addOne whether to add 1 event and 1 failure to each sample whatever the confidence
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @return 0 or 30002
ZUL_API int RunTwoProportionAgrestiCaffoCI(TwoProportion* record, bool addOne, double confidence,
                                           IntervalType type);

/// @}

/// @defgroup one_variance One variance
/// @ingroup hypothesis
/// Is the variance of a population variance0? By the chi-square distribution, for normal values, and by
/// Bonett's method, for others.
///
/// @f[\chi^2 = \frac{(n-1)\, s^2}{\sigma_0^2}, \qquad \text{df} = n - 1@f]
///
/// @see @ref chi_square, @ref variances for two and more samples
/// @{

/// Confidence bounds of a variance and the test of the hypothesis that it is variance0, by two methods. From
/// data.
///
/// Chi-square, for normal values: (n - 1) variance over chi-square quantiles with n - 1 degrees of freedom; the
/// open bounds are 0 and infinity. The p-value is NaN for an infinite statistic. For n above 189812531 there
/// are no such quantiles: the other bounds are NaN, and so is the p-value of a statistic above 0.
///
/// Bonett, for any values with a kurtosis: c variance exp(-+c q e), e^2 = (kurtosis - 1 + 3 / n) / (n - 1),
/// c = n / (n - q), q the standard normal quantile; the kurtosis is taken about the mean trimmed by
/// 1 / (2 sqrt(n - 4)) (by nothing for n < 6). NaN for n <= q. The p-value is that of the q whose bound is
/// variance0; NaN for variance0 below 1e-30, negative or not finite. Constant data have the limits of variance
/// -> 0.
/// Source: D. G. Bonett, Approximate confidence interval for standard deviation of nonnormal
/// distributions, 2006.
/// @param record in: n; out: all other fields
/// @param data in: record->n values
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to variance = variance0
/// @param variance0 the hypothesised variance (not the standard deviation)
/// @return 0; 30002 for another type: the bounds are NaN, but both tests are computed all the same; 30001 if
/// memory for Bonett's method could not be obtained: its three results are NaN
/// @throws std::runtime_error "float overflow" by Bonett's test for NotEqual and GreaterThan where
/// n e + log(variance / variance0) exceeds some 690, or n e 710; close to that, from some 684 on,
/// std::overflow_error "Float exception: overflow.". With variance0 near the variance this is from about 235,000
/// values of a normal sample on, 585,000 of a uniform and 59,000 of an exponential one. All fields but
/// bonettPValue are written, and that is NaN.
ZUL_API int RunOneVariance(OneVariance* record, const double* data, double confidence, IntervalType type,
                           AlternativeHypothesis alternative, double variance0);

/// The bounds from data. In: n; out: all other fields, those of the tests and degreesOfFreedom NaN.
ZUL_API int RunOneVariance(OneVariance* record, const double* data, double confidence, IntervalType type);

/// Chi-square bounds and test from a variance. In: n, variance; out: all other fields, Bonett's NaN.
ZUL_API int RunOneVariance(OneVariance* record, double confidence, IntervalType type,
                           AlternativeHypothesis alternative, double variance0);

/// Chi-square bounds from a variance. In: n, variance; out: all other fields, NaN but for these bounds.
ZUL_API int RunOneVariance(OneVariance* record, double confidence, IntervalType type);

/// @}

/// The two-sided p-value of a Pearson correlation, that of t = r sqrt((n - 2) / (1 - r^2)) with n - 2 degrees
/// of freedom.
/// Source: R. A. Fisher, Frequency distribution of the values of the correlation coefficient in samples from an
/// indefinitely large population, 1915.
/// @ingroup hypothesis
/// @param r the correlation, in [-1, 1]; beyond by at most a relative 1e-12 it counts as -1 or 1
/// @param n number of pairs
/// @return the p-value, 0 for r = -1 and 1; NaN for n <= 2 and for r outside
ZUL_API double GetKelCorrelationPValue(double r, unsigned n);

/// @defgroup anderson_darling Anderson-Darling tests
/// @ingroup hypothesis
/// Do the values come from a distribution of this family? A^2 of ascending values, with the distribution function F,
/// and its p-value for parameters that were estimated from them.
///
/// @f[A^2 = -n - \frac{1}{n} \sum_{i=1}^{n} \left((2i - 1) \ln F(x_i) + (2n + 1 - 2i) \ln (1 - F(x_i))\right)@f]
///
/// A value where F is 0 or 1 makes A^2 infinite or NaN, NaN among the values make it NaN; the p-value of a NaN is NaN
/// with status 0.
/// Source: R. B. D'Agostino and M. A. Stephens, Goodness-of-fit techniques, 1986, chapter 4.
/// @{

/// Fit of an exponential distribution that begins at 0.
/// @param data in: n values, ascending
/// @param scale the scale (not the rate), > 0 and finite; another one may end in the exceptions of
/// ExponentialCdf()
/// @param aSquared out: the statistic; n = 0: NaN
/// @param pValue out: the p-value; n = 0: NaN
/// @param n number of values
/// @return 0; 10003 if the p-value is the upper bound 0.0025
ZUL_API int RunKelExponentialADTest(const double* data, double scale, double* aSquared, double* pValue,
                                    unsigned n);

/// Fit of a Weibull distribution that begins at 0. The p-value is interpolated between 0.25 and 0.01.
/// @param data in: n values, ascending
/// @param parameters in: shape and scale, > 0 and finite; others, and a value that overflows when divided by the
/// scale, may end in the exceptions of WeibullCdf()
/// @param aSquared out: the statistic; n = 0: -0
/// @param pValue out: the p-value; n = 0, and exactly the first critical value, 0.474: NaN
/// @param n number of values
/// @return 0; 10003 if the p-value is the upper bound 0.01; 10004 if it is the lower bound 0.25
ZUL_API int RunKelWeibullADTest(const double* data, const double* parameters, double* aSquared,
                                double* pValue, unsigned n);

/// @}

}  // namespace v0

namespace v1 {

/// @addtogroup anderson_darling
/// @{

/// Fit of a normal distribution.
/// @param data in: n values, ascending
/// @param parameters in: mean and standard deviation
/// @param aSquared out: the statistic; n < 2: NaN
/// @param pValue out: the p-value; n < 2: NaN
/// @param n number of values
/// @return 0; 10003 if the p-value is the upper bound 0.005
ZUL_API int RunKelNormalADTest(const double* data, const double* parameters, double* aSquared, double* pValue,
                               unsigned n);

/// Fit of a lognormal distribution: RunKelNormalADTest() of the logarithms. A negative value makes A^2 NaN.
/// @param data in: n values, ascending
/// @param parameters in: mean and standard deviation of the logarithms
/// @param aSquared out: the statistic; n < 2: NaN
/// @param pValue out: the p-value; n < 2: NaN
/// @param n number of values
/// @return 0; 10003 if the p-value is the upper bound 0.005
ZUL_API int RunKelLogNormalADTest(const double* data, const double* parameters, double* aSquared,
                                  double* pValue, unsigned n);

/// @}

/// @defgroup runs Runs tests
/// @ingroup hypothesis
/// Do values above and below K follow each other at random? By the number of runs, sequences of values on one
/// side.
/// @{

/// Runs test for randomness.
struct ZUL_API RunsTest {
    unsigned below;       ///< number of values below K; for RunKelRunsTest() of those not above
    unsigned above;       ///< number of values above K
    unsigned runs;        ///< number of runs: of stretches of values on one side
    double expectedRuns;  ///< expected number of runs, 2 below above / (below + above) + 1
    double pValue;        ///< two-sided p-value
    RunsTest();           ///< NaN and counts of 0
};

/// The exact runs test: twice the smaller tail of the number of runs, at most 1. Values equal to K are left
/// out; a NaN counts as below. A single run has the p-value 0. The time grows with the smaller of the two
/// counts.
/// Source: F. S. Swed and C. Eisenhart, Tables for testing randomness of grouping in a sequence of
/// alternatives, 1943.
/// @param record out: all fields; without values the counts are 0 and the rest NaN
/// @param data in: n values in the order of their occurrence
/// @param K the value that separates the two sides
/// @param n number of values
/// @return 0
ZUL_API int RunRunsTest(RunsTest* record, const double* data, double K, unsigned n);

/// The runs test by the normal approximation, without continuity correction. Values equal to K, and NaN, count
/// as not above it.
/// Source: A. Wald and J. Wolfowitz, On a test whether two samples are from the same population, 1940.
/// @param record out: all fields; pValue NaN if all values are on one side, n = 0: counts 0 and the rest NaN
/// @param data in: n values in the order of their occurrence
/// @param K the value that separates the two sides
/// @param n number of values
/// @return 0
ZUL_API int RunKelRunsTest(RunsTest* record, const double* data, double K, unsigned n);

/// @}

}  // namespace v1

/// The chi-square test of observed counts O against expected counts E = total p: the sum of (O - E)^2 / E
/// against the chi-square distribution with categories - 1 degrees of freedom.
///
/// Neither that the proportions add up to 1 nor that the counts add up to the total is checked; an expected
/// count of 0 gives infinity or NaN.
/// Source: K. Pearson, On the criterion that a given system of deviations from the probable in the case of a
/// correlated system of variables is such that it can be reasonably supposed to have arisen from random
/// sampling, 1900.
/// @ingroup hypothesis
/// @param observed in: `categories` counts
/// @param proportions in: `categories` proportions; null: all equal
/// @param expected out: `categories` expected counts
/// @param contributions out: `categories` contributions (O - E)^2 / E to the statistic
/// @param chiSquare out: the statistic
/// @param pValue out: the upper tail; NaN for fewer than two categories
/// @param degreesOfFreedom out: categories - 1
/// @param total the total count
/// @param categories number of categories
/// @return 0
ZUL_API int RunKelTabularChiSqGOFTest(const double* observed, const double* proportions, double* expected,
                                      double* contributions, double* chiSquare, double* pValue,
                                      double* degreesOfFreedom, double total, unsigned categories);

}  // namespace zul
