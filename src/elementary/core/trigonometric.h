// sin, cos and tan by tables of the multiples of pi / 64, and atan by a table of 72 angles, whose tangents have five
// bits. The tables leave |r| <= pi / 128; the second of the two numbers that make up r keeps the last place
// where the argument is close to a multiple of pi / 2.
#pragma once

#include "elementary/core/tables.h"
#include "elementary/core/value.h"

namespace zul::elementary {
namespace {

template <class D>
struct Angle {  // cell pi / 64 + high + low
    BitsOf<D> cell;
    D high;
    D low;
};

// The parts of pi / 64 have 28 bits: their multiples by the 25 bits of a cell are exact, and so are the differences or,
// by Dekker's method, what they round off.
template <class D>
ZUL_INLINE Angle<D> ReduceAngle(D x) {
    const D shifted = x * kSineCellsPerUnit + kRounder;
    const D n = shifted - kRounder;
    const D first = x - n * kSineStep[0];
    const D part = n * kSineStep[1];
    const D second = first - part;
    const D secondRest = (first - second) - part;
    const D nextPart = n * kSineStep[2];
    const D third = second - nextPart;
    const D thirdRest = (second - third) - nextPart;
    return {Bits(shifted), third, (secondRest + thirdRest) - n * kSineStep[3]};
}

template <class D>
struct Sine {  // high + low, and its sign in the top bit
    D high;
    D low;
    BitsOf<D> sign;
};

// sin(a + r) = sin(a) + r + (cos(a) - 1) r + ...: where the sine is small, cos(a) - 1 is, too.
template <class D>
ZUL_INLINE Sine<D> SplitSine(const Angle<D>& angle, unsigned turn = 0) {
    const BitsOf<D> cell = angle.cell + turn;
    const BitsOf<D> i = cell & 63;
    const D sine = Gather<D, kSineStride>(kSineCells, i);
    const D sineRest = Gather<D, kSineStride>(kSineCells + 1, i);
    const D cosineLessOne = Gather<D, kSineStride>(kSineCells + 2, i);
    const D r = angle.high;
    const D r2 = r * r;
    const D sineOfR = angle.low + r * r2 * (kSineSeries[0] + r2 * (kSineSeries[1] + r2 * kSineSeries[2]));
    const D cosineOfR = r2 * (r2 * (kCosineSeries[0] + r2 * kCosineSeries[1]) - 0.5);
    const D sum = sine + r;
    const D sumRest = (sine - sum) + r;
    const D rest = sumRest + (sine * cosineOfR + (sineRest + (sineOfR + cosineLessOne * (r + sineOfR))));
    return {sum, rest, ((cell + 32) << 57) & kSignBit};
}

template <class D>
ZUL_INLINE D SumSine(const Sine<D>& sine) {
    return FromBits<D>(Bits(sine.high + sine.low) ^ sine.sign);
}

// A quarter of a turn is 32 cells.
inline constexpr unsigned kCosineTurn = 32;

// -1 / (high + low): the reciprocal, then what it leaves, in exact products of halves.
template <class D>
ZUL_INLINE D NegativeReciprocal(D high, D low) {
    const D divisor = high + low;
    const D divisorRest = (high - divisor) + low;
    const D inverse = -1.0 / divisor;
    const D upperI = UpperHalf(inverse);
    const D lowerI = inverse - upperI;
    const D upperD = UpperHalf(divisor);
    const D lowerD = divisor - upperD;
    const D left = (((1.0 + upperI * upperD) + upperI * lowerD) + lowerI * upperD) +
                   (lowerI * lowerD + inverse * divisorRest);
    return inverse + inverse * left;
}

// tan(a + r) = T + t + T t (T + t) / (1 - T t) with T = tan(a) from -1 to 1, t = tan(r). In every other quarter of a
// turn, which begins at an odd multiple of pi / 4, a is the angle less pi / 2, and the result its negative reciprocal.
template <class D>
ZUL_INLINE D SumTangent(const Angle<D>& angle) {
    const BitsOf<D> i = angle.cell & 31;
    const D tangent = Gather<D, kTangentStride>(kTangentCells, i);
    const D tangentRest = Gather<D, kTangentStride>(kTangentCells + 1, i);
    const double* c = kTangentSeries;
    const D r = angle.high;
    const D r2 = r * r;
    const D series = angle.low + r * r2 * ((c[0] + r2 * c[1]) + r2 * r2 * (c[2] + r2 * c[3]));
    const D t = r + series;
    const D quotient = tangent * t * (tangent + t) / (1.0 - tangent * t);
    const D high = tangent + r;
    const D low = ((tangent - high) + r) + (quotient + (tangentRest + series));
    const BitsOf<D> odd = (angle.cell + 16) & 32;
    if constexpr (kLanesOf<D> == 1) {
        return odd != 0 ? NegativeReciprocal(high, low) : high + low;
    } else {
        return Select(odd != 0, NegativeReciprocal(high, low), high + low);
    }
}

// Where the sine is its argument, and where the cells have more than 25 bits.
inline constexpr double kSmallAngle = 0x1p-27;
inline constexpr double kLargeAngle = 0x1p20;

template <class D>
ZUL_INLINE BitsOf<D> OutsideAngles(D x) {
    const BitsOf<D> bits = AbsoluteBits(x);
    return (bits - Bits(kSmallAngle)) | NotBelow(bits, Bits(kLargeAngle));
}

template <class D>
ZUL_INLINE D CoreSin(D x) {
    return SumSine(SplitSine(ReduceAngle(x)));
}

template <class D>
ZUL_INLINE D CoreCos(D x) {
    return SumSine(SplitSine(ReduceAngle(x), kCosineTurn));
}

template <class D>
ZUL_INLINE D CoreTan(D x) {
    return SumTangent(ReduceAngle(x));
}

// From here on atan is the double next to pi / 2.
inline constexpr double kLargeTangent = 0x1p60;

template <class D>
ZUL_INLINE BitsOf<D> OutsideAtan(D x) {
    return NotBelow(AbsoluteBits(x), Bits(kLargeTangent));
}

template <class D>
ZUL_INLINE D CoreAtan(D x) {
    constexpr double kBelowCells = 0x1.fp-5;
    constexpr double kLeast = 0x1p-4;
    constexpr double kBehindCells = 32;
    const D t = Absolute(x);
    const D key =
        Select(t < kLeast, Splat<D>(kBelowCells), Select(t > kBehindCells, Splat<D>(kBehindCells), t));
    const BitsOf<D> cell = (Bits(key) >> 49) - (Bits(kBelowCells) >> 49);
    const D a = Gather<D, kArcStride>(kArcCells, cell);
    const D b = Gather<D, kArcStride>(kArcCells + 1, cell);
    const D angle = Gather<D, kArcStride>(kArcCells + 2, cell);
    const D angleRest = Gather<D, kArcStride>(kArcCells + 3, cell);
    const D u = (a * t - b) / (a + b * t);
    const D z = u * u;
    const D z2 = z * z;
    const D series = (kArcSeries[0] + z * kArcSeries[1]) + z2 * (kArcSeries[2] + z * kArcSeries[3]) +
                     z2 * z2 * (kArcSeries[4] + z * kArcSeries[5]);
    return WithSignOf(angle + (u + (angleRest + u * z * series)), x);
}

}  // namespace
}  // namespace zul::elementary
