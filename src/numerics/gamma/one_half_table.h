// What the incomplete gamma pair of shape 1/2 needs when it is computed in lanes: the numbers of kOneHalf, in arrays that
// need no function to be read, and an order in which arguments that take the same operations are next to each other.
#pragma once

#include <cstdint>

namespace zul::numerics {

struct OneHalfTable {
    double log;
    double stirlingTerm;
    double gamma;
    double medianSplit;
    double gammaQuotient;
    // As in OneHalf; the reciprocals of k + 1/2 and of n, which are rounded.
    double termStarts[13];
    double seriesReciprocals[13];
    double termRatios[41];
    double reciprocals[41];

    // Arguments from kLeast to below kMost have a rank: by the branch, then by a number that their terms are at the least,
    // or their pairs are above. It is that of their cell, one of 32 in a power of 2, counted anew above the split.
    static constexpr double kLeast = 0x1p-40;
    static constexpr double kMost = 0x1p9;
    static constexpr int kCellShift = 47;
    static constexpr int kCellsBelow = 2048;
    // The last cell is for all that has no rank.
    static constexpr int kOutside = 2 * kCellsBelow - 1;
    unsigned char ranks[2 * kCellsBelow];
    // Of a rank of the lower side, the largest number of terms.
    unsigned char mostTerms[13];

    static constexpr int kFirstSmall = 13;
    static constexpr int kFirstFraction = 54;
    static constexpr int kRanks = 54 + 81;
};

extern const OneHalfTable kOneHalfTable;

}  // namespace zul::numerics
