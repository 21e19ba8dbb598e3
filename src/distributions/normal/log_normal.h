// The lognormal family's kernels: log(X - threshold) is normal. Kernels return NA for "no result".
#pragma once

#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// The normal density of log(x - threshold) over x - threshold for x > threshold, else 0. location and scale are
// the mean and the standard deviation of the logarithm.
struct LogNormalPdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double>;
    double location;
    double scale;
    double threshold;
    double operator()(double x) const;
};

// The normal tail at log(x - threshold) for x > threshold, else 0 and 1.
struct LogNormalCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double, bool>;
    double location;
    double scale;
    double threshold;
    bool upper;
    double operator()(double x) const;
};

// exp(q) + threshold, q the normal quantile; a q from NA on is returned as it is. p = 0 gives the threshold.
struct LogNormalInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double>;
    double location;
    double scale;
    double threshold;
    double operator()(double p) const;
    double AtUpperTail(double q) const;
};

}  // namespace zul::kernels
