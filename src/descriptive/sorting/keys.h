// What the sorts compare and move.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "descriptive/sorting.h"
#include "processor/prefetch.h"

namespace zul::descriptive {

using Key = std::uint64_t;

// The bits of a value as an integer with the order of the values: negative numbers, whose magnitudes ascend
// with their bits, are inverted, and the others set above them. Every NaN is the largest. Signs are as good as
// random, so no branch depends on them.
inline Key KeyOf(double value) {
    constexpr Key kSign = Key{1} << 63;
    if (value != value) return ~Key{0};
    const auto bits = std::bit_cast<std::int64_t>(value);
    const std::int64_t allBitsIfNegative = bits >> 63;
    return static_cast<Key>(bits) ^ (static_cast<Key>(allBitsIfNegative) | kSign);
}

inline Key KeyOf(const IndexedValue& item) {
    return KeyOf(item.value);
}

inline void Take(double value, unsigned, double* item) {
    *item = value;
}

inline void Take(double value, unsigned index, IndexedValue* item) {
    *item = {value, index};
}

// For the last item written to one of many places that are written to in turn, each item after the one before: has
// the next line of memory fetched meanwhile. A write that misses holds up those after it, and processors do not
// foresee it in so many places; among a million items most of the time of a pass goes there.
template <typename Item>
void ExpectNext(const Item* written) {
    constexpr std::ptrdiff_t kLineItems = 64 / sizeof(Item);
    processor::Prefetch(written + kLineItems);
}

}  // namespace zul::descriptive
