/// @file
/// Hypothesis tests by ranks, with estimates and confidence bounds.
#pragma once

#include <zul/export.h>
#include <zul/hypothesis.h>

/// @defgroup rank_tests Rank tests
/// Hypothesis tests that know of the values only their order: sign, Wilcoxon signed rank, Mann-Whitney, Kruskal-Wallis,
/// Mood's median and Friedman's test.
///
/// The caller owns a record, sets its counts and passes it to a Run function. A constructor sets every double to NaN
/// and every count to 0. A Run function sets all outputs so before it begins, those of a group that it leaves out too:
/// a record that is used again shows nothing old. Output arrays may be null. Data arrays are only read; groups stand in
/// one array, one after the other, blocks row by row.
///
/// | status | meaning |
/// |---|---|
/// | 0 | success |
/// | 30000 | too few values, groups, blocks or treatments, or a value that is NaN or infinite: all outputs NaN |
/// | 30001 | working storage could not be obtained: all outputs NaN |
/// | 30002 | the interval type is none of the three: bounds and their confidences NaN; all else as with a good type |
/// | 30007 | no variation: what the routine says is NaN |
/// | 30011 | the groups hold more than 4294967295 values: all outputs NaN |
/// | 30023 | rank-sum test of an empty sample: all outputs NaN; of equal values: the p-values are NaN |
///
/// The largest of 30002, 30007 and 30023 is returned.
///
/// Ties are equal values, and equal differences from a hypothesised value, each formed and rounded once; they share the
/// mean of their ranks. Exact p-values and confidences are those of the permutations of the ranks as they are, ties
/// included; their relative error is below 1e-12. A two-sided p-value is twice the smaller tail and at most 1. An
/// alternative that is none of the three gives 0; a hypothesised value that is NaN gives a statistic and a p-value of
/// NaN, counts of 0, and leaves the interval. A confidence that is not inside (0, 1) gives NaN for the bounds and their
/// confidence. A single bound may have a confidence below 1/2: it goes as far as the middle. A result of 0 is +0, a
/// difference beyond the range of a double is infinite, and a median of two values is (a + b) / 2.
///
/// An overload with an alternative does what the one without it does, to the bit, and then the test. The routines set
/// no floating-point mode but around the distribution functions that they call, which leave the thread in the default
/// mode; called in that mode they do not throw, and they may run on any thread at any time, on different records.

