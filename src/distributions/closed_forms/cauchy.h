// The Cauchy family's kernels. Kernels return NA for "no result".
#pragma once

#include "frame/call_frame.h"

namespace zul::kernels {

// 1 / ((z^2 + 1) scale pi), z = (x - location) / scale.
struct CauchyPdfKernel {
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double x) const;
};

// 0.5 + atan(z) / pi; z is negated for the upper tail.
struct CauchyCdfKernel {
    using Parameters = frame::ParameterList<double, double, bool>;
    double location;
    double scale;
    bool upper;
    double operator()(double x) const;
};

// location + scale tan(pi (p - 0.5)). p = 0 and p = 1 give NA, a p that tolerantly equals 0.5 the location.
struct CauchyInvCdfKernel {
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double p) const;
    static constexpr bool kTakesEveryTail = true;
    double AtUpperTail(double q) const;
};

}  // namespace zul::kernels
