// log and log1p by a table of 128 logarithms. Source: P. T. P. Tang, Table-driven implementation of the logarithm
// function in IEEE floating-point arithmetic, 1990. The reciprocals of the table have 21 bits, so that the reduced
// argument is exact in two products, and the cell around 1 has the reciprocal 1, so that there is no other way near 1.
#pragma once

#include "elementary/core/tables.h"
#include "elementary/core/value.h"

namespace zul::elementary {
namespace {

// Of a reduced argument r + rest, high + low is the logarithm less log(1 + r + rest) - r - rest.
template <class D>
struct LogParts {
    D high;
    D low;
    D r;
    D rest;
};

// The upper 12 bits as a signed number: of vectors, which cannot convert such, by the digits of 2^52 and more.
template <class D>
ZUL_INLINE D WholeExponent(BitsOf<D> bits) {
    if constexpr (kLanesOf<D> == 1) {
        return static_cast<double>(static_cast<std::int64_t>(bits) >> 52);
    } else {
        constexpr std::uint64_t kBias = 2048;
        return FromBits<D>(((bits + (kBias << 52)) >> 52) | Bits(0x1p52)) - (0x1p52 + kBias);
    }
}

// The cell of a number 2^k z.
template <class D>
struct LogCell {
    D upper;  // r, exactly upper + lower
    D lower;
    D inverse;
    D scale;  // 2^-k
    D tabled;
    D tabledRest;
};

// By the bits of a normal positive number (of z with k in the place of its exponent, which may be outside a double's).
template <class D>
ZUL_INLINE LogCell<D> FindLogCell(BitsOf<D> bits) {
    constexpr std::uint64_t kExponent = 0xFFF0000000000000;
    constexpr std::uint64_t kUpper32 = 0xFFFFFFFFFFE00000;
    const BitsOf<D> fromFirst = bits - std::uint64_t{kLogFirst};
    const BitsOf<D> i = (fromFirst >> 45) & 127;
    const BitsOf<D> exponent = fromFirst & kExponent;
    const D z = FromBits<D>(bits - exponent);
    const D upperZ = FromBits<D>((bits - exponent) & kUpper32);
    const D inverse = Gather<D, kLogStride>(kLogCells, i);
    const Two<D> tabled =
        AlongLines<D>({Gather<D, kLogStride>(kLogCells + 1, i), Gather<D, kLogStride>(kLogCells + 2, i)},
                      {kLogTwoHigh, kLogTwoLow}, WholeExponent<D>(fromFirst));
    return {upperZ * inverse - 1.0, (z - upperZ) * inverse, inverse, FromBits<D>(Bits(1.0) - exponent),
            tabled.first,           tabled.second};
}

template <class D>
ZUL_INLINE LogParts<D> SplitLog(BitsOf<D> bits) {
    const LogCell<D> cell = FindLogCell<D>(bits);
    const D r = cell.upper + cell.lower;
    const D rest = (cell.upper - r) + cell.lower;
    const D high = cell.tabled + r;
    return {high, ((cell.tabled - high) + r) + (rest + cell.tabledRest), r, rest};
}

// Of the number plus a low part.
template <class D>
ZUL_INLINE LogParts<D> SplitLogOfTwo(BitsOf<D> bits, D low) {
    const LogCell<D> cell = FindLogCell<D>(bits);
    const D one = cell.upper + cell.lower;
    const D more = low * cell.scale * cell.inverse;
    const D r = one + more;
    const D rest = (one - r) + more + ((cell.upper - one) + cell.lower);
    const D high = cell.tabled + r;
    return {high, ((cell.tabled - high) + r) + (rest + cell.tabledRest), r, rest};
}

// log(1 + r) - r, by sums of which few wait for others.
template <class D>
ZUL_INLINE D LogSeries(D r) {
    const D r2 = r * r;
    const Two<D> lines =
        AlongLines<D>({Splat<D>(kLogSeries[1]), Splat<D>(kLogSeries[3])}, {kLogSeries[2], kLogSeries[4]}, r);
    return r2 * (((kLogSeries[0] * r - 0.5) + r2 * lines.first) + (r2 * r2) * lines.second);
}

template <class D>
ZUL_INLINE D SumLog(const LogParts<D>& parts) {
    return parts.high + (parts.low + LogSeries(parts.r));
}

// Not a normal positive number.
template <class D>
ZUL_INLINE BitsOf<D> OutsideLog(D x) {
    return (Bits(x) - kLeastNormalBits) | ((kInfinityBits - 1) - Bits(x));
}

// Of a positive number: as SplitLog takes them, also of a denormal one.
inline std::uint64_t NormalizedBits(double x) {
    const std::uint64_t bits = Bits(x);
    return bits < kLeastNormalBits ? Bits(x * 0x1p52) - (std::uint64_t{52} << 52) : bits;
}

template <class D>
ZUL_INLINE D LogOfBits(BitsOf<D> bits) {
    const LogCell<D> cell = FindLogCell<D>(bits);
    const D r = cell.upper + cell.lower;
    const D high = cell.tabled + r;
    const D low = ((cell.tabled - high) + cell.upper) + (cell.lower + cell.tabledRest);
    return high + (low + LogSeries(r));
}

template <class D>
ZUL_INLINE D CoreLog(D x) {
    return LogOfBits<D>(Bits(x));
}

// Not in (-1, 2^1000).
template <class D>
ZUL_INLINE BitsOf<D> OutsideLog1p(D x) {
    constexpr std::uint64_t kUpTo = Bits(0x1p1000);
    const BitsOf<D> ifNegative = 0 - (Bits(x) >> 63);
    return ((kUpTo - 1) - (ifNegative & (kUpTo - Bits(1.0)))) - AbsoluteBits(x);
}

// Below this the reduced argument is the argument: what CoreLog1p then comes to is not much.
inline constexpr double kLog1pSmall = 0x1p-9;

inline double SmallLog1p(double x) {
    return WithSignOf(Absolute(SumLog(LogParts<double>{x, 0, x, 0})), x);
}

template <class D>
ZUL_INLINE D CoreLog1p(D x) {
    const D sum = 1.0 + x;
    const D added = sum - 1.0;
    const D lost = (1.0 - (sum - added)) + (x - added);
    return WithSignOf(Absolute(SumLog(SplitLogOfTwo(Bits(sum), lost))), x);
}

}  // namespace
}  // namespace zul::elementary
