// The sums over the columns of which distances are made.
#pragma once

#include <cstddef>

#include "processor/level.h"

namespace zul::dax::clustering {

// The columns of a sum have an order, so what is computed side by side is the sums for several pairs of rows. Rows lie
// in panels: the values of kLanes rows in the first column, then in the second, and so on.
inline constexpr std::size_t kLanes = 8;
// So many rows of one panel meet all rows of another at once: sums that do not wait for each other.
inline constexpr std::size_t kTile = 4;

struct TermSum {
    std::size_t columns;
    const double* divisors;     // for each column, if the terms are divided
    const double* reciprocals;  // of them
    bool isRoot;                // the square root of the sum is wanted
    bool isAdded;               // sums of products add to what is there, and have to be given it
};

// Computes the sums for kTile rows, whose values are kLanes apart, and each row of so many panels; the sums of
// row r go to out[r], kLanes for each panel.
using SumTerms = void (*)(const TermSum& sum, const double* rows, const double* panels,
                          std::size_t panelCount, double* const (&out)[kTile]);

// The products of the deviations from the means, of every two columns, summed plainly in the order of n rows of the data:
// that of column j with an earlier one i goes to sums[j][i]. What else is there is of no use afterwards.
using SumProducts = void (*)(const double* const* rows, std::size_t n, const double* means,
                             double (*sums)[2 * kLanes]);

// The means, and the sums of the squares of the deviations from them, of twice kLanes columns.
struct ColumnMoments {
    double means[2][kLanes];
    double squares[2][kLanes];
};

// By the terms that are summed.
struct TermSums {
    SumTerms squares;
    SumTerms absolutes;
    SumTerms dividedSquares;
    // The same with the reciprocals of the divisors, for elementary::Quotient: rounding to nearest, of squares that are 0
    // or from 1e-250 to 1e250, and of divisors from 1e-150 to 1e150.
    SumTerms squaresByReciprocals;
    SumTerms products;  // of the values, not of their differences
    // The moments of GetSampleMeanAndVariance() for n rows of the data, of kLanes columns from each of two on, which may
    // overlap. False: not surely those, which it is for when rounding to nearest.
    bool (*moments)(const double* const* rows, std::size_t n, const std::size_t (&columns)[2],
                    ColumnMoments& out);
    // A panel of the columns from one on, at most kLanes: what their values in n rows of the data are beyond the means.
    // Lanes without a column are left alone.
    void (*deviations)(const double* const* rows, std::size_t n, std::size_t column, std::size_t count,
                       const double* means, double* panel);
    // For kLanes columns, one more, and so on to twice as many; null where the registers do not hold the sums.
    SumProducts deviationProducts[kLanes + 1];
};

// Of any level that the processor has. The results are the same.
const TermSums& TermSumsOf(processor::Level level);

extern const TermSums kTermSumsOfOne;
extern const TermSums kTermSumsOfTwo;
extern const TermSums kTermSumsOfFour;
extern const TermSums kTermSumsOfEight;

}  // namespace zul::dax::clustering
