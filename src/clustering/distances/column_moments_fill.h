// The moments of one level: included by the source of each.
#pragma once

#include <cstddef>
#include <cstdint>

#include "clustering/distances/term_sums.h"
#include "elementary/core/division.h"
#include "elementary/core/value.h"

namespace zul::dax::clustering {
namespace {

// A compensated sum, as the descriptive functions have it.
// Source: W. Kahan, Further remarks on reducing truncation errors, 1965.
template <class D>
struct Compensated {
    ZUL_INLINE void Add(D v) {
        const D y = v + correction;
        const D t = sum + y;
        correction = y - (t - sum);
        sum = t;
    }

    D sum;
    D correction;
};

// A running mean and the squares of the deviations from it, of several columns.
// Source: B. P. Welford, Note on a method for calculating corrected sums of squares and products, 1962.
template <class D>
struct RunningMoments {
    ZUL_INLINE explicit RunningMoments(const double* x)
        : mean{elementary::Load<D>(x), D{}}, squares{D{}, D{}}, strange{} {}

    // The next value, after k others.
    ZUL_INLINE void Add(const double* x, double k, const elementary::Reciprocal& reciprocal) {
        using elementary::Splat;
        const D delta = elementary::Load<D>(x) - mean.sum;
        // Has the top bit where a quotient by a reciprocal may not be the division.
        constexpr std::uint64_t kLow = elementary::Bits(1e-250);
        constexpr std::uint64_t kHigh = elementary::Bits(1e250);
        const auto bits = elementary::AbsoluteBits(delta);
        strange |= elementary::NotBelow(bits, kHigh) | ((bits - kLow) & ~(bits - 1));
        const D increment = elementary::QuotientByWhole(delta, k + 1, reciprocal);
        mean.Add(increment);
        squares.Add(Splat<D>(k) * increment * delta);
    }

    Compensated<D> mean;
    Compensated<D> squares;
    elementary::BitsOf<D> strange;
};

// Two vectors at a time, since each value has to wait for the one before.
template <class D>
bool Moments(const double* const* rows, std::size_t n, const std::size_t (&columns)[2], ColumnMoments& out) {
    bool isStrange = false;
    for (std::size_t lane = 0; lane < kLanes; lane += elementary::kLanesOf<D>) {
        const std::size_t ofFirst = columns[0] + lane;
        const std::size_t ofSecond = columns[1] + lane;
        RunningMoments<D> first(rows[0] + ofFirst);
        RunningMoments<D> second(rows[0] + ofSecond);
        for (std::size_t i = 1; i < n; ++i) {
            const double k = static_cast<double>(i);
            const elementary::Reciprocal reciprocal(k + 1);
            first.Add(rows[i] + ofFirst, k, reciprocal);
            second.Add(rows[i] + ofSecond, k, reciprocal);
        }
        isStrange |= elementary::AnyTopBit(first.strange | second.strange);
        elementary::Store(out.means[0] + lane, first.mean.sum);
        elementary::Store(out.means[1] + lane, second.mean.sum);
        elementary::Store(out.squares[0] + lane, first.squares.sum);
        elementary::Store(out.squares[1] + lane, second.squares.sum);
    }
    return !isStrange;
}

// Those of as many columns as a vector has lanes.
template <class D>
ZUL_INLINE void DeviationsOfOne(const double* const* rows, std::size_t n, std::size_t column, D mean,
                                double* panel) {
    for (std::size_t i = 0; i < n; ++i)
        elementary::Store(panel + i * kLanes, elementary::Load<D>(rows[i] + column) - mean);
}

template <class D>
void Deviations(const double* const* rows, std::size_t n, std::size_t column, std::size_t count,
                const double* means, double* panel) {
    constexpr std::size_t kStep = elementary::kLanesOf<D>;
    std::size_t lane = 0;
    for (; lane + kStep <= count; lane += kStep)
        DeviationsOfOne(rows, n, column + lane, elementary::Load<D>(means + lane), panel + lane);
    for (; lane < count; ++lane)
        DeviationsOfOne(rows, n, column + lane, means[lane], panel + lane);
}

}  // namespace
}  // namespace zul::dax::clustering
