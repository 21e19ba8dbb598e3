/// @file
/// Contingency tables: tests, residuals and measures of association of two-way tables of counts.
#pragma once

#include <zul/export.h>
#include <zul/hypothesis.h>

/// @defgroup contingency Contingency tables
/// Contingency tables: tests, residuals and measures of association of two-way tables of counts.
///
/// The caller makes a table with MakeIContingencyTable(), from counts or from the classes of observations, asks
/// it for what is wanted and releases it with DeleteIContingencyTable(). A count is any finite number from 0
/// on; it need not be whole. Below, x is the count of a cell, r and c are the totals of its row and of its
/// column, n is the total of the table and E = r c / n the count to expect if rows and columns are independent.
///
/// A row or column without counts stays in the table, but counts neither in the degrees of freedom nor among the
/// expected counts nor in q, the smaller of the numbers of rows and of columns that have counts.
///
/// Every Get operation first sets all fields of its record to NaN or 0, and returns a status:
///
/// | status | meaning |
/// |---|---|
/// | 0 | success |
/// | 30000 | the table has no observations; a factory: no rows or columns, or a value that is no count; all NaN |
/// | 30001 | memory could not be obtained; all NaN |
/// | 30002 | RunMantelHaenszel() only: the interval type is none of the three; the bounds are NaN |
/// | 30007 | no variation: all counts in one row or one column, or no stratum with two of each; the test is NaN |
/// | 30011 | the test is not defined for the shape of the table or for its counts; all NaN |
///
/// A field whose value is 0/0 is NaN, with status 0. Of 30002 and 30007 the larger is returned. Chi-square p-values
/// are upper tails. Products of two totals are formed as they are: beyond totals of 1e150 results may be infinite
/// or NaN.
///
/// The operations set no floating-point mode but around the distribution functions that they call, which leave the
/// thread in the default mode; they throw nothing when called in that mode. Any thread may read a table, several at
/// the same time too, as long as none deletes it.

