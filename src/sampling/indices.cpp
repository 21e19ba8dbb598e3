#include "sampling/indices.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <numeric>

namespace zul::sampling {
namespace {

// The conversion rounds down.
unsigned IndexBelow(unsigned end, double u) {
    return static_cast<unsigned>(u * end);
}

// The whole population in its order of the moment.
class Pool {
public:
    Pool(unsigned population, unsigned /*count*/) : indices_(new (std::nothrow) unsigned[population]) {
        if (indices_) std::iota(indices_.get(), indices_.get() + population, 0U);
    }
    bool Obtained() const { return indices_ != nullptr; }
    // The index at a place, where the one at the last place comes instead.
    unsigned Exchange(unsigned place, unsigned last) {
        const unsigned index = indices_[place];
        indices_[place] = indices_[last];
        return index;
    }

private:
    std::unique_ptr<unsigned[]> indices_;
};

// The same, of which only the places that changed are kept: a hash table with open addressing, at most half
// full.
class SparsePool {
public:
    SparsePool(unsigned /*population*/, unsigned count)
        : slots_(std::bit_ceil(std::size_t{2} * count)),
          shift_(64 - std::countr_zero(slots_)),
          changes_(new (std::nothrow) Change[slots_]) {
        if (changes_) std::fill_n(changes_.get(), slots_, Change{kNoPlace, 0});
    }
    bool Obtained() const { return changes_ != nullptr; }
    unsigned Exchange(unsigned place, unsigned last) {
        const Change& end = SlotOf(last);
        const unsigned moved = end.place == last ? end.index : last;
        Change& change = SlotOf(place);
        const unsigned index = change.place == place ? change.index : place;
        change = {place, moved};
        return index;
    }

private:
    struct Change {
        unsigned place;
        unsigned index;
    };
    static constexpr unsigned kNoPlace = std::numeric_limits<unsigned>::max();  // no population reaches it

    // Where a place is, or is to come. Source of the hash: D. E. Knuth, The Art of Computer Programming, volume
    // 3, 2nd ed., 1998, section 6.4.
    Change& SlotOf(unsigned place) {
        constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;
        std::size_t slot = place * kGoldenRatio >> shift_;
        while (changes_[slot].place != place && changes_[slot].place != kNoPlace)
            slot = (slot + 1) & (slots_ - 1);
        return changes_[slot];
    }
    std::size_t slots_;
    int shift_;
    std::unique_ptr<Change[]> changes_;
};

template <typename PoolType>
bool DrawFrom(objects::UniformSource* source, unsigned* out, unsigned population, unsigned count) {
    PoolType pool(population, count);
    if (!pool.Obtained()) return false;
    for (unsigned i = 0; i < count; ++i) {
        const unsigned left = population - i;
        out[i] = pool.Exchange(IndexBelow(left, source->Next()), left - 1);
    }
    return true;
}

}  // namespace

void DrawIndices(objects::UniformSource* source, unsigned* out, unsigned population, unsigned count) {
    for (unsigned i = 0; i < count; ++i)
        out[i] = IndexBelow(population, source->Next());
}

bool DrawIndicesWithoutReplacement(objects::UniformSource* source, unsigned* out, unsigned population,
                                   unsigned count) {
    constexpr unsigned kFewOfMany = 64;  // from where the sparse pool is the faster one
    return count <= population / kFewOfMany ? DrawFrom<SparsePool>(source, out, population, count)
                                            : DrawFrom<Pool>(source, out, population, count);
}

}  // namespace zul::sampling
