// The half-normal family's kernels. Kernels return NA for "no result".
#pragma once

#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// Twice the normal density with mean threshold and standard deviation scale for x >= threshold, else 0.
struct HalfNormalPdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double scale;
    double threshold;
    double operator()(double x) const;
};

// From the normal tails at x: the lower tail is twice the lower one minus 1, the upper tail twice the upper
// one. x < threshold gives 0 and 1; x = NA, as any failure of the normal tail, gives NA.
struct HalfNormalCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, bool>;
    double scale;
    double threshold;
    bool upper;
    double operator()(double x) const;
};

// The normal quantile at (p + 1) / 2.
struct HalfNormalInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double scale;
    double threshold;
    double operator()(double p) const;
    double AtUpperTail(double q) const;
};

}  // namespace zul::kernels
