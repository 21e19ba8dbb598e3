// The Cauchy family's kernels. Kernels return NA for "no result".
#pragma once

#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// Beyond it the 1 beside z^2 is lost, which itself might overflow.
inline constexpr double kOneOverFarZ = 1e-9;

// 1 / ((z^2 + 1) scale pi), z = (x - location) / scale.
struct CauchyPdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double x) const;
};

// 0.5 + atan(z) / pi; z is negated for the upper tail.
struct CauchyCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, bool>;
    double location;
    double scale;
    bool upper;
    double operator()(double x) const;
};

// location + scale tan(pi (p - 0.5)). p = 0 and p = 1 give NA, a p that tolerantly equals 0.5 the location.
struct CauchyInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double p) const;
    static constexpr bool kTakesEveryTail = true;
    double AtUpperTail(double q) const;
};

}  // namespace zul::kernels