namespace zul {
namespace v0 {

/// Sign test of a median.
/// @ingroup sign_test
struct ZUL_API SignTest {
    double median;           ///< sample median
    double lowerBound;       ///< lower confidence bound of the median, interpolated
    double upperBound;       ///< upper confidence bound of the median, interpolated
    double innerConfidence;  ///< the confidence of the interval between the values of depth d + 1
    double innerLower;       ///< its lower end
    double innerUpper;       ///< its upper end
    double outerConfidence;  ///< the confidence of the interval between the values of depth d
    double outerLower;       ///< its lower end
    double outerUpper;       ///< its upper end
    double pValue;           ///< p-value of the test
    unsigned below;          ///< number of values below the hypothesised median
    unsigned equal;          ///< number of values equal to it
    unsigned above;          ///< number of values above it
    unsigned n;              ///< number of values; input
    SignTest();              ///< NaN and counts of 0
};

/// Wilcoxon's signed rank test of a centre of symmetry.
/// @ingroup wilcoxon
struct ZUL_API Wilcoxon {
    double statistic;           ///< sum of the ranks of the values above the hypothesised one
    double pValue;              ///< p-value of the test
    double estimate;            ///< median of the averages of all pairs of values, each with itself too
    double achievedConfidence;  ///< the confidence that the bounds really have
    double lowerBound;          ///< lower confidence bound of the centre
    double upperBound;          ///< upper confidence bound of the centre
    unsigned used;              ///< number of values that differ from the hypothesised one
    unsigned exact;             ///< 1 if the exact law was used, else 0
    unsigned n;                 ///< number of values; input
    Wilcoxon();                 ///< NaN and counts of 0
};

/// The rank-sum test of two samples, of Mann and Whitney.
/// @ingroup mann_whitney
struct ZUL_API MannWhitney {
    double median1;             ///< median of sample 1
    double median2;             ///< median of sample 2
    double rankSum;             ///< sum W of the ranks of sample 1 among all values
    double u;                   ///< W - n1 (n1 + 1) / 2: pairs with the first value larger, ties counting 1/2
    double pValue;              ///< p-value; by the normal law with the sd of untied ranks
    double pValueTies;          ///< p-value; by the normal law with the sd of the ranks as they are
    double estimate;            ///< median of the differences of all pairs, sample 1 - sample 2
    double achievedConfidence;  ///< the confidence that the bounds really have
    double lowerBound;          ///< lower confidence bound of the shift from sample 2 to sample 1
    double upperBound;          ///< upper confidence bound of that shift
    unsigned exact;             ///< 1 if the exact law was used, else 0
    unsigned n1;                ///< size of sample 1; input
    unsigned n2;                ///< size of sample 2; input
    MannWhitney();              ///< NaN and counts of 0
};

/// The rank test of several groups, of Kruskal and Wallis.
/// @ingroup kruskal_wallis
struct ZUL_API KruskalWallis {
    double h;                 ///< statistic
    double hAdjusted;         ///< statistic, corrected for ties
    double degreesOfFreedom;  ///< number of groups with values, less 1
    double pValue;            ///< p-value of h
    double pValueAdjusted;    ///< p-value of hAdjusted
    unsigned groups;          ///< number of groups; input
    unsigned n;               ///< number of values; output
    KruskalWallis();          ///< NaN and counts of 0
};

/// Mood's median test of several groups.
/// @ingroup mood_median
struct ZUL_API MoodMedian {
    double overallMedian;     ///< median of all values
    double chiSquare;         ///< statistic
    double degreesOfFreedom;  ///< number of groups with values, less 1
    double pValue;            ///< p-value of the test
    unsigned groups;          ///< number of groups; input
    unsigned n;               ///< number of values; output
    MoodMedian();             ///< NaN and counts of 0
};

/// Friedman's test of treatments in blocks.
/// @ingroup friedman
struct ZUL_API Friedman {
    double s;                 ///< statistic
    double sAdjusted;         ///< statistic, corrected for ties
    double degreesOfFreedom;  ///< treatments - 1
    double pValue;            ///< p-value of s
    double pValueAdjusted;    ///< p-value of sAdjusted
    double kendallW;          ///< Kendall's concordance of the blocks, sAdjusted / (blocks (treatments - 1))
    double grandMedian;       ///< median of the values less their treatments' effects
    unsigned blocks;          ///< number of blocks; input
    unsigned treatments;      ///< number of treatments; input
    Friedman();               ///< NaN and counts of 0
};

/// @defgroup sign_test Sign test
/// @ingroup rank_tests
/// Is the median of a population median0? For any continuous distribution, by the signs of x - median0.
///
/// @see @ref wilcoxon, which a symmetric distribution makes sharper; @ref binomial,
/// v1::RunKelBoxplotHelper()
/// @{

/// Confidence bounds of a median, and the test of the hypothesis that it is median0, by the number of values above it
/// among those that differ from it: binomial with probability 1/2, at every n.
///
/// The bounds lie between order statistics of a depth d and those of depth d + 1 and are interpolated so that their
/// confidence is near the one wanted, as those of v1::RunKelBoxplotHelper(): by the exact binomial coverage up to n =
/// 50, by its normal approximation beyond. outer is the interval of depth d, inner that of depth d + 1. A single bound
/// at a confidence C is an end of the interval at 2 C - 1, which has to be inside (0, 1); inner and outer have one end
/// then, the other is infinite. If even the extreme values have too little confidence, as always for n = 1, bounds and
/// outer are NaN and inner is of depth 1; inner is NaN where the outer depth reaches the middle. No value that differs
/// from median0: p = 1.
/// Source: T. P. Hettmansperger and S. J. Sheather, Confidence intervals based on interpolated order statistics, 1986.
/// @param record in: n; out: all other fields
/// @param data in: record->n values
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to median = median0
/// @param median0 the hypothesised median
/// @return 0, 30000, 30001 or 30002
ZUL_API int RunSignTest(SignTest* record, const double* data, double confidence, IntervalType type,
                        AlternativeHypothesis alternative, double median0);

/// The bounds alone; pValue is NaN and the counts are 0.
ZUL_API int RunSignTest(SignTest* record, const double* data, double confidence, IntervalType type);

/// @}

/// @defgroup wilcoxon Wilcoxon signed rank test
/// @ingroup rank_tests
/// Is the centre of a symmetric distribution median0? Of paired data, whose differences are the sample: does
/// the second value differ from the first?
///
/// @f[W = \sum_{x_i > m_0} \operatorname{rank} \lvert x_i - m_0 \rvert@f]
///
/// @see @ref sign_test, @ref paired_t, @ref mann_whitney for independent samples
/// @{

/// Estimate and confidence bounds of the centre of a symmetric distribution, and the test of the hypothesis that it is
/// median0, by the sum of the ranks of |x - median0| over the values above it. Values equal to median0 are dropped.
///
/// The bounds are the k-th smallest and the k-th largest of the M = n (n + 1) / 2 averages of pairs (J. L. Hodges and
/// E. L. Lehmann, Estimates of location based on rank tests, 1963), k the depth whose confidence is the least that is
/// not below the one wanted where there is one, and at least 1. Up to n = 200 the law is exact, that of the ranks as
/// they are for the test and that without ties for the bounds; beyond, or if `normal`, both are normal with a
/// correction for continuity, the test's variance n (n + 1) (2 n + 1) / 24 less the sum of (t^3 - t) / 48 over ties.
/// No value that differs from median0: statistic 0 and p = 1.
/// Sources: F. Wilcoxon, Individual comparisons by ranking methods, 1945; B. Streitberg and J. Roehmel, Exact
/// distributions for permutation and rank tests, 1986.
/// @param record in: n; out: all other fields
/// @param data in: record->n values
/// @param normal whether to use the normal law at every n
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to centre = median0
/// @param median0 the hypothesised centre
/// @return 0, 30000, 30001 or 30002
ZUL_API int RunWilcoxon(Wilcoxon* record, const double* data, bool normal, double confidence,
                        IntervalType type, AlternativeHypothesis alternative, double median0);

/// Estimate and bounds alone; statistic and pValue are NaN, used is 0.
ZUL_API int RunWilcoxon(Wilcoxon* record, const double* data, bool normal, double confidence,
                        IntervalType type);

/// @}

/// @defgroup mann_whitney Mann-Whitney test
/// @ingroup rank_tests
/// Are the values of one sample larger than those of another, by a shift? Also called the Wilcoxon rank sum
/// test, or U test.
///
/// @f[U = \sum_{i=1}^{n_1} \operatorname{rank} x_i - \frac{n_1 (n_1 + 1)}{2}@f]
///
/// @see @ref wilcoxon for pairs, @ref two_sample_t, @ref kruskal_wallis for more than two samples
/// @{

/// Estimate and confidence bounds of the shift between two samples, and the test of the hypothesis that there is none,
/// by the sum of the ranks of sample 1 among all N = n1 + n2 values.
///
/// The bounds are the k-th smallest and the k-th largest of the n1 n2 differences of pairs, k found as that of
/// RunWilcoxon(). Up to N = 100 the law is exact, that of the ranks as they are for the test, so that both p-values are
/// the same, and that without ties for the bounds. Beyond, or if `normal`, both are normal with a correction for
/// continuity; the variance n1 n2 (N + 1) / 12 less n1 n2 sum (t^3 - t) / (12 N (N - 1)) over ties belongs to
/// pValueTies.
/// Sources: H. B. Mann and D. R. Whitney, On a test of whether one of two random variables is stochastically larger
/// than the other, 1947; B. Streitberg and J. Roehmel, as above.
/// @param record in: n1, n2; out: all other fields
/// @param sample1 in: record->n1 values
/// @param sample2 in: record->n2 values
/// @param normal whether to use the normal law at every size
/// @param confidence confidence level, in (0, 1)
/// @param type which bounds
/// @param alternative the alternative to no shift; GreaterThan: sample 1 is shifted upwards
/// @return 0, 30000, 30001 or 30002; 30023 for an empty sample, and where all values are equal
ZUL_API int RunMannWhitney(MannWhitney* record, const double* sample1, const double* sample2, bool normal,
                           double confidence, IntervalType type, AlternativeHypothesis alternative);

/// All but the p-values, which are NaN. Equal values are no failure.
ZUL_API int RunMannWhitney(MannWhitney* record, const double* sample1, const double* sample2, bool normal,
                           double confidence, IntervalType type);

/// @}

/// @defgroup kruskal_wallis Kruskal-Wallis test
/// @ingroup rank_tests
/// Do several independent groups come from one distribution? The analysis of variance of their ranks.
///
/// @f[H = \frac{12}{N (N+1)} \sum_i n_i \left(\bar R_i - \frac{N+1}{2}\right)^2@f]
///
/// @see @ref mann_whitney, @ref mood_median, @ref friedman for blocks, @ref chi_square
/// @{

/// The test of the hypothesis that all groups come from one distribution, by h = 12 / (N (N + 1)) times the sum of
/// n_i (mean rank_i - (N + 1) / 2)^2, against the chi-square distribution. Corrected for ties, h is divided by
/// 1 - sum (t^3 - t) / (N^3 - N). Empty groups do not count.
/// Source: W. H. Kruskal and W. A. Wallis, Use of ranks in one-criterion variance analysis, 1952.
/// @param record in: groups; out: all other fields
/// @param data in: the groups, one after the other
/// @param sizes in: record->groups numbers of values
/// @param medians out: the groups' medians; an empty group: NaN
/// @param meanRanks out: the groups' mean ranks, likewise
/// @param z out: (mean rank - (N + 1) / 2) / sqrt((N + 1) (N / n_i - 1) / 12), likewise
/// @return 0; 30000, also for fewer than two groups with values; 30001; 30007 if all values are equal: hAdjusted and
/// its p-value are NaN; 30011
ZUL_API int RunKruskalWallis(KruskalWallis* record, const double* data, const unsigned* sizes,
                             double* medians, double* meanRanks, double* z);

/// @}

/// @defgroup mood_median Mood's median test
/// @ingroup rank_tests
/// Do several independent groups have one median? By a table of counts on either side of it: outliers count
/// no more than other values.
///
/// @see @ref kruskal_wallis, which is sharper without outliers; @ref contingency
/// @{

/// The test of the hypothesis that all groups have one median, by Pearson's chi-square of the counts of values up to
/// and above the median of all. Empty groups do not count.
/// Source: A. M. Mood, On the asymptotic efficiency of certain nonparametric two-sample tests, 1954.
/// @param record in: groups; out: all other fields
/// @param data in: the groups, one after the other
/// @param sizes in: record->groups numbers of values
/// @param notAbove out: the groups' numbers of values up to the overall median; an empty group: 0
/// @param above out: the groups' numbers of values above it, likewise
/// @param medians out: the groups' medians; an empty group: NaN
/// @param interquartileRanges out: the groups' differences of the quartiles, method 6, likewise
/// @return 0; 30000, also for fewer than two groups with values; 30001; 30007 if no value is above the overall median:
/// chiSquare and pValue are NaN; 30011
ZUL_API int RunMoodMedian(MoodMedian* record, const double* data, const unsigned* sizes, unsigned* notAbove,
                          unsigned* above, double* medians, double* interquartileRanges);

/// @}

/// @defgroup friedman Friedman's test
/// @ingroup rank_tests
/// Do several treatments differ, each applied once within every block? The analysis of variance of the ranks
/// within blocks.
///
/// @f[S = \frac{12}{b k (k+1)} \sum_j \left(R_j - \frac{b (k+1)}{2}\right)^2@f]
///
/// @see @ref kruskal_wallis for independent groups, @ref wilcoxon for two treatments, @ref chi_square
/// @{

/// The test of the hypothesis that treatments do not differ, by their ranks within b blocks: s = 12 / (b k (k + 1))
/// times the sum of (R_j - b (k + 1) / 2)^2 over the rank sums R_j of the k treatments, against the chi-square
/// distribution. Corrected for ties, s is divided by 1 - sum (t^3 - t) / (b k (k^2 - 1)).
///
/// The effect of a treatment is the mean, over all treatments, of the median difference from it within blocks
/// (K. Doksum, Robust procedures for some linear models with one observation per cell, 1967).
/// Source: M. Friedman, The use of ranks to avoid the assumption of normality implicit in the analysis of
/// variance, 1937.
/// @param record in: blocks, treatments; out: all other fields
/// @param data in: record->blocks times record->treatments values, block by block
/// @param rankSums out: the treatments' rank sums
/// @param effects out: the treatments' effects
/// @return 0; 30000, also for no block and for fewer than two treatments; 30001; 30007 if the values of each block are
/// equal: sAdjusted, its p-value and kendallW are NaN
ZUL_API int RunFriedman(Friedman* record, const double* data, double* rankSums, double* effects);

/// @}

}  // namespace v0
}  // namespace zul
