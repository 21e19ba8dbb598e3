// Sorting by estimates of where the items belong: one pass moves each near its place, another, inside the first cache,
// to its place or close by, and what is left is sorted by insertion. Like every sort here it keeps the order of equal
// keys, and its time stays proportional to the count whatever the data: estimates that fail cost a sort by digits.
// Source of the estimate: E. J. Isaac and R. C. Singleton, Sorting by address calculation, 1956.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

#include "descriptive/sorting/keys.h"
#include "descriptive/sorting/radix_sort.h"

namespace zul::descriptive {

// Where a key stands among those of the data, estimated: exactly at the bounds of the cells that the range of keys is
// cut into, along a line within a cell. It never falls as the key grows, whatever the data.
class KeyPlaces {
public:
    static constexpr unsigned kCellBits = 14;
    static constexpr unsigned kCells = 1u << kCellBits;

    // `below` has kCells + 1 zeros, which become the numbers of keys below each cell.
    KeyPlaces(const double* x, unsigned n, unsigned* below) : below_(below) {
        SetRange(x, n);
        for (unsigned i = 0; i < n; ++i)
            ++below[CellOf(Scaled(KeyOf(x[i]))) + 1];
        for (unsigned cell = 0; cell < kCells; ++cell)
            below[cell + 1] += below[cell];
    }

    unsigned PlaceOf(Key key) const {
        const Key scaled = Scaled(key);
        const unsigned cell = CellOf(scaled);
        const Key share = (scaled << kCellBits) >> 32;  // in units of 2^-32
        const Key count = below_[cell + 1] - below_[cell];
        return below_[cell] + static_cast<unsigned>((share * count) >> 32);
    }

private:
    // Of a sample the middle eight tenths, and as much again on either side: what lies further out shares the first or
    // the last cell, so that a few wild values do not leave the others too few. All keys if those tenths are one value.
    void SetRange(const double* x, unsigned n) {
        constexpr unsigned kSample = 64;
        constexpr unsigned kTenth = kSample / 10;
        std::array<Key, kSample> sample;
        for (unsigned i = 0; i < kSample; ++i) {
            const std::uint64_t place = std::uint64_t{n} * i / kSample;
            sample[i] = KeyOf(x[place]);
        }
        std::sort(sample.begin(), sample.end());
        const Key low = sample[kTenth];
        const Key high = sample[kSample - 1 - kTenth];
        const Key width = low == high ? ~Key{0} : high - low;
        first_ = low - std::min(low, width);
        width_ = high + std::min(~high, width) - first_;
        shift_ = static_cast<unsigned>(std::countl_zero(width_));
    }

    // From 0 at the first key of the range to the last with its top bit set.
    Key Scaled(Key key) const { return std::min(std::max(key, first_) - first_, width_) << shift_; }
    static unsigned CellOf(Key scaled) { return static_cast<unsigned>(scaled >> (64 - kCellBits)); }

    const unsigned* below_;
    Key first_ = 0;
    Key width_ = 0;
    unsigned shift_ = 0;
};

// Its memory is obtained first; then it sorts once.
class SpreadSort {
public:
    // Whether so many items are sorted faster than by digits. Values alone, which are half as large, are so only
    // once they outgrow the second cache; from some count on there are more buckets than that cache has room for
    // what is written to them, and than numbers of 16 bits tell apart.
    template <typename Item>
    static constexpr bool IsFaster(unsigned n) {
        constexpr unsigned kLeastCount = sizeof(Item) == sizeof(double) ? 1u << 18 : 1u << 12;
        constexpr unsigned kMostCount = 1u << 24;
        return n >= kLeastCount && n <= kMostCount;
    }

    explicit SpreadSort(unsigned n)
        : count_(n),
          buckets_(n / kPlaces + 1),
          tables_(new (std::nothrow) unsigned[KeyPlaces::kCells + 1 + buckets_ + 1]()),
          bucketOf_(new (std::nothrow) std::uint16_t[n]) {}
    bool Obtained() const { return tables_ != nullptr && bucketOf_ != nullptr; }

    // Writes the values in order to `items`; `room` has space for as many.
    template <typename Item>
    void Sort(const double* x, Item* items, Item* room);

private:
    // The items of one bucket, and its places, are to fit into the first cache twice.
    static constexpr unsigned kPlaces = 512;
    // A bucket of more items has too many of one key, or of one estimate.
    static constexpr unsigned kMostItems = 4096;
    // Fewer than this are sorted by insertion as they come.
    static constexpr unsigned kFewItems = 16;
    // The moves of an insertion sort for each item, beyond which sorting by digits is faster.
    static constexpr unsigned kMoves = 16;

