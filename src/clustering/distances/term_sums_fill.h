// The sums of one level: included by the source of each.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstring>

#include "clustering/distances/term_sums.h"
#include "elementary/core/value.h"
#include "processor/prefetch.h"

#if defined(__clang__)
#pragma clang fp exceptions(ignore)
#endif

namespace zul::dax::clustering {
namespace {

enum class Term { Square, Absolute, DividedSquare, Product };

template <Term kTerm, class D>
ZUL_INLINE D TermOf(D a, D b, D divisor) {
    if constexpr (kTerm == Term::Product) return b * a;
    const D d = a - b;
    if constexpr (kTerm == Term::Absolute) return elementary::Absolute(d);
    if constexpr (kTerm == Term::DividedSquare) return d * d / divisor;
    return d * d;
}

// So many rows at a time as the registers hold the sums of.
template <class D>
inline constexpr std::size_t kRowsAtOnce = sizeof(D) > 16 ? kTile : 1;

// So far ahead of what is written the next lines of memory are fetched: several rows are written in turn.
inline constexpr std::size_t kAhead = 40;

template <Term kTerm, class D>
ZUL_INLINE void SumSome(const TermSum& sum, const double* rows, const double* panel, double* const* out,
                        std::size_t place) {
    constexpr std::size_t kCount = elementary::kLanesOf<D>;
    constexpr std::size_t kVectors = kLanes / kCount;
    D running[kRowsAtOnce<D>][kVectors] = {};
    for (std::size_t column = 0; column < sum.columns; ++column) {
        D values[kVectors];
        std::memcpy(values, panel + column * kLanes, sizeof values);
        const D divisor = elementary::Splat<D>(kTerm == Term::DividedSquare ? sum.divisors[column] : 1);
        for (std::size_t row = 0; row < kRowsAtOnce<D>; ++row)
            for (std::size_t v = 0; v < kVectors; ++v)
                running[row][v] +=
                    TermOf<kTerm>(elementary::Splat<D>(rows[column * kLanes + row]), values[v], divisor);
    }
    for (std::size_t row = 0; row < kRowsAtOnce<D>; ++row) {
        double sums[kLanes];
        std::memcpy(sums, running[row], sizeof sums);
        if (sum.isRoot)
            for (double& s : sums)
                s = std::sqrt(s);
        std::memcpy(out[row] + place, sums, sizeof sums);
        processor::Prefetch(out[row] + place + kAhead);
    }
}

template <Term kTerm, class D>
void Sum(const TermSum& sum, const double* rows, const double* panels, std::size_t panelCount,
         double* const (&out)[kTile]) {
    for (std::size_t panel = 0; panel < panelCount; ++panel)
        for (std::size_t row = 0; row < kTile; row += kRowsAtOnce<D>)
            SumSome<kTerm, D>(sum, rows + row, panels + panel * kLanes * sum.columns, out + row,
                              panel * kLanes);
}

template <class D>
constexpr TermSums MakeTermSums() {
    return {Sum<Term::Square, D>, Sum<Term::Absolute, D>, Sum<Term::DividedSquare, D>, Sum<Term::Product, D>};
}

}  // namespace
}  // namespace zul::dax::clustering
