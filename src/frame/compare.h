#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace zul::frame {

// 0 when x and y are equal within a relative 1e-12 and a small absolute term (1e-30, or 1e-14 of a
// non-zero scale), else -1 when y > x and 1 when y < x.
inline int CompareTolerant(double x, double y, double scale) {
    if (x == y) return 0;  // before any subtraction: two equal infinities would give an invalid operation
    const double absolute = scale == 0 ? 1e-30 : scale * 1e-14;
    const double larger = std::max(std::abs(x), std::abs(y));
    // Two huge values of opposite signs, whose difference would overflow, are not equal.
    const bool overflows = larger > DBL_MAX / 2 && (x < 0) != (y < 0);
    if (!overflows && std::abs(x - y) <= larger * 1e-12 + absolute) return 0;
    return y > x ? -1 : 1;
}

// Half away from zero, by the formula that every discrete rule of the library uses (std::round differs
// from it for 0.49999999999999994).
inline double RoundHalfAway(double x) {
    return x >= 0 ? std::floor(x + 0.5) : std::ceil(x - 0.5);
}

}  // namespace zul::frame
