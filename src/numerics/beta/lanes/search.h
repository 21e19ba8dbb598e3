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

// Behind the first count numbers copies of the last one, as many as are read in vectors.
template <std::size_t kCopies = 8>
ZUL_INLINE void RepeatLast(double* values, std::size_t count) {
    for (std::size_t k = 0; k < kCopies; ++k)
        values[count + k] = values[count - 1];
}

// Searches have a count, Kept() columns of numbers that they keep from round to round, kCopies of the last one behind
// it, and of each search the element and the fate.
template <class Searches>
ZUL_INLINE void RepeatLastOne(Searches& searches) {
    for (double* const column : searches.Kept().columns)
        RepeatLast<Searches::kCopies>(column, searches.count);
}

// Calls handOver(search, isAtItsEnd) for all, and closes the ranks of those that go on.
template <class Searches, class HandOver>
ZUL_INLINE void CloseRanks(Searches& searches, HandOver handOver) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < searches.count; ++i) {
        handOver(i, searches.fates[i] == AtItsEnd);
        for (double* const column : searches.Kept().columns)
            column[kept] = column[i];
        searches.element[kept] = searches.element[i];
        kept += searches.fates[i] == StillSearched;
    }
    searches.count = kept;
}

}  // namespace
}  // namespace zul::numerics
