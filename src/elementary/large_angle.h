// Angles of so many turns that a product with a double's reciprocal of pi says nothing.
#pragma once

#include <cstdint>

namespace zul::elementary {

struct LargeAngle {  // cell pi / 64 + high + low, the cell without whole turns
    std::uint64_t cell;
    double high;
    double low;
};

// For finite |x| >= 2^20. Source: M. H. Payne, R. N. Hanek, Radian reduction for trigonometric functions, 1983.
LargeAngle ReduceLargeAngle(double x);

}  // namespace zul::elementary