namespace zul {

/// @addtogroup contingency
/// @{

/// Tests of the independence of rows and columns. All fields are outputs.
struct ZUL_API TableChiSquare {
    double pearson;                ///< sum of (x - E)^2 / E
    double pearsonPValue;          ///< its chi-square tail; NaN without degrees of freedom
    double likelihoodRatio;        ///< 2 sum of x log(x / E)
    double likelihoodRatioPValue;  ///< its chi-square tail; NaN without degrees of freedom
    double yates;        ///< Pearson's statistic with Yates' correction; 2 x 2 with no empty side, else NaN
    double yatesPValue;  ///< its chi-square tail, 1 degree of freedom
    double degreesOfFreedom;  ///< (rows - 1) (columns - 1), of those with counts
    double minimumExpected;   ///< the smallest expected count
    unsigned cellsBelowFive;  ///< cells whose expected count is below 5
    /// All fields NaN or 0.
    TableChiSquare();
};

/// Measures of association. All fields are outputs. "Column" says that the column is what depends on the row. C
/// and D are the numbers of concordant and of discordant pairs. The standard errors are asymptotic, by the
/// delta method, and hold whether or not there is an association; where a measure is 1 or -1 they are 0 within
/// 1e-7.
struct ZUL_API TableAssociation {
    double phi;  ///< 2 x 2: with the sign of a d - b c; else sqrt(X2 / n), X2 being Pearson's
    double contingencyCoefficient;      ///< sqrt(X2 / (X2 + n))
    double cramersV;                    ///< sqrt(X2 / (n (q - 1)))
    double concordant;                  ///< C, each pair once; exact below 2^53 for whole counts
    double discordant;                  ///< D
    double gamma;                       ///< Goodman and Kruskal's: (C - D) / (C + D)
    double gammaStandardError;          ///< that of gamma
    double tauB;                        ///< Kendall's: 2 (C - D) / sqrt((n^2 - sum r^2) (n^2 - sum c^2))
    double tauBStandardError;           ///< that of tauB
    double tauC;                        ///< Stuart's: 2 q (C - D) / (n^2 (q - 1))
    double tauCStandardError;           ///< that of tauC
    double somersDColumn;               ///< Somers' D: 2 (C - D) / (n^2 - sum r^2)
    double somersDColumnStandardError;  ///< that of somersDColumn
    double somersDRow;                  ///< 2 (C - D) / (n^2 - sum c^2)
    double somersDRowStandardError;     ///< that of somersDRow
    double lambdaColumn;                ///< by how much the row lessens the errors in guessing the column
    double lambdaRow;                   ///< and the column those in guessing the row
    double lambdaSymmetric;             ///< and each those in guessing the other, errors added up
    double goodmanKruskalTauColumn;     ///< as lambdaColumn, guessing in proportion to the counts
    double goodmanKruskalTauRow;        ///< as lambdaRow, guessing in proportion to the counts
    double uncertaintyColumn;     ///< Theil's: the share of the entropy of the column that the row explains
    double uncertaintyRow;        ///< and of that of the row
    double uncertaintySymmetric;  ///< and of the mean of both
    double pearsonR;              ///< correlation of the positions 1, 2, ... in the table as it stands
    double spearmanRho;           ///< correlation of the midranks of the totals
    double kappa;                 ///< Cohen's; NaN unless there are as many rows as columns
    double kappaStandardError;    ///< that of kappa
    /// All fields NaN.
    TableAssociation();
};

/// A test by a statistic with a chi-square distribution. All fields are outputs.
struct ZUL_API TableTest {
    double statistic;           ///< the statistic
    double degreesOfFreedom;    ///< its degrees of freedom
    double pValue;              ///< its chi-square tail
    double correctedStatistic;  ///< McNemar, 2 x 2: with a correction for continuity
    double correctedPValue;     ///< its chi-square tail
    double exactPValue;         ///< McNemar, 2 x 2: from the binomial distribution; NaN for fractions
    /// All fields NaN.
    TableTest();
};

/// Fisher's exact test. All fields are outputs.
struct ZUL_API TableFisher {
    double lessPValue;     ///< of an odds ratio below 1: the lower tail of the first cell
    double greaterPValue;  ///< of an odds ratio above 1: the upper tail
    double
        twoSidedPValue;  ///< all tables that are not more probable; ones within a relative 1e-12 count as equal
    /// All fields NaN.
    TableFisher();
};

/// The test for a trend of proportions. All fields are outputs.
struct ZUL_API TableTrend {
    double z;               ///< positive if the share of the first class grows
    double lessPValue;      ///< normal lower tail
    double greaterPValue;   ///< normal upper tail
    double twoSidedPValue;  ///< twice the smaller
    /// All fields NaN.
    TableTrend();
};

/// Ratios of a 2 x 2 table with the cells a, b in the first row and c, d in the second. All fields are outputs.
struct ZUL_API TableRisk {
    double oddsRatio;          ///< a d / (b c); may be infinite
    double oddsRatioLower;     ///< lower bound; NaN if a cell is 0
    double oddsRatioUpper;     ///< upper bound; NaN if a cell is 0
    double relativeRisk;       ///< [a / (a + b)] / [c / (c + d)]; may be infinite
    double relativeRiskLower;  ///< lower bound; NaN if a cell is 0
    double relativeRiskUpper;  ///< upper bound; NaN if a cell is 0
    /// All fields NaN.
    TableRisk();
};

/// The common odds ratio of several 2 x 2 tables. `strata` is an input, all else are outputs.
struct ZUL_API MantelHaenszel {
    double statistic;                  ///< the Mantel-Haenszel statistic
    double pValue;                     ///< its chi-square tail, 1 degree of freedom
    double oddsRatio;                  ///< the common odds ratio R / S; may be infinite
    double logOddsRatioStandardError;  ///< that of log(R / S); NaN if R or S is 0
    double lowerBound;                 ///< lower bound of the odds ratio
    double upperBound;                 ///< upper bound of the odds ratio
    unsigned strata;                   ///< number of tables
    /// All doubles NaN, strata 0.
    MantelHaenszel();
};

/// A two-way table of counts, made by MakeIContingencyTable(). The order of the operations is frozen.
class ZUL_API IContingencyTable {
public:
    virtual ~IContingencyTable();

    /// Number of rows, those without counts among them.
    virtual unsigned RowCount() const = 0;

    /// Number of columns, those without counts among them.
    virtual unsigned ColumnCount() const = 0;

    /// The count of a cell.
    /// @param row from 0
    /// @param column from 0
    /// @return NaN beyond the table
    virtual double Count(unsigned row, unsigned column) const = 0;

    /// The total of a row.
    /// @param row from 0
    /// @return NaN beyond the table
    virtual double RowTotal(unsigned row) const = 0;

    /// The total of a column.
    /// @param column from 0
    /// @return NaN beyond the table
    virtual double ColumnTotal(unsigned column) const = 0;

    /// The total of the table.
    virtual double Total() const = 0;

