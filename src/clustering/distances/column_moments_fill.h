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
    ZUL_INLINE void Add(const double* x, double k, double reciprocal) {
        using elementary::Splat;
        const D delta = elementary::Load<D>(x) - mean.sum;
        // Has the top bit where a quotient by a reciprocal may not be the division.
        constexpr std::uint64_t kLow = elementary::Bits(1e-250);
        constexpr std::uint64_t kHigh = elementary::Bits(1e250);
        const auto bits = elementary::AbsoluteBits(delta);
        strange |= elementary::NotBelow(bits, kHigh) | ((bits - kLow) & ~(bits - 1));
        const D increment = elementary::Quotient(delta, Splat<D>(k + 1), Splat<D>(reciprocal));
        mean.Add(increment);
        squares.Add(Splat<D>(k) * increment * delta);
    }

    Compensated<D> mean;
    Compensated<D> squares;
    elementary::BitsOf<D> strange;
};

// Two vectors at a time, since each value has to wait for the one before.
template <class D>
bool Moments(const double* const (&panels)[2], std::size_t n, ColumnMoments& out) {
    bool isStrange = false;
    for (std::size_t lane = 0; lane < kLanes; lane += elementary::kLanesOf<D>) {
        RunningMoments<D> first(panels[0] + lane);
        RunningMoments<D> second(panels[1] + lane);
        for (std::size_t i = 1; i < n; ++i) {
            const double k = static_cast<double>(i);
            const double reciprocal = 1 / (k + 1);
            first.Add(panels[0] + i * kLanes + lane, k, reciprocal);
            second.Add(panels[1] + i * kLanes + lane, k, reciprocal);
        }
        isStrange |= elementary::AnyTopBit(first.strange | second.strange);
        elementary::Store(out.means[0] + lane, first.mean.sum);
        elementary::Store(out.means[1] + lane, second.mean.sum);
        elementary::Store(out.squares[0] + lane, first.squares.sum);
        elementary::Store(out.squares[1] + lane, second.squares.sum);
    }
    return !isStrange;
}

template <class D>
void Deviations(const double* panel, const double (&means)[kLanes], std::size_t n, double* out) {
    for (std::size_t lane = 0; lane < kLanes; lane += elementary::kLanesOf<D>) {
        const D mean = elementary::Load<D>(means + lane);
        for (std::size_t i = lane; i < n * kLanes; i += kLanes)
            elementary::Store(out + i, elementary::Load<D>(panel + i) - mean);
    }
}

}  // namespace
}  // namespace zul::dax::clustering
