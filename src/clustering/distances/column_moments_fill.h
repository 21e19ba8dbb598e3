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

// For kCount values in a row: how many come before each, and the reciprocal of that and one.
template <class D>
class Steps {
public:
    static constexpr std::size_t kCount = 64;

    // So many come before the first.
    ZUL_INLINE explicit Steps(double before) {
        constexpr double kNext[] = {0, 1, 2, 3, 4, 5, 6, 7};
        D k = elementary::Splat<D>(before) + elementary::Load<D>(kNext);
        for (std::size_t i = 0; i < kCount; i += elementary::kLanesOf<D>) {
            const auto [high, rest] = elementary::ReciprocalOf(k + 1.0);
            elementary::Store(before_ + i, k);
            elementary::Store(high_ + i, high);
            elementary::Store(rest_ + i, rest);
            k += static_cast<double>(elementary::kLanesOf<D>);
        }
    }
    ZUL_INLINE D Before(std::size_t i) const { return elementary::Splat<D>(before_[i]); }
    ZUL_INLINE elementary::Reciprocal<D> ReciprocalOfNext(std::size_t i) const {
        return {elementary::Splat<D>(high_[i]), elementary::Splat<D>(rest_[i])};
    }

private:
    double before_[kCount];
    double high_[kCount];
    double rest_[kCount];
};

// A running mean and the squares of the deviations from it, of several columns.
// Source: B. P. Welford, Note on a method for calculating corrected sums of squares and products, 1962.
template <class D>
struct RunningMoments {
    ZUL_INLINE explicit RunningMoments(const double* x)
        : mean{elementary::Load<D>(x), D{}}, squares{D{}, D{}}, strange{} {}

    // The next value, after k others.
    ZUL_INLINE void Add(const double* x, D k, const elementary::Reciprocal<D>& reciprocal) {
        const D delta = elementary::Load<D>(x) - mean.sum;
        // Gets the top bit from a number other than 0 that is too small for the quotient.
        constexpr std::uint64_t kLow = elementary::Bits(1e-250);
        const auto bits = elementary::AbsoluteBits(delta);
        strange |= (bits - kLow) & ~(bits - 1);
        const D increment = elementary::QuotientByWhole(delta, k + 1.0, reciprocal);
        mean.Add(increment);
        squares.Add(k * increment * delta);
    }

    // Whether a quotient may not have been the division. A number that is not finite leaves no finite mean.
    ZUL_INLINE bool IsStrange() const {
        return elementary::AnyTopBit(
            strange | elementary::NotBelow(elementary::AbsoluteBits(mean.sum), elementary::kInfinityBits));
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
        for (std::size_t from = 1; from < n; from += Steps<D>::kCount) {
            const Steps<D> steps(static_cast<double>(from));
            const std::size_t count = n - from < Steps<D>::kCount ? n - from : Steps<D>::kCount;
            for (std::size_t i = 0; i < count; ++i) {
                const D k = steps.Before(i);
                const elementary::Reciprocal<D> reciprocal = steps.ReciprocalOfNext(i);
                first.Add(rows[from + i] + ofFirst, k, reciprocal);
                second.Add(rows[from + i] + ofSecond, k, reciprocal);
            }
        }
        isStrange |= first.IsStrange() || second.IsStrange();
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