    /// The expected count E = r c / n of a cell.
    /// @param row from 0
    /// @param column from 0
    /// @return 0 in a row or column without counts; NaN beyond the table
    virtual double Expected(unsigned row, unsigned column) const = 0;

    /// The residual x - E of a cell.
    /// @param row from 0
    /// @param column from 0
    /// @return 0 in a row or column without counts; NaN beyond the table
    virtual double Residual(unsigned row, unsigned column) const = 0;

    /// The standardized residual (x - E) / sqrt(E) of a cell.
    /// @param row from 0
    /// @param column from 0
    /// @return NaN in a row or column without counts, and beyond the table
    virtual double StandardizedResidual(unsigned row, unsigned column) const = 0;

    /// The adjusted residual (x - E) / sqrt(E (1 - r / n) (1 - c / n)) of a cell, about standard normal if rows and
    /// columns are independent.
    /// Source: S. J. Haberman, The analysis of residuals in cross-classified tables, 1973.
    /// @param row from 0
    /// @param column from 0
    /// @return NaN in a row or column without counts, or with all of them, and beyond the table
    virtual double AdjustedResidual(unsigned row, unsigned column) const = 0;

    /// What a cell adds to Pearson's statistic, (x - E)^2 / E.
    /// @param row from 0
    /// @param column from 0
    /// @return NaN in a row or column without counts, and beyond the table
    virtual double Contribution(unsigned row, unsigned column) const = 0;

    /// Pearson's test of independence, that of the likelihood ratio, and Yates' correction
    /// max(0, |a d - b c| - n / 2)^2 n / (r1 r2 c1 c2). Without degrees of freedom the statistics are 0.
    /// Sources: K. Pearson, On the criterion that a given system of deviations from the probable in the case of
    /// a correlated system of variables is such that it can be reasonably supposed to have arisen from random
    /// sampling, 1900; F. Yates, Contingency tables involving small numbers and the chi-square test, 1934.
    /// @param out out: the record
    /// @return 0; 30000
    virtual int GetChiSquare(TableChiSquare* out) const = 0;

    /// All measures of association. In a time in proportion to the number of cells, and twice the table's memory.
    /// Sources: L. A. Goodman and W. H. Kruskal, Measures of association for cross classifications, 1954
    /// (gamma, lambda, tau); A. Stuart, The estimation and comparison of strengths of association in
    /// contingency tables, 1953; R. H. Somers, A new asymmetric measure of association for ordinal variables,
    /// 1962; H. Theil, On the estimation of relationships involving qualitative variables, 1970; J. Cohen, A
    /// coefficient of agreement for nominal scales, 1960; M. B. Brown and J. K. Benedetti, Sampling behavior of
    /// tests for correlation in two-way contingency tables, 1977, and J. L. Fleiss, J. Cohen and B. S. Everitt,
    /// Large sample standard errors of kappa and weighted kappa, 1969 (the standard errors).
    /// @param out out: the record
    /// @return 0; 30000; 30001
    virtual int GetAssociation(TableAssociation* out) const = 0;

    /// Fisher's exact test of independence in a 2 x 2 table, by the hypergeometric distribution of the first cell
    /// under the given totals.
    /// Source: R. A. Fisher, The Design of Experiments, 1935; two-sided as of J. O. Irwin, Tests of significance for
    /// differences between percentages based on small numbers, 1935.
    /// @param out out: the record
    /// @return 0; 30000; 30011 for another shape, fractions, or a total above 2147483647
    virtual int GetFisher(TableFisher* out) const = 0;

    /// The test of symmetry of a square table: McNemar's (b - c)^2 / (b + c) for 2 x 2, for more classes
    /// Bowker's sum of (x_ij - x_ji)^2 / (x_ij + x_ji) over all pairs of cells, with rows (rows - 1) / 2
    /// degrees of freedom; a pair without counts adds 0. For 2 x 2 also max(0, |b - c| - 1)^2 / (b + c) and
    /// twice the binomial tail of the smaller of b and c, at most 1; b = c = 0 gives the statistics 0 and the
    /// p-values 1.
    /// Sources: Q. McNemar, Note on the sampling error of the difference between correlated proportions or
    /// percentages, 1947; A. H. Bowker, A test for symmetry in contingency tables, 1948.
    /// @param out out: the record
    /// @return 0; 30000; 30011 unless there are as many rows as columns
    virtual int GetMcNemar(TableTest* out) const = 0;

