#include "sampling/alias_table.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>
#include <numeric>

namespace zul::sampling {
namespace {

// NaN comes last; no comparison traps on it.
bool IsBefore(double x, double y) {
    return std::isless(x, y) || (x == x && y != y);
}

}  // namespace

AliasTable::AliasTable(unsigned size)
    : size_(size),
      keep_(new (std::nothrow) double[size]),
      alias_(new (std::nothrow) unsigned[2 * std::size_t{size}]) {}

void AliasTable::Prepare(const double* probabilities) {
    double* const keep = keep_.get();
    unsigned* const work = alias_.get() + size_;
    // Summed from the smallest on, for accuracy.
    std::copy_n(probabilities, size_, keep);
    std::sort(keep, keep + size_, IsBefore);
    const double sum = std::accumulate(keep, keep + size_, 0.0);

    unsigned smallEnd = 0;
    unsigned firstLarge = size_;
    for (unsigned i = 0; i < size_; ++i) {
        keep[i] = size_ * probabilities[i] / sum;
        alias_[i] = i;
        if (keep[i] < 1)
            work[smallEnd++] = i;
        else
            work[--firstLarge] = i;
    }
    Pair(work, firstLarge);
}

// Each small cell in turn is filled up from the first large one, which becomes the last small one when it has
// less than a cell left.
void AliasTable::Pair(unsigned* work, unsigned firstLarge) {
    for (unsigned small = 0; small < firstLarge && firstLarge < size_; ++small) {
        const unsigned filled = work[small];
        const unsigned giver = work[firstLarge];
        alias_[filled] = giver;
        keep_[giver] += keep_[filled] - 1;
        if (keep_[giver] < 1) ++firstLarge;
    }
}

unsigned AliasTable::Draw(objects::UniformSource* source) const {
    const double t = source->Next() * size_;
    const double cell = std::floor(t);
    const auto i = static_cast<unsigned>(cell);
    return cell + 1 <= t + keep_[i] ? i : alias_[i];
}

}  // namespace zul::sampling
