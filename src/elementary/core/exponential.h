// exp and expm1 by a table of 2^(i / 128). Source: P. T. P. Tang, Table-driven implementation of the exponential
// function in IEEE floating-point arithmetic, 1989; of the expm1 function, 1992.
#pragma once

#include "elementary/core/tables.h"
#include "elementary/core/value.h"

namespace zul::elementary {
namespace {

// Up to here, on both sides, neither the result nor a product on the way to it overflows or is denormal.
inline constexpr double kExpReach = 690;

template <class D>
struct ExpParts {
    D power;  // 2^(i / 128 + k)
    D error;  // its rounding error relative to it
    D high;   // the argument less the logarithm of the power: high - low
    D low;
};

// The exponent of the power is larger by shift.
template <class D>
ZUL_INLINE ExpParts<D> SplitExp(D x, int shift = 0) {
    const D shifted = x * kExpCellsPerUnit + kRounder;
    const BitsOf<D> cell = Bits(shifted);
    const D whole = shifted - kRounder;
    const BitsOf<D> i = cell & 127;
    const BitsOf<D> power = Bits(Gather<D, kExpStride>(kExpCells + 1, i)) + (cell << 45);
    return {FromBits<D>(power + (static_cast<std::uint64_t>(shift) << 52)),
            Gather<D, kExpStride>(kExpCells, i), x - whole * kExpStepHigh, whole * kExpStepLow};
}

// exp = power (1 + rest), of the argument and, where that has one, a small low part of it.
template <class D>
ZUL_INLINE D ExpRest(const ExpParts<D>& parts, D r) {
    const D r2 = r * r;
    const Two<D> lines = SplatTwo<D>(0.5, kExpSeries[1]) + SplatTwo<D>(kExpSeries[0], kExpSeries[2]) * r;
    return parts.error + r + r2 * lines.first + r2 * r2 * lines.second;
}

template <class D>
ZUL_INLINE BitsOf<D> OutsideExp(D x) {
    return NotBelow(AbsoluteBits(x), Bits(kExpReach));
}

template <class D>
ZUL_INLINE D CoreExp(D x) {
    const ExpParts<D> parts = SplitExp(x);
    return parts.power + parts.power * ExpRest(parts, parts.high - parts.low);
}

// exp(x + low) for a low of at most 5e-5.
template <class D>
ZUL_INLINE D CoreExpOfTwo(D x, D low) {
    const ExpParts<D> parts = SplitExp(x);
    return parts.power + parts.power * ExpRest(parts, (parts.high - parts.low) + low);
}

template <class D>
ZUL_INLINE BitsOf<D> OutsideExpm1(D x) {
    return OutsideExp(x);
}

// exp(r) - 1 - r
template <class D>
ZUL_INLINE D Expm1Series(D r) {
    const D r2 = r * r;
    return r2 * (0.5 + r * (1.0 / 6)) + r2 * r2 * ((1.0 / 24 + r * (1.0 / 120)) + r2 * (1.0 / 720));
}

// Below this the power is 1: what CoreExpm1 then comes to is not much.
inline constexpr double kExpm1Small = 0x1p-9;

inline double SmallExpm1(double x) {
    const double upper = UpperHalf(x);
    return WithSignOf(Absolute(upper + ((x - upper) + Expm1Series(x))), x);
}

// power (1 + error) (1 + r + ...) - 1: the product of the power and the upper part of r is exact, and so is what
// the sums round off. The power less 1 is 0 or larger than that product.
template <class D>
ZUL_INLINE D CoreExpm1(D x) {
    const ExpParts<D> parts = SplitExp(x);
    const D s = parts.power;
    const D r = parts.high - parts.low;
    const D rest = (parts.error - parts.low) + Expm1Series(r);
    const D upperS = UpperHalf(s);
    const D upperR = UpperHalf(parts.high);
    const D product = upperS * upperR;
    const D productRest =
        upperS * (parts.high - upperR) + ((s - upperS) + s * parts.error) * parts.high + s * rest;
    const D less = s - 1.0;
    const D lost = less - s;
    const D lessRest = (s - (less - lost)) - (1.0 + lost);
    const D sum = less + product;
    const D sumRest = (less - sum) + product;
    return WithSignOf(Absolute(sum + (sumRest + (lessRest + productRest))), x);
}

}  // namespace
}  // namespace zul::elementary
