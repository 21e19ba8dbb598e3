/// @file
/// Tests and confidence intervals for the variances of two samples, and of several.
#pragma once

#include <zul/export.h>
#include <zul/hypothesis.h>

/// @defgroup variances Two and several variances
/// @ingroup hypothesis
/// Are the variances of two samples, or of several, the same? With normal values by the F test and
/// Bartlett's, without by Bonett's and Levene's.
///
/// | status | meaning |
/// |---|---|
/// | 0 | success |
/// | 30000 | a sample has fewer than 2 values or one that is NaN or infinite, a variance is negative or NaN, or there are fewer than 2 groups: every output is NaN or 0 |
/// | 30001 | working storage could not be obtained: every output is NaN or 0 |
/// | 30002 | the interval type is none of the three: the bounds are NaN, all else is as for a good one |
/// | 30007 | a sample has the variance 0, exactly so where all its values are equal; see the records |
/// | 30011 | several groups hold more than 4294967295 values: every output is NaN or 0 |
///
/// Of several that apply the largest is returned. A routine first sets every output to NaN (n to 0): a record that is
/// used again shows nothing of what was before. A confidence that is NaN or outside (0, 1) gives NaN bounds, an
/// alternative that is none of the three the p-value 0, both with status 0.
///
/// Where the squares of values overflow, what rests on them is infinite or NaN, with status 0.
///
/// Relative errors are below 1e-8 for bounds and p-values and 1e-11 for all else. The routines set no floating-point
/// mode but around the distribution functions that they call, which leave the thread in the default mode; called in that
/// mode they do not throw. Time: n log n for the trimmed means and medians, and for several groups one square root for
/// each pair.

