// The branch that an argument takes and about how many terms.
#pragma once

#include <cstddef>

#include "elementary/core/value.h"
#include "numerics/gamma/lanes/group.h"
#include "numerics/gamma/lanes/pair_constants.h"
#include "numerics/lanes/sorted_block.h"

namespace zul::numerics::gamma_lanes {
namespace {

// The most arguments at a time.
inline constexpr std::size_t kPairBlock = 1024;

// Where the exponentials and powers need no second thought.
inline constexpr double kLeastPairArgument = 1e-140;
inline constexpr double kLargestPairArgument = 1e8;

enum Branch { LowerBranch, UpperBranch, SmallUpperBranch };

// Of each branch.
inline constexpr int kCells = 32;
inline constexpr int kFirstUpper = kCells * UpperBranch;
inline constexpr int kFirstSmall = kCells * SmallUpperBranch;

using SortedArguments = SortedBlock<kPairBlock, 1, kCells, kCells, kCells>;

// The lower 6 bits of a number from 0 to 63, rounded to a whole one.
template <class D>
ZUL_INLINE BitsOf<D> Whole(D x) {
    return Bits(x + 0x1p52) & 63;
}

// What an argument's cell depends on.
class Cells {
public:
    explicit ZUL_INLINE Cells(const GammaPairConstants& g)
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
        const BitsOf<D> out = 0 - (beyond >> 63);
        const D x = FromBits<D>((Bits(argument) & ~out) | (Bits(inside_) & out));
        const MaskOf<D> above = x > split_;
        const D distance = (1.0 - Select(above, upperStart_ / x, x * inverse_)) * spread_;
        const BitsOf<D> cell = Whole(Select(distance < 1.0, distance, Splat<D>(1)) * (kCells - 1.0));
        const BitsOf<D> upper =
            Select(x < smallBelow_, Whole(x * (kCells - 1.0)) + kFirstSmall, cell + kFirstUpper);
        return (Select(above, upper, cell) & ~out) | (SortedArguments::kLeftOut & out);
    }

private:
    double split_;
    double inverse_;
    double upperStart_;
    double spread_;
    double inside_;
    double smallBelow_;
};

}  // namespace
}  // namespace zul::numerics::gamma_lanes
