// The sums of one level: included by the source of each.
#pragma once

#include <cstddef>
#include <cstring>

#include "clustering/distances/column_moments_fill.h"
#include "clustering/distances/deviation_products_fill.h"
#include "clustering/distances/term_sums.h"
#include "elementary/core/division.h"
#include "elementary/core/root.h"
#include "elementary/core/value.h"
#include "processor/prefetch.h"

#if defined(__clang__)
#pragma clang fp exceptions(ignore)
#endif

namespace zul::dax::clustering {
namespace {

enum class Term { Square, Absolute, DividedSquare, SquareByReciprocal, Product };

template <Term kTerm, class D>
ZUL_INLINE D TermOf(D a, D b, [[maybe_unused]] D divisor, [[maybe_unused]] D reciprocal) {
    if constexpr (kTerm == Term::Product) return b * a;
    const D d = a - b;
    if constexpr (kTerm == Term::Absolute) return elementary::Absolute(d);
    if constexpr (kTerm == Term::DividedSquare) return d * d / divisor;
    if constexpr (kTerm == Term::SquareByReciprocal) return elementary::Quotient(d * d, divisor, reciprocal);
    return d * d;
}

// So many rows at a time as the registers hold the sums of.
template <class D>
inline constexpr std::size_t kRowsAtOnce = sizeof(D) > 16 ? kTile : 1;

// So far ahead of what is written the next lines of memory are fetched: several rows are written in turn.
inline constexpr std::size_t kAhead = 80;

// Where the sums of a row are two vectors, the compiler moves them in pieces of which no vector can be read at once.
template <class D>
inline constexpr bool kRootsLater = sizeof(D) == 32;

template <class D>
ZUL_INLINE void TakeRoots(double* sums, std::size_t n) {
    for (std::size_t i = 0; i < n; i += elementary::kLanesOf<D>)
        elementary::Store(sums + i, elementary::Sqrt(elementary::Load<D>(sums + i)));
}

template <Term kTerm, class D>
ZUL_INLINE void SumSome(const TermSum& sum, const double* rows, const double* panel, double* const* out,
                        std::size_t place) {
    constexpr std::size_t kCount = elementary::kLanesOf<D>;
    constexpr std::size_t kVectors = kLanes / kCount;
    // Copied vector by vector: an array that is copied whole stays in memory.
    D running[kRowsAtOnce<D>][kVectors];
    for (std::size_t row = 0; row < kRowsAtOnce<D>; ++row)
        for (std::size_t v = 0; v < kVectors; ++v)
            running[row][v] =
                kTerm == Term::Product ? elementary::Load<D>(out[row] + place + v * kCount) : D{};
    for (std::size_t column = 0; column < sum.columns; ++column) {
        D values[kVectors];
        for (std::size_t v = 0; v < kVectors; ++v)
            std::memcpy(&values[v], panel + column * kLanes + v * kCount, sizeof(D));
        constexpr bool kHasReciprocal = kTerm == Term::SquareByReciprocal;
        constexpr bool kHasDivisor = kTerm == Term::DividedSquare || kHasReciprocal;
        const D divisor = elementary::Splat<D>(kHasDivisor ? sum.divisors[column] : 1);
        const D reciprocal = elementary::Splat<D>(kHasReciprocal ? sum.reciprocals[column] : 1);
        for (std::size_t row = 0; row < kRowsAtOnce<D>; ++row)
            for (std::size_t v = 0; v < kVectors; ++v)
                running[row][v] += TermOf<kTerm>(elementary::Splat<D>(rows[column * kLanes + row]), values[v],
                                                 divisor, reciprocal);
    }
    for (std::size_t row = 0; row < kRowsAtOnce<D>; ++row) {
        double sums[kLanes];
        for (std::size_t v = 0; v < kVectors; ++v)
            std::memcpy(sums + v * kCount, &running[row][v], sizeof(D));
        if (sum.isRoot && !kRootsLater<D>) TakeRoots<D>(sums, kLanes);
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
    if (sum.isRoot && kRootsLater<D>)
        for (double* const sums : out)
            TakeRoots<D>(sums, panelCount * kLanes);
}

template <class D>
constexpr TermSums MakeTermSums() {
    return {Sum<Term::Square, D>,
            Sum<Term::Absolute, D>,
            Sum<Term::DividedSquare, D>,
            Sum<Term::SquareByReciprocal, D>,
            Sum<Term::Product, D>,
            Moments<D>,
            Deviations<D>,
            {DeviationProducts<D, 8>(), DeviationProducts<D, 9>(), DeviationProducts<D, 10>(),
             DeviationProducts<D, 11>(), DeviationProducts<D, 12>(), DeviationProducts<D, 13>(),
             DeviationProducts<D, 14>(), DeviationProducts<D, 15>(), DeviationProducts<D, 16>()}};
}

}  // namespace
}  // namespace zul::dax::clustering