namespace zul {
namespace v0 {

/// Comparison of the variances of two samples.
///
/// F: for normal values, r = variance1 / variance2 over the F distribution.
///
/// Bonett: D. G. Bonett, Robust confidence interval for a ratio of standard deviations, 2006. The error of log r comes
/// from the fourth powers of the distances from the trimmed means (a share of 1 / (2 sqrt(n - 4)) is cut from either
/// end, nothing below n = 6), pooled under the ratio that is asked about, t:
/// g = (n1 + n2) (S1 + t^2 S2) / ((n1 - 1) variance1 + t (n2 - 1) variance2)^2,
/// e^2 = (g - (n1 - 3) / n1) / (n1 - 1) + (g - (n2 - 3) / n2) / (n2 - 1). For samples of different size log r is
/// corrected by log c, c = [n1 / (n1 - z)] / [n2 / (n2 - z)] for the normal quantile z. The interval consists of the
/// ratios that the test does not reject, and samples that change places invert it. It does not exist, and its bounds are
/// NaN, where the sizes differ and z is not below the smaller one. A ratio that no interval of such samples reaches has
/// the p-value at z = n of the smaller one.
///
/// Levene: the distances from the medians, compared by a one-way analysis: M. B. Brown and A. B. Forsythe, Robust tests
/// for the equality of variances, 1974. The hypothesised ratio plays no part.
///
/// A variance of 0 (30007): ratio, F statistic and bounds as the arithmetic has them, 0, infinite or NaN; Bonett's
/// fields NaN; Levene's test as ever.
/// @ingroup variances
struct ZUL_API TwoVariance {
    double variance1;  ///< variance of the first sample, divisor n - 1; output with data, else input
    double variance2;  ///< variance of the second sample; output with data, else input
    double ratio;      ///< variance1 / variance2
    double
        fLowerBound;  ///< lower confidence bound of the ratio for normal values; 0 for an upper bound alone
    double fUpperBound;        ///< upper confidence bound for normal values; infinite for a lower bound alone
    double bonettLowerBound;   ///< lower confidence bound by Bonett's method; NaN without data
    double bonettUpperBound;   ///< upper confidence bound by Bonett's method; NaN without data
    double fStatistic;         ///< ratio / ratio0; NaN without a test
    double fPValue;            ///< p-value of the F test; NaN without a test and for an infinite statistic
    double degreesOfFreedom1;  ///< n1 - 1
    double degreesOfFreedom2;  ///< n2 - 1
    double bonettPValue;       ///< p-value of Bonett's test; NaN without a test or without data
    double
        leveneStatistic;  ///< Levene's F; NaN without spread of the distances, without a test or without data
    double levenePValue;  ///< its p-value; of one side by the t statistic with the sign of the difference
    unsigned n1;          ///< number of values of the first sample; input
    unsigned n2;          ///< number of values of the second sample; input
    TwoVariance();        ///< NaN and counts of 0
};

/// Comparison of the variances of several groups.
///
/// Comparison: the largest |log(variance_i / variance_j)| over its error by Bonett's method (as in TwoVariance, at the
/// ratio of the two) times sqrt(2), over the range of as many normal values.
///
/// Levene: as in TwoVariance. Bartlett: for normal values, M. S. Bartlett, Properties of sufficiency and statistical
/// tests, 1937.
///
/// A variance of 0 (30007): the comparison, Bartlett's test and all intervals NaN; standard deviations, the pooled one and
/// Levene's test as ever.
/// @ingroup variances
struct ZUL_API VariancesTest {
    double comparisonStatistic;      ///< the largest log ratio over its error
    double comparisonPValue;         ///< its p-value
    double leveneStatistic;          ///< Levene's F; NaN without spread of the distances
    double levenePValue;             ///< its p-value
    double leveneDegreesOfFreedom1;  ///< groups - 1
    double leveneDegreesOfFreedom2;  ///< n - groups
    double bartlettStatistic;        ///< Bartlett's chi-square
    double bartlettPValue;           ///< its p-value, groups - 1 degrees of freedom
    double pooledStandardDeviation;  ///< the root of the mean of the variances by their degrees of freedom
    unsigned groups;                 ///< number of groups; input
    unsigned n;                      ///< number of all values; output
    VariancesTest();                 ///< NaN and counts of 0
};

/// @addtogroup variances
/// @{

/// Bounds and tests from data. In: n1, n2; out: all other fields.
/// @param record the record
/// @param data1 in: n1 values
/// @param data2 in: n2 values
/// @param confidence the confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative
/// @param ratio0 the hypothesised ratio of the variances, first over second, > 0 and finite; another one gives NaN for
/// the p-values of F and Bonett's test
/// @return a status
ZUL_API int RunTwoVariance(TwoVariance* record, const double* data1, const double* data2, double confidence,
                           IntervalType type, AlternativeHypothesis alternative, double ratio0);

/// The bounds from data. In: n1, n2; out: all other fields, those of the tests NaN.
ZUL_API int RunTwoVariance(TwoVariance* record, const double* data1, const double* data2, double confidence,
                           IntervalType type);

/// F bounds and test from two variances. In: n1, n2, variance1, variance2; out: all other fields, Bonett's and Levene's
/// NaN.
ZUL_API int RunTwoVariance(TwoVariance* record, double confidence, IntervalType type,
                           AlternativeHypothesis alternative, double ratio0);

/// F bounds from two variances. In: n1, n2, variance1, variance2; out: all other fields, NaN but for the ratio, these
/// bounds and the degrees of freedom.
ZUL_API int RunTwoVariance(TwoVariance* record, double confidence, IntervalType type);

/// Intervals and tests for several groups. Each array may be null where it is not wanted, and is NaN where the record's
/// outputs are.
/// @param record in: groups, 2 and more; out: all other fields
/// @param data in: the values of the groups, one group after the other
/// @param sizes in: how many values each of them has, 2 and more
/// @param confidence the confidence level of each kind of intervals together, in (0, 1)
/// @param standardDeviations out: groups values, divisor n - 1
/// @param simultaneousLower out: groups values, lower bounds of the standard deviations, which hold for all groups at a
/// time by Bonferroni's inequality: Bonett's bounds for one variance (RunOneVariance()) at 1 - (1 - confidence) / groups
/// @param simultaneousUpper out: groups values, the upper bounds
/// @param comparisonLower out: groups values, lower ends of intervals that do not overlap where two groups differ:
/// Y. Hochberg, G. Weiss and S. Hart, On graphical procedures for multiple comparisons, 1982, with the errors of
/// Bonett's method; for two groups exact, for
/// more an approximation, in the wrong order where the errors of the pairs differ as much as no single errors can
/// @param comparisonUpper out: groups values, the upper ends
/// @return a status, not 30002
ZUL_API int RunVariancesTest(VariancesTest* record, const double* data, const unsigned* sizes,
                             double confidence, double* standardDeviations, double* simultaneousLower,
                             double* simultaneousUpper, double* comparisonLower, double* comparisonUpper);

/// @}

}  // namespace v0
}  // namespace zul
