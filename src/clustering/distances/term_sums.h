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
    const double* divisors;  // for each column, if the terms are divided
    bool isRoot;             // the square root of the sum is wanted
};

// Computes the sums for kTile rows, whose values are kLanes apart, and each row of so many panels; the sums of
// row r go to out[r], kLanes for each panel.
using SumTerms = void (*)(const TermSum& sum, const double* rows, const double* panels,
                          std::size_t panelCount, double* const (&out)[kTile]);

// By the terms that are summed.
struct TermSums {
    SumTerms squares;
    SumTerms absolutes;
    SumTerms dividedSquares;
    SumTerms products;  // of the values, not of their differences
};

// Of any level that the processor has. The results are the same.
const TermSums& TermSumsOf(processor::Level level);

extern const TermSums kTermSumsOfOne;
extern const TermSums kTermSumsOfTwo;
extern const TermSums kTermSumsOfFour;
extern const TermSums kTermSumsOfEight;

}  // namespace zul::dax::clustering
