// The uniform family's kernels: the arithmetic of the exports, which run without the call frame.
#pragma once

#include <cfloat>
#include <cmath>

#include "frame/call_frame.h"

namespace zul::kernels {

// 1 / (b - a) on [a, b], else 0.
struct UniformPdfKernel {
    double a;
    double b;
    double operator()(double x) const { return a <= x && x <= b ? 1 / (b - a) : 0; }
};

// (x - a) / (b - a) and (b - x) / (b - a) inside (a, b); 0 and 1 for x <= a, 1 and 0 for x >= b. Of halves
// where b - a would overflow.
struct UniformCdfKernel {
    double a;
    double b;
    bool upper;
    double operator()(double x) const {
        if (x <= a) return upper ? 1 : 0;
        if (x >= b) return upper ? 0 : 1;
        const double range = b - a;
        if (range > DBL_MAX) return (upper ? b / 2 - x / 2 : x / 2 - a / 2) / (b / 2 - a / 2);
        return (upper ? b - x : x - a) / range;
    }
};

// (b - a) p + a; exactly a and b for p = 0 and p = 1.
struct UniformInvCdfKernel {
    using Parameters = frame::ParameterList<double, double>;
    double a;
    double b;
    double operator()(double p) const {
        if (p == 0) return a;
        return p == 1 ? b : (b - a) * p + a;
    }
    static constexpr bool kTakesEveryTail = true;
    double AtUpperTail(double q) const {
        const double range = b - a;
        const double sides[] = {range * (1 - q) + a, b - range * q};
        // An infinite range leaves no number beside it: the same one as for the lower tail.
        return sides[int{q < 0.5} & int{std::abs(range) <= DBL_MAX}];
    }
};

}  // namespace zul::kernels
