// The Weibull family's kernels. Kernels return NA for "no result".
#pragma once

#include "distributions/closed_forms/exponential.h"
#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// z^(shape - 1) shape exp(-z^shape) / scale with z = (x - threshold) / scale for x > threshold, else 0. A
// failure of any class gives NA.
struct WeibullPdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double>;
    double shape;
    double scale;
    double threshold;
    double operator()(double x) const;
};

// The standard exponential tail at z^shape for x > threshold, else 0 and 1; 1 and 0 where z^shape overflows.
struct WeibullCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double, bool>;
    double shape;
    double scale;
    double threshold;
    bool upper;
    StandardExponentialTail exponential{upper};
    double operator()(double x);
};

// (-log(1 - p))^(1 / shape) scale + threshold. p = 0 gives the threshold, p = 1 NA.
struct WeibullInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double>;
    double shape;
    double scale;
    double threshold;
    double operator()(double p) const;
    double AtUpperTail(double q) const;
};

}  // namespace zul::kernels
