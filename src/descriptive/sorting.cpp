#include "descriptive/sorting.h"

#include <algorithm>
#include <array>
#include <bit>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <new>
#include <numeric>

namespace zul::descriptive {
namespace {

using Key = std::uint64_t;

// Below so many items counting digits costs more than comparing.
constexpr unsigned kRadixCount = 128;
// Digits of eight bits: 256 places are written to in turn, which the first cache and the translation of
// addresses keep up with; eleven bits need fewer passes and are slower for all but one range of counts.
constexpr unsigned kDigitBits = 8;
constexpr unsigned kDigitValues = 1u << kDigitBits;
constexpr unsigned kDigits = sizeof(Key) * CHAR_BIT / kDigitBits;

// The bits of a value as an integer with the order of the values: negative numbers, whose magnitudes ascend
// with their bits, are inverted, and the others set above them. Every NaN is the largest. Signs are as good as
// random, so no branch depends on them.
Key KeyOf(double value) {
    constexpr Key kSign = Key{1} << 63;
    if (value != value) return ~Key{0};
    const auto bits = std::bit_cast<std::int64_t>(value);
    const std::int64_t allBitsIfNegative = bits >> 63;
    return static_cast<Key>(bits) ^ (static_cast<Key>(allBitsIfNegative) | kSign);
}

Key KeyOf(const IndexedValue& item) {
    return KeyOf(item.value);
}

bool Before(double a, double b) {
    return KeyOf(a) < KeyOf(b);
}

bool Before(const IndexedValue& a, const IndexedValue& b) {
    const Key keyA = KeyOf(a);
    const Key keyB = KeyOf(b);
    return keyA != keyB ? keyA < keyB : a.index < b.index;
}

void Take(double value, unsigned, double* item) {
    *item = value;
}

void Take(double value, unsigned index, IndexedValue* item) {
    *item = {value, index};
}

unsigned Digit(Key key, unsigned digit) {
    return static_cast<unsigned>(key >> (digit * kDigitBits)) % kDigitValues;
}

// From the lowest digit to the highest, each pass keeping the order of the one before; a digit that is the
// same everywhere needs none. Returns the one of the two blocks in which the items end.
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
        for (std::size_t i = 0; i < n; ++i)
            room[places[Digit(KeyOf(items[i]), digit)]++] = items[i];
        std::swap(items, room);
    }
    return items;
}

}  // namespace

template <typename Item>
Sorted<Item>::Sorted(const double* x, unsigned n) {
    const bool radix = n >= kRadixCount;
    memory_.reset(new (std::nothrow) Item[radix ? std::size_t{n} * 2 : n]);
    Item* const items = memory_.get();
    if (items == nullptr) return;
    for (unsigned i = 0; i < n; ++i)
        Take(x[i], i, &items[i]);
    if (radix) {
        items_ = RadixSort(items, items + n, n);
        room_ = items_ == items ? items + n : items;
        return;
    }
    std::sort(items, items + n, [](const Item& a, const Item& b) { return Before(a, b); });
    items_ = items;
}

template class Sorted<double>;
template class Sorted<IndexedValue>;

void SortIndices(const double* x, unsigned n, unsigned* order) {
    std::iota(order, order + n, 0u);
    std::sort(order, order + n, [x](unsigned a, unsigned b) {
        return Before(IndexedValue{x[a], a}, IndexedValue{x[b], b});
    });
}

}  // namespace zul::descriptive
