#include "descriptive/sorting.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <numeric>

#include "descriptive/sorting/keys.h"
#include "descriptive/sorting/radix_sort.h"
#include "descriptive/sorting/spread_sort.h"

namespace zul::descriptive {
namespace {

// Below so many items counting digits costs more than comparing.
constexpr unsigned kRadixCount = 128;

bool Before(double a, double b) {
    return KeyOf(a) < KeyOf(b);
}

bool Before(const IndexedValue& a, const IndexedValue& b) {
    const Key keyA = KeyOf(a);
    const Key keyB = KeyOf(b);
    return keyA != keyB ? keyA < keyB : a.index < b.index;
}

}  // namespace

template <typename Item>
Sorted<Item>::Sorted(const double* x, unsigned n) {
    const bool few = n < kRadixCount;
    memory_.reset(new (std::nothrow) Item[few ? n : std::size_t{n} * 2]);
    Item* const items = memory_.get();
    if (items == nullptr) return;
    if (SpreadSort::IsFaster<Item>(n)) {
        SpreadSort spread(n);
        if (!spread.Obtained()) return;
        spread.Sort(x, items, items + n);
        items_ = items;
        room_ = items + n;
        return;
    }
    for (unsigned i = 0; i < n; ++i)
        Take(x[i], i, &items[i]);
    if (few) {
        std::sort(items, items + n, [](const Item& a, const Item& b) { return Before(a, b); });
        items_ = items;
        return;
    }
    items_ = RadixSort(items, items + n, n);
    room_ = items_ == items ? items + n : items;
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
