// erfc by polynomials in 79 cells of |x|: up to 1 of itself, from there on of exp(x^2) erfc(x), all in two doubles.
#pragma once

#include "elementary/core/exponential.h"

namespace zul::elementary {
namespace {

// Up to here nothing on the way is denormal.
inline constexpr double kErfcReach = 25;

template <class D>
ZUL_INLINE BitsOf<D> OutsideErfc(D x) {
    return NotBelow(AbsoluteBits(x), Bits(kErfcReach));
}

template <class D>
struct ScaledErfc {
    D high;
    D low;
};

inline constexpr double kScaledFrom = 1;

// erfc(x), from 1 on times exp(x^2), 0 <= x < 28.
template <class D>
ZUL_INLINE ScaledErfc<D> ScaleErfc(D x) {
    constexpr std::uint64_t kInCell = 0x0000FFFFFFFFFFFF;
    constexpr std::uint64_t kHalfCell = 0x0000800000000000;
    const BitsOf<D> place = Bits(1.0 + x);
    const BitsOf<D> cell = (place >> 48) - (Bits(1.0) >> 48);
    const D t = x - (FromBits<D>((place & ~kInCell) | kHalfCell) - 1.0);
    const auto c = [&](int k) { return Gather<D, kErfcStride>(kErfcCells + k, cell); };
    const D t2 = t * t;
    const D t4 = t2 * t2;
    const D tail =
        ((c(4) + t * c(5)) + t2 * (c(6) + t * c(7))) + t4 * ((c(8) + t * c(9)) + t2 * (c(10) + t * c(11)));
    const D rest = t * c(2) + (c(1) + t2 * (c(3) + t * tail));
    const D first = c(0);
    const D high = first + rest;
    return {high, (first - high) + rest};
}

// high + low, or for a negative x what that leaves of 2.
template <class D>
ZUL_INLINE D SumErfc(D x, D high, D low) {
    const D mirrored = 2.0 - high;
    const D mirroredRest = (2.0 - mirrored) - high;
    return Select(x < 0.0, mirrored + (mirroredRest - low), high + low);
}

// A positive x of at least 1 gives 2^shift times the result. Below 1 the product with exp(0), to the bit what the
// double takes without it.
template <class D>
ZUL_INLINE D ShiftedErfc(D x, int shift) {
    const D t = Absolute(x);
    const ScaledErfc<D> scaled = ScaleErfc(t);
    if constexpr (kLanesOf<D> == 1) {
        if (t < kScaledFrom) return SumErfc(x, scaled.high, scaled.low);
    }
    const D root = Select(t < kScaledFrom, D{}, t);
    const D upperRoot = UpperHalf(root);
    const D squareRest = (root - upperRoot) * (root + upperRoot);
    const ExpParts<D> parts = SplitExp(-(upperRoot * upperRoot), shift);
    const D expRest = ExpRest(parts, (parts.high - parts.low) - squareRest);

    const D s = parts.power;
    const D upperS = UpperHalf(s);
    const D lowerS = s - upperS;
    const D upperG = UpperHalf(scaled.high);
    const D lowerG = scaled.high - upperG;
    const D product = s * scaled.high;
    const D rest = (((upperS * upperG - product) + upperS * lowerG) + lowerS * upperG) + lowerS * lowerG +
                   s * (scaled.low + expRest * scaled.high);
    return SumErfc(x, product, rest);
}

template <class D>
ZUL_INLINE D CoreErfc(D x) {
    return ShiftedErfc(x, 0);
}

}  // namespace
}  // namespace zul::elementary