    template <typename Item>
    static void SortBucket(const KeyPlaces& places, unsigned firstPlace, Item* items, Item* room, unsigned n);
    // To the place that is estimated for each, or after it if that is taken.
    template <typename Item>
    static void Spread(const KeyPlaces& places, unsigned firstPlace, const Item* items, Item* out,
                       unsigned n);
    // False: there were too many moves, and the items are in `out` without any order.
    template <typename Item>
    static bool SortByInsertion(const Item* items, Item* out, unsigned n);
    template <typename Item>
    static void SortByDigits(Item* items, Item* room, unsigned n);

    unsigned count_;
    unsigned buckets_;
    std::unique_ptr<unsigned[]> tables_;
    std::unique_ptr<std::uint16_t[]> bucketOf_;
};

template <typename Item>
void SpreadSort::Sort(const double* x, Item* items, Item* room) {
    const KeyPlaces places(x, count_, tables_.get());
    unsigned* const next = tables_.get() + KeyPlaces::kCells + 1;  // the place of each bucket's next item
    for (unsigned i = 0; i < count_; ++i) {
        const unsigned bucket = places.PlaceOf(KeyOf(x[i])) / kPlaces;
        bucketOf_[i] = static_cast<std::uint16_t>(bucket);
        ++next[bucket + 1];
    }
    for (unsigned bucket = 0; bucket < buckets_; ++bucket)
        next[bucket + 1] += next[bucket];
    for (unsigned i = 0; i < count_; ++i) {
        Item* const place = items + next[bucketOf_[i]]++;
        Take(x[i], i, place);
        ExpectNext(place);
    }
    for (unsigned bucket = 0, begin = 0; bucket < buckets_; ++bucket) {
        const unsigned end = next[bucket];
        SortBucket(places, bucket * kPlaces, items + begin, room, end - begin);
        begin = end;
    }
}

template <typename Item>
void SpreadSort::SortBucket(const KeyPlaces& places, unsigned firstPlace, Item* items, Item* room,
                            unsigned n) {
    if (n < 2) return;
    if (n > kMostItems) {
        const auto isFirst = [key = KeyOf(items[0])](const Item& item) { return KeyOf(item) == key; };
        if (!std::all_of(items, items + n, isFirst)) SortByDigits(items, room, n);
        return;
    }
    const bool spread = n >= kFewItems;
    if (spread) Spread(places, firstPlace, items, room, n);
    if (!SortByInsertion(spread ? room : items, items, n)) SortByDigits(items, room, n);
}

template <typename Item>
void SpreadSort::Spread(const KeyPlaces& places, unsigned firstPlace, const Item* items, Item* out,
                        unsigned n) {
    std::array<std::uint16_t, kMostItems> placeOf;
    std::array<std::uint16_t, kMostItems + 1> next;
    std::fill_n(next.begin(), n + 1, std::uint16_t{0});
    for (unsigned i = 0; i < n; ++i) {
        const unsigned place = std::min(places.PlaceOf(KeyOf(items[i])) - firstPlace, n - 1);
        placeOf[i] = static_cast<std::uint16_t>(place);
        ++next[place + 1];
    }
    for (unsigned place = 0; place < n; ++place)
        next[place + 1] = static_cast<std::uint16_t>(next[place + 1] + next[place]);
    for (unsigned i = 0; i < n; ++i)
        out[next[placeOf[i]]++] = items[i];
}

template <typename Item>
bool SpreadSort::SortByInsertion(const Item* items, Item* out, unsigned n) {
    unsigned moves = 0;
    for (unsigned i = 0; i < n; ++i) {
        const Item item = items[i];
        const Key key = KeyOf(item);
        unsigned place = i;
        for (; place > 0 && KeyOf(out[place - 1]) > key; --place)
            out[place] = out[place - 1];
        out[place] = item;
        moves += i - place;
        if (moves > kMoves * n) {
            std::copy(items + i + 1, items + n, out + i + 1);
            return false;
        }
    }
    return true;
}

template <typename Item>
void SpreadSort::SortByDigits(Item* items, Item* room, unsigned n) {
    const Item* const sorted = RadixSort(items, room, n);
    if (sorted != items) std::copy_n(sorted, n, items);
}

}  // namespace zul::descriptive
