#include "clustering/distances/term_sums.h"

#include <cmath>

#include "processor/processor.h"

#if defined(__clang__)
#pragma clang fp exceptions(ignore)
#endif

namespace zul::dax::clustering {
namespace {

template <Term term>
inline double TermOf(double d, double divisor) {
    if constexpr (term == Term::Absolute) return std::abs(d);
    if constexpr (term == Term::DividedSquare) return d * d / divisor;
    return d * d;
}

template <Term term>
ZUL_INLINE void Sum(const TermSum& sum, const double* row, const double* panel, double (&out)[kLanes]) {
    double running[kLanes] = {};
    for (std::size_t column = 0; column < sum.columns; ++column) {
        const double a = row[column * kLanes];
        const double divisor = term == Term::DividedSquare ? sum.divisors[column] : 1;
        const double* const b = panel + column * kLanes;
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            running[lane] += TermOf<term>(a - b[lane], divisor);
    }
    for (std::size_t lane = 0; lane < kLanes; ++lane)
        out[lane] = sum.isRoot ? std::sqrt(running[lane]) : running[lane];
}

template <Term term>
void SumNarrow(const TermSum& sum, const double* row, const double* panel, double (&out)[kLanes]) {
    Sum<term>(sum, row, panel, out);
}

template <Term term>
ZUL_WIDE void SumWide(const TermSum& sum, const double* row, const double* panel, double (&out)[kLanes]) {
    Sum<term>(sum, row, panel, out);
}

template <Term term>
SumTerms Find(bool wide) {
    return wide ? SumWide<term> : SumNarrow<term>;
}

}  // namespace

SumTerms FindSumTerms(Term term, bool wide) {
    if (term == Term::Absolute) return Find<Term::Absolute>(wide);
    if (term == Term::DividedSquare) return Find<Term::DividedSquare>(wide);
    return Find<Term::Square>(wide);
}

}  // namespace zul::dax::clustering
