// The arguments of a block sorted by branch and by about how many terms they take, so that those of a group take about
// the same way.
#pragma once

#include <cstddef>
#include <cstdint>

#include "elementary/core/value.h"
#include "numerics/gamma/lanes/group.h"
#include "numerics/gamma/lanes/pair_constants.h"

namespace zul::numerics {
namespace {

// The most arguments at a time.
inline constexpr std::size_t kPairBlock = 1024;

// Where the exponentials and powers need no second thought.
inline constexpr double kLeastPairArgument = 1e-140;
inline constexpr double kLargestPairArgument = 1e8;

// The places of sorted arguments by the branch that they take: of each branch so many, by the terms they take, and at
// the end those that are left out.
inline constexpr int kCells = 32;
inline constexpr int kFirstUpper = kCells;
inline constexpr int kFirstSmall = 2 * kCells;
inline constexpr int kLeftOut = 3 * kCells;

// The lower 6 bits of a number from 0 to 63, rounded to a whole one.
template <class D>
ZUL_INLINE BitsOf<D> Whole(D x) {
    return Bits(x + 0x1p52) & 63;
}

// What an argument's place depends on.
class Places {
public:
    explicit ZUL_INLINE Places(const GammaPairConstants& g)
        : split_(g.medianSplit),
          inverse_(split_ < kLeastPairArgument ? 0 : 1 / split_),
          upperStart_(g.small ? 1 : split_),
          spread_(g.spread),
          inside_(g.a),
          smallBelow_(g.small ? 1 : 0) {}

    template <class D>
    ZUL_INLINE BitsOf<D> Of(D argument) const {
        const BitsOf<D> beyond =
            (Bits(argument) - Bits(kLeastPairArgument)) | (Bits(kLargestPairArgument) - Bits(argument));
        const MaskOf<D> out = (MaskOf<D>)(beyond >> 63) != 0;
        const D x = Select(out, Splat<D>(inside_), argument);
        const MaskOf<D> above = x > split_;
        const D distance = (1.0 - Select(above, upperStart_ / x, x * inverse_)) * spread_;
        const BitsOf<D> cell = Whole(Select(distance < 1.0, distance, Splat<D>(1)) * (kCells - 1.0));
        const BitsOf<D> upper =
            Select(x < smallBelow_, Whole(x * (kCells - 1.0)) + kFirstSmall, cell + kFirstUpper);
        return Select(out, cell * 0 + kLeftOut, Select(above, upper, cell));
    }

private:
    double split_;
    double inverse_;
    double upperStart_;
    double spread_;
    double inside_;
    double smallBelow_;
};

// The arguments of a block, sorted by place, with room for a whole group after each branch.
struct SortedArguments {
    static constexpr int kBranches = 3;
    static constexpr std::size_t kRoom = kVectors * 8;
    std::size_t begin[kBranches];
    std::size_t end[kBranches];
    std::size_t leftOut;  // those from the last end on
    double x[kPairBlock + kBranches * kRoom];
    std::uint16_t index[kPairBlock + kBranches * kRoom];
};

ZUL_INLINE void Sort(const std::uint64_t* places, const double* x, std::size_t n, SortedArguments* sorted) {
    std::uint16_t next[kLeftOut + 1] = {};
    for (std::size_t i = 0; i < n; ++i)
        ++next[places[i]];
    std::size_t place = 0;
    for (int branch = 0; branch < SortedArguments::kBranches; ++branch) {
        sorted->begin[branch] = place;
        for (int cell = kCells * branch; cell < kCells * (branch + 1); ++cell) {
            const std::size_t count = next[cell];
            next[cell] = static_cast<std::uint16_t>(place);
            place += count;
        }
        sorted->end[branch] = place;
        place += SortedArguments::kRoom;
    }
    sorted->leftOut = next[kLeftOut];
    next[kLeftOut] = static_cast<std::uint16_t>(place);
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t to = next[places[i]]++;
        sorted->x[to] = x[i];
        sorted->index[to] = static_cast<std::uint16_t>(i);
    }
}

}  // namespace
}  // namespace zul::numerics
