#pragma once

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <numeric>

#include "descriptive/sorting/keys.h"

namespace zul::descriptive {

// Digits of eight bits: 256 places are written to in turn, which the first cache and the translation of
// addresses keep up with; eleven bits need fewer passes and are slower for all but one range of counts.
inline constexpr unsigned kDigitBits = 8;
inline constexpr unsigned kDigitValues = 1u << kDigitBits;
inline constexpr unsigned kDigits = sizeof(Key) * CHAR_BIT / kDigitBits;

inline unsigned Digit(Key key, unsigned digit) {
    return static_cast<unsigned>(key >> (digit * kDigitBits)) % kDigitValues;
}

// From the lowest digit to the highest, each pass keeping the order of the one before; a digit that is the
// same everywhere needs none. Returns the one of the two blocks in which the n > 0 items end.
// Source: H. H. Seward, Information sorting in the application of electronic digital computers to business
// operations, 1954.
template <typename Item>
Item* RadixSort(Item* items, Item* room, std::size_t n) {
    std::array<std::array<unsigned, kDigitValues>, kDigits> counts{};
    for (std::size_t i = 0; i < n; ++i) {
        const Key key = KeyOf(items[i]);
        for (unsigned digit = 0; digit < kDigits; ++digit)
            ++counts[digit][Digit(key, digit)];
    }
    for (unsigned digit = 0; digit < kDigits; ++digit) {
        auto& places = counts[digit];
        if (places[Digit(KeyOf(items[0]), digit)] == n) continue;
        std::exclusive_scan(places.begin(), places.end(), places.begin(), 0u);
        for (std::size_t i = 0; i < n; ++i) {
            Item* const place = room + places[Digit(KeyOf(items[i]), digit)]++;
            *place = items[i];
            ExpectNext(place);
        }
        std::swap(items, room);
    }
    return items;
}

}  // namespace zul::descriptive
