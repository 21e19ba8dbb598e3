#include <algorithm>
#include <cstddef>

#include "descriptive/sorting.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "zul/descriptive.h"

namespace zul::v1 {

using descriptive::IndexedValue;
using descriptive::SortedIndices;

void GetOrder(const double* x, unsigned n, unsigned* order) {
    const SortedIndices sorted(x, n);
    if (!sorted.Obtained()) {
        descriptive::SortIndices(x, n, order);  // there is no status to report
        return;
    }
    for (unsigned k = 0; k < n; ++k)
        order[k] = sorted.Items()[k].index;
}

int GetRank(const double* x, unsigned n, double* ranks) {
    const SortedIndices sorted(x, n);
    if (!sorted.Obtained()) {
        std::fill_n(ranks, n, frame::kQuietNaN);
        return kOutOfMemory;
    }
    const IndexedValue* const items = sorted.Items();
    for (std::size_t first = 0; first < n;) {
        // A NaN equals nothing, not even itself: its run ends where it begins.
        std::size_t end = first + 1;
        while (end < n && items[end].value == items[first].value)
            ++end;
        const double rank = static_cast<double>(first) + (static_cast<double>(end - first) + 1) / 2;
        for (; first < end; ++first)
            ranks[items[first].index] = rank;
    }
    return kSuccess;
}

}  // namespace zul::v1
