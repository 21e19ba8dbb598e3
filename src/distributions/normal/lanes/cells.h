// The arguments of a block in the order of what the incomplete gamma pair of shape 1/2 does with them: by the branch and by
// the number of terms, so that a vector has one branch and few terms that not all of its arguments take.
#pragma once

#include <cstddef>
#include <cstdint>

#include "distributions/lanes/text.h"
#include "distributions/normal/lanes/pair.h"
#include "frame/calls/in_blocks.h"
#include "numerics/lanes/sorted_block.h"

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

// With kColumns = 2 the second one is that of the targets of Newton's steps.
template <std::size_t kColumns>
using Order = numerics::SortedBlock<frame::kBlock, kColumns, OneHalfTable::kFirstSmall,
                                    OneHalfTable::kFirstFraction - OneHalfTable::kFirstSmall,
                                    OneHalfTable::kRanks - OneHalfTable::kFirstFraction>;

// All that a block takes: of the elements the standard deviate, or its sign alone, and the argument of the pair, which is 0
// where they are left.
template <std::size_t kColumns>
struct Work {
    alignas(64) double deviates[frame::kBlock];
    Order<kColumns> order;
};

template <class D, std::size_t kColumns>
ZUL_INLINE void Sort(Order<kColumns>* order, std::size_t n) {
    for (std::size_t i = 0; i < n; i += kLanesOf<D>)
        order->template SetCells<D>(i, CellsOf(elementary::Load<D>(order->elements[0] + i)));
    order->Sort(
        n, [](std::uint64_t cell) __attribute__((always_inline)) { return kOneHalfTable.ranks[cell]; });
}

template <class D, int W>
ZUL_INLINE Group<D, W> LoadGroup(const double* from) {
    Group<D, W> group;
    ZUL_UNROLLED for (int w = 0; w < W; ++w) group.of[w] = elementary::Load<D>(from + w * kLanesOf<D>);
    return group;
}

}  // namespace
}  // namespace zul::kernels
