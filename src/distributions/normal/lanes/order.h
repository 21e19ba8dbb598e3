// The arguments of a block in the order of what the incomplete gamma pair of shape 1/2 does with them: by the branch and by
// the number of terms, so that a vector has one branch and few terms that not all of its arguments take.
#pragma once

#include <cstddef>
#include <cstdint>

#include "distributions/lanes/text.h"
#include "distributions/normal/lanes/pair.h"
#include "frame/calls/in_blocks.h"

namespace zul::kernels {
namespace {

// The cell of each argument, the outside one for what no rank is for: 1 itself, too, at which branches meet.
template <class D>
ZUL_INLINE BitsOf<D> CellsOf(D x) {
    constexpr std::uint64_t kLeast = Bits(OneHalfTable::kLeast);
    constexpr std::uint64_t kMost = Bits(OneHalfTable::kMost);
    const BitsOf<D> bits = Bits(x);
    const BitsOf<D> one = NotBelow((bits - Bits(1.0)) & ~elementary::kSignBit, 1);
    const BitsOf<D> outside = (bits - kLeast) | ((kMost - 1) - bits) | ~one;
    const BitsOf<D> above = (Bits(kOneHalfTable.medianSplit) - bits) >> 63;
    const BitsOf<D> cell = ((bits - kLeast) >> OneHalfTable::kCellShift) + above * OneHalfTable::kCellsBelow;
    return (cell | (0 - (outside >> 63))) & OneHalfTable::kOutside;
}

ZUL_INLINE int RankOf(double x) {
    return kOneHalfTable.ranks[CellsOf(x)];
}

enum Branch { OnLowerSide, OnSmallUpperSide, OnFractionSide };

inline constexpr int kBranches = 3;

// Room for a vector and a group of them behind the last element.
inline constexpr std::size_t kSpare = 32;

// What the elements of a block are read from, and room for reading on.
struct Column {
    alignas(64) double of[frame::kBlock + kSpare];
};

// Behind the arguments of a branch come so many copies of its last as fill a group.
struct Order {
    Column cells;
    alignas(64) double x[frame::kBlock + kBranches * kSpare];
    alignas(64) double target[frame::kBlock + kBranches * kSpare];
    std::uint16_t place[frame::kBlock + kSpare];
    std::size_t begin[kBranches];
    std::size_t end[kBranches];
    // Where nothing is.
    static constexpr std::uint16_t kNowhere = frame::kBlock + kBranches * kSpare;
};

// By place, and one for nowhere.
struct Results {
    alignas(64) double of[Order::kNowhere + 1];
};

// All that a block takes: of the elements the standard deviate, or its sign alone, the argument of the pair and for
// Newton's steps its target; 0 is the argument of those that are left.
struct Work {
    Column deviates;
    Column x;
    Column targets;
    Order order;
    Results results;
};

// The first places of each rank.
ZUL_INLINE void PlaceRanks(std::uint16_t* places, Order* order) {
    constexpr int kFirst[] = {0, OneHalfTable::kFirstSmall, OneHalfTable::kFirstFraction,
                              OneHalfTable::kRanks};
    std::size_t next = 0;
    for (int branch = 0; branch < kBranches; ++branch) {
        order->begin[branch] = next;
        for (int rank = kFirst[branch]; rank < kFirst[branch + 1]; ++rank) {
            const std::size_t count = places[rank];
            places[rank] = static_cast<std::uint16_t>(next);
            next += count;
        }
        order->end[branch] = next;
        if (next > order->begin[branch]) next += kSpare;
    }
}

// Of n arguments, and of their targets if there are any; x has room for reading on.
template <class D>
ZUL_INLINE void Arrange(const Column& x, const Column* targets, std::size_t n, Order* order) {
    std::uint16_t places[OneHalfTable::kRanks + 1] = {};
    unsigned char ranks[frame::kBlock];
    for (std::size_t i = 0; i < n; i += kLanesOf<D>)
        elementary::Store(order->cells.of + i, FromBits<D>(CellsOf(elementary::Load<D>(x.of + i))));
    for (std::size_t i = 0; i < n; ++i) {
        ranks[i] = kOneHalfTable.ranks[Bits(order->cells.of[i])];
        ++places[ranks[i]];
    }
    PlaceRanks(places, order);
    for (std::size_t i = 0; i < n; ++i) {
        if (ranks[i] == OneHalfTable::kRanks) [[unlikely]] {
            order->place[i] = Order::kNowhere;
            continue;
        }
        const std::uint16_t place = places[ranks[i]]++;
        order->place[i] = place;
        order->x[place] = x.of[i];
        if (targets != nullptr) order->target[place] = targets->of[i];
    }
    for (std::size_t i = n; i < n + kLanesOf<D>; ++i)
        order->place[i] = Order::kNowhere;
    for (int branch = 0; branch < kBranches; ++branch) {
        const std::size_t end = order->end[branch];
        if (end == order->begin[branch]) continue;
        for (std::size_t k = end; k < end + kSpare; ++k) {
            order->x[k] = order->x[end - 1];
            if (targets != nullptr) order->target[k] = order->target[end - 1];
        }
    }
}

// The results of the elements from the i-th on.
template <class D>
ZUL_INLINE D ResultsOf(const Results& results, const Order& order, std::size_t i) {
    BitsOf<D> places{};
    for (int k = 0; k < kLanesOf<D>; ++k)
        places[k] = order.place[i + static_cast<std::size_t>(k)];
    return elementary::Gather<D, 1>(results.of, places);
}

// Loads a vector of a block of n elements, of which the last stands for those behind it.
template <class D>
ZUL_INLINE D LoadUpTo(const double* in, std::size_t i, std::size_t n) {
    constexpr std::size_t kCount = kLanesOf<D>;
    if (n - i >= kCount) [[likely]]
        return elementary::Load<D>(in + i);
    D x{};
    for (std::size_t k = 0; k < kCount; ++k)
        x[k] = in[i + k < n ? i + k : n - 1];
    return x;
}

template <class D>
ZUL_INLINE void StoreUpTo(double* out, std::size_t i, std::size_t n, D x) {
    constexpr std::size_t kCount = kLanesOf<D>;
    if (n - i >= kCount) [[likely]] {
        elementary::Store(out + i, x);
        return;
    }
    for (std::size_t k = 0; i + k < n; ++k)
        out[i + k] = x[k];
}

template <class D, int W>
ZUL_INLINE Group<D, W> LoadGroup(const double* from) {
    Group<D, W> group;
    ZUL_UNROLLED for (int w = 0; w < W; ++w) group.of[w] = elementary::Load<D>(from + w * kLanesOf<D>);
    return group;
}

}  // namespace
}  // namespace zul::kernels
