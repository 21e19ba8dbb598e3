// The kernels of the integer uniform family, on the whole numbers a to b. Kernels return NA for "no result".
#pragma once

#include "frame/call_frame.h"

namespace zul::kernels {

// 1 / (b - a + 1) for a whole x from a to b, else 0.
struct IntegerUniformPdfKernel {
    using Parameters = frame::ParameterList<int, int>;
    int a;
    int b;
    double operator()(double x) const;
};

// The lower tail at the largest whole k <= x: 0 for k < a, (k - a + 1) / (b - a + 1) for k < b, else 1. The
// upper tail, which includes x itself, is the lower one at b - (x - a).
struct IntegerUniformCdfKernel {
    using Parameters = frame::ParameterList<int, int, bool>;
    int a;
    int b;
    bool upper;
    double operator()(double x) const;
};

// ceil((b - a + 1) p + a - 1). p = 0 gives a, p = 1 gives b.
struct IntegerUniformInvCdfKernel {
    using Parameters = frame::ParameterList<int, int>;
    int a;
    int b;
    double operator()(double p) const;
    double AtUpperTail(double q) const;
};

}  // namespace zul::kernels