    /// The test of linear by linear association, (n - 1) r^2 with 1 degree of freedom, r being the correlation
    /// of the positions in the table as it stands.
    /// Source: N. Mantel, Chi-square tests with one degree of freedom; extensions of the Mantel-Haenszel
    /// procedure, 1963.
    /// @param out out: the record; the fields from correctedStatistic on are NaN
    /// @return 0; 30000; 30007 if one row or one column has all counts
    virtual int GetLinearByLinear(TableTest* out) const = 0;

    /// The test for a trend of the share of the first of two classes over the scores 1, 2, ..., without a
    /// correction for continuity. In a table of two columns these are the classes and its rows the scores, as
    /// they stand; otherwise its two rows are the classes.
    /// Sources: W. G. Cochran, Some methods for strengthening the common chi-square tests, 1954; P. Armitage,
    /// Tests for linear trends in proportions and frequencies, 1955.
    /// @param out out: the record
    /// @return 0; 30000; 30007 if one class or one score has all counts; 30011 unless a side is 2
    virtual int GetTrend(TableTrend* out) const = 0;

    /// The odds ratio and the relative risk of the first column in a 2 x 2 table, with bounds exp(log ratio -+ q e),
    /// q the standard normal quantile at (confidence + 1) / 2, e^2 = 1/a + 1/b + 1/c + 1/d for the odds ratio and
    /// 1/a - 1/(a + b) + 1/c - 1/(c + d) for the relative risk.
    /// Sources: B. Woolf, On estimating the relation between blood group and disease, 1955; D. Katz, J. Baptista,
    /// S. P. Azen and M. C. Pike, Obtaining confidence intervals for the risk ratio in cohort studies, 1978.
    /// @param out out: the record
    /// @param confidence confidence level of both bounds together, in (0, 1); else the bounds are NaN
    /// @return 0; 30000; 30011 for another shape
    virtual int GetRisk(TableRisk* out, double confidence) const = 0;
};

/// A table of counts, to be released with DeleteIContingencyTable().
/// @param status out: 0; 30000 if rows or columns is 0, a count is negative, NaN or infinite, or their sum is
///   infinite; 30001
/// @param counts in: rows * columns values, row by row; copied
/// @param rows number of rows
/// @param columns number of columns
/// @return the table; null if the status is not 0
ZUL_API IContingencyTable* MakeIContingencyTable(int* status, const double* counts, unsigned rows,
                                                 unsigned columns);

/// The table of the classes of n observations, to be released with DeleteIContingencyTable().
/// @param status out: 0; 30000 if rows or columns is 0 or a class is not in the table; 30001
/// @param rowClass in: n numbers from 0 to rows - 1
/// @param columnClass in: n numbers from 0 to columns - 1
/// @param n number of observations; 0 makes a table of zeros
/// @param rows number of rows
/// @param columns number of columns
/// @return the table; null if the status is not 0
ZUL_API IContingencyTable* MakeIContingencyTable(int* status, const int* rowClass, const int* columnClass,
                                                 unsigned n, unsigned rows, unsigned columns);

/// Destroys a table and sets the caller's pointer to null. Null, and a pointer to null, do nothing.
/// @param table in and out: the table
ZUL_API void DeleteIContingencyTable(IContingencyTable** table);

/// The Mantel-Haenszel test that the odds ratio of every stratum is 1, (max(0, |sum (a - E)| - k))^2 / sum V, k
/// = 1/2 with the correction for continuity and else 0, V = r1 r2 c1 c2 / (N^2 (N - 1)) and N the total of a
/// stratum; and the common odds ratio R / S, R = sum a d / N, S = sum b c / N, with bounds exp(log(R / S) -+ q
/// e). Strata with a total of at most 1 are left out. The open bounds are 0 and infinity. If R or S is 0 both
/// bounds are NaN.
/// Sources: N. Mantel and W. Haenszel, Statistical aspects of the analysis of data from retrospective studies
/// of disease, 1959; J. Robins, N. Breslow and S. Greenland, Estimators of the Mantel-Haenszel variance
/// consistent in both sparse data and large-strata limiting models, 1986 (the standard error e).
/// @param record in: strata; out: all other fields
/// @param counts in: strata * 4 values, stratum by stratum, row by row
/// @param continuity whether to correct the statistic for continuity
/// @param confidence confidence level, in (0, 1); else the bounds are NaN
/// @param type which bounds
/// @return 0; 30000 without strata, or for a negative, NaN or infinite count; 30002 for another type: the bounds are
///   NaN; 30007 if the sum of V is 0: statistic and pValue are NaN, the rest stands
ZUL_API int RunMantelHaenszel(MantelHaenszel* record, const double* counts, bool continuity,
                              double confidence, IntervalType type);

/// @}

}  // namespace zul
