// Arithmetic that the families with closed forms share.
#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "elementary/core/power.h"
#include "elementary/logarithm.h"
#include "frame/compare.h"
#include "frame/guarded.h"

namespace zul::kernels {

// (x - location) / scale, held at the ends of the range where the quotient would overflow: there it is beyond
// the bound of every exponential. scale = 0 divides by zero.
inline double StandardDeviate(double x, double location, double scale) {
    constexpr double kLargest = DBL_MAX / 2;
    const double distance = x - location;
    const double unit = std::abs(scale);
    if (unit < 1 && unit > 0 && std::abs(distance) > unit * kLargest)
        return (distance < 0) == (scale < 0) ? kLargest : -kLargest;
    return distance / scale;
}

// Whether (x - location) / scale is sure to raise no trap. Quiet comparisons: a NaN is not ordinary.
inline bool IsOrdinaryDeviate(double x, double location, double scale) {
    constexpr double kLarge = 1e150;
    return std::isless(std::abs(x), kLarge) && std::isless(std::abs(location), kLarge) &&
           std::isless(scale, kLarge) && std::isgreater(scale, 1 / kLarge);
}

// Whether p tolerantly equals 0.5.
inline constexpr double kNearHalf = 1e-11;  // spares most p the comparison
inline bool IsTolerantlyHalf(double p) {
    return std::abs(p - 0.5) < kNearHalf && frame::CompareTolerant(p, 0.5, 0) == 0;
}

// The symmetric families' quantile for the upper tail q, 0 < q < 1, from that of the standard member for the
// smaller tail: for q < 1/2 it lies above the location. Picked by index, not by a branch.
template <typename StandardQuantile>
double SymmetricQuantile(double q, double location, double scale, StandardQuantile quantile) {
    const double smaller = std::min(q, 1 - q);
    if (IsTolerantlyHalf(smaller)) return location;
    const double scales[] = {scale, -scale};
    return location + scales[q < 0.5] * quantile(smaller);
}

// The guarded logarithm of 1 - p, which keeps the digits of a small p.
inline double LogOfComplement(double p) {
    return 1 - p > 0 ? elementary::Log1p(-p) : frame::SafeLog(1 - p);
}

// Whether x to the y, and that times or over x, is far from overflow and underflow: (14.9 + 1) * 64 log(2) = 705 is
// within the bound of the exponential.
inline constexpr double kOrdinaryExponent = 14.9;
inline bool IsOrdinaryPower(double x, double y) {
    return x > 0x1p-64 && x < 0x1p64 && std::abs(y) < kOrdinaryExponent;
}

// SafePow, without its logarithm where there is nothing to guard.
inline double GuardedPower(double x, double y) {
    if (!IsOrdinaryPower(x, y)) return frame::SafePow(x, y);
    const elementary::TwoDoubles<double> log = elementary::LogOfPower(elementary::Bits(x), y);
    return elementary::CoreExpOfTwo(log.high, log.low);
}

}  // namespace zul::kernels
