// The sums over the columns of which distances are made.
#pragma once

#include <cstddef>

namespace zul::dax::clustering {

// The columns of a sum have an order, so what is computed side by side is the sums for several rows. They lie in
// a panel: the values of kLanes rows in the first column, then in the second, and so on.
inline constexpr std::size_t kLanes = 8;

enum class Term { Square, Absolute, DividedSquare };

struct TermSum {
    std::size_t columns;
    const double* divisors;  // for each column, if the terms are divided
    bool isRoot;             // the square root of the sum is wanted
};

// Computes the sums for one row, whose values are kLanes apart as well, and each row of a panel.
using SumTerms = void (*)(const TermSum& sum, const double* row, const double* panel, double (&out)[kLanes]);

// The function for a term: by wide vectors, on processors that have them, or by those that all have. The results
// are the same.
SumTerms FindSumTerms(Term term, bool wide);

}  // namespace zul::dax::clustering
