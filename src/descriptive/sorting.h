// The one sort of the library. It works on a private copy and in a total order: the order of the values, -0
// before 0, every NaN after plus infinity. Equal items keep the order of the data.
#pragma once

#include <memory>

namespace zul::descriptive {

// A value and its place in the data.
struct IndexedValue {
    double value;
    unsigned index;
};

// A sorted copy of n values, as double or as IndexedValue. Few are sorted by comparisons, more by digits, many by
// estimates of their places.
template <typename Item>
class Sorted {
public:
    Sorted(const double* x, unsigned n);
    // False: memory could not be obtained, and there are no items.
    bool Obtained() const { return items_ != nullptr; }
    const Item* Items() const { return items_; }
    Item* Items() { return items_; }
    // Space for n more items, the room that the sort has done with; null where it needed none.
    Item* Room() { return room_; }

private:
    std::unique_ptr<Item[]> memory_;
    Item* items_ = nullptr;
    Item* room_ = nullptr;
};

extern template class Sorted<double>;
extern template class Sorted<IndexedValue>;
using SortedValues = Sorted<double>;
using SortedIndices = Sorted<IndexedValue>;

// The same order written to n indices, without any memory but theirs; slower for many values.
void SortIndices(const double* x, unsigned n, unsigned* order);

}  // namespace zul::descriptive
