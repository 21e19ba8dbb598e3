// x to the y as exp(y log(x)), the logarithm in two doubles.
#pragma once

#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"

namespace zul::elementary {
namespace {

template <class D>
struct TwoDoubles {
    D high;
    D low;
};

// log(1 + r) - r + r^2 / 2, to 2^-68 of the logarithm.
template <class D>
ZUL_INLINE D LogSeriesOfTwo(D r) {
    const double* c = kLogSeriesOfTwo;
    const D r2 = r * r;
    return r2 * r * ((c[0] + r * c[1]) + r2 * ((c[2] + r * c[3]) + r2 * (c[4] + r * c[5])));
}

// y log(x), the upper part of 52 bits, x by its bits as in SplitLog, |y| below 2^64.
template <class D>
ZUL_INLINE TwoDoubles<D> LogOfPower(BitsOf<D> x, D y) {
    const LogParts<D> parts = SplitLog<D>(x);
    const D r = parts.r;
    const D upperR = UpperHalf(r);
    const D square = -0.5 * (upperR * upperR);
    const D squareRest = -0.5 * ((r + upperR) * (r - upperR)) - r * parts.rest;
    const D sum = parts.high + square;
    const D sumRest = (parts.high - sum) + square + (parts.low + squareRest + LogSeriesOfTwo(r));
    const D log = sum + sumRest;
    const D upperLog = UpperHalf(log);
    const D lowerLog = (sum - upperLog) + sumRest;
    const D upperY = UpperHalf(y);
    return {upperY * upperLog, upperY * lowerLog + (y - upperY) * log};
}

// Not for a normal positive x and |y| below 2^64. What remains has to be asked of the logarithm: OutsideExp.
template <class D>
ZUL_INLINE BitsOf<D> OutsidePow(D x, D y) {
    return OutsideLog(x) | NotBelow(AbsoluteBits(y), Bits(0x1p64));
}

}  // namespace
}  // namespace zul::elementary
