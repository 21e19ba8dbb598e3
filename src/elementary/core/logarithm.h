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

// A number 2^k z and its cell.
template <class D>
struct LogCell {
    D upperZ;
    D lowerZ;
    Two<D> inverses;  // the same twice
    D scale;          // 2^-k
    Two<D> tabled;    // with its rest
};

// By the bits of a normal positive number (of z with k in the place of its exponent, which may be outside a double's).
template <class D>
ZUL_INLINE LogCell<D> FindLogCell(BitsOf<D> bits) {
    constexpr std::uint64_t kExponent = 0xFFF0000000000000;
    constexpr std::uint64_t kUpper32 = 0xFFFFFFFFFFE00000;
    const BitsOf<D> fromFirst = bits - std::uint64_t{kLogFirst};
    const BitsOf<D> i = (fromFirst >> 45) & 127;
    const BitsOf<D> exponent = fromFirst & kExponent;
    const auto place = BitsInPlace(FromBits<D>(bits));
    const auto z = place - ((place - std::uint64_t{kLogFirst}) & kExponent);
    const D upperZ = FromBitsInPlace<D>(z & kUpper32);
    const D inverse = Gather<D, kLogStride>(kLogCells, i);
    const Two<D> tabled = {Gather<D, kLogStride>(kLogCells + 2, i), Gather<D, kLogStride>(kLogCells + 3, i)};
    return {upperZ,
            FromBitsInPlace<D>(z) - upperZ,
            {inverse, kLanesOf<D> == 1 ? Gather<D, kLogStride>(kLogCells + 1, i) : inverse},
            FromBits<D>(Bits(1.0) - exponent),
            tabled + SplatTwo<D>(kLogTwoHigh, kLogTwoLow) * WholeExponent<D>(fromFirst)};
}

// For steps that wait for each other, up to a power: there no operation is done on two numbers at once.
template <class D>
ZUL_INLINE LogParts<D> SplitLog(BitsOf<D> bits) {
    const LogCell<D> cell = FindLogCell<D>(bits);
    const D upper = cell.upperZ * cell.inverses.first - 1.0;
    const D lower = cell.lowerZ * cell.inverses.first;
    const D r = upper + lower;
    const D rest = (upper - r) + lower;
    const D high = cell.tabled.first + r;
    return {high, ((cell.tabled.first - high) + r) + (rest + cell.tabled.second), r, rest};
}

// Of the number plus a low part.
template <class D>
ZUL_INLINE LogParts<D> SplitLogOfTwo(BitsOf<D> bits, D low) {
    const LogCell<D> cell = FindLogCell<D>(bits);
    const D upper = cell.upperZ * cell.inverses.first - 1.0;
    const D lower = cell.lowerZ * cell.inverses.first;
    const D one = upper + lower;
    const D more = low * cell.scale * cell.inverses.first;
    const D r = one + more;
    const D rest = (one - r) + more + ((upper - one) + lower);
    const D high = cell.tabled.first + r;
    return {high, ((cell.tabled.first - high) + r) + (rest + cell.tabled.second), r, rest};
}

// log(1 + r) - r, of lanes in an order that keeps fewer of them in registers.
template <class D>
ZUL_INLINE D LogSeries(D r) {
    const double* c = kLogSeries;
    if constexpr (kLanesOf < D >> 1) {
        const D r2 = r * r;
        const Two<D> lines = SplatTwo<D>(c[1], c[3]) + SplatTwo<D>(c[2], c[4]) * r;
        return r2 * (((c[0] * r - 0.5) + r2 * lines.first) + (r2 * r2) * lines.second);
    } else {
        const Two<D> lines = SplatTwo<D>(c[0], c[2]) * r + SplatTwo<D>(-0.5, c[1]);
        const Two<D> powers = Two<D>{r, c[4]} * r;
        const D r2 = powers.first;
        const Two<D> terms = Two<D>{lines.second, r2} * r2;
        return r2 * ((lines.first + terms.first) + terms.second * (c[3] + powers.second));
    }
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
    const Two<D> products = Two<D>{cell.upperZ, cell.lowerZ} * cell.inverses;
    const D upper = products.first - 1.0;
    const D lower = products.second;
    const D r = upper + lower;
    const Two<D> sums = cell.tabled + Two<D>{r, lower};
    const D high = sums.first;
    const D low = ((cell.tabled.first - high) + upper) + sums.second;
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
