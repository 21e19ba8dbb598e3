// What searches in lanes for many quantiles at once have in common.
//
// All is in an unnamed namespace: see elementary/core/value.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "elementary/core/value.h"

namespace zul::numerics {
namespace {

using elementary::BitsOf;

// What becomes of a search in a round.
enum Fate : std::uint64_t { StillSearched, AtItsEnd, LeftOver };

// All bits of those that have ended, and of those that are left whatever else they are.
template <class D>
ZUL_INLINE void SetFates(std::uint64_t* fates, BitsOf<D> ended, BitsOf<D> left) {
    constexpr std::uint64_t kEnded = AtItsEnd;
    constexpr std::uint64_t kLeft = LeftOver;
    const BitsOf<D> values = (ended & ~left & kEnded) | (left & kLeft);
    std::memcpy(fates, &values, sizeof values);
}

// Behind the first count numbers copies of the last one, as many as there is room for in any vector.
template <std::size_t kCopies = 8, std::size_t kSpace>
ZUL_INLINE void RepeatLast(double (&values)[kSpace], std::size_t count) {
    for (std::size_t k = 0; k < kCopies; ++k)
        values[count + k] = values[count - 1];
}

}  // namespace
}  // namespace zul::numerics
