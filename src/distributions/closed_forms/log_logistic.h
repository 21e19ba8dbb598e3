// The log-logistic family's kernels: log(X - threshold) is logistic. Kernels return NA for "no result".
#pragma once

#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// The logistic density of log(x - threshold) over x - threshold for x > threshold, else 0.
struct LogLogisticPdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double>;
    double location;
    double scale;
    double threshold;
    double operator()(double x) const;
};

// The logistic tail at log(x - threshold) for x > threshold, else 0 and 1.
struct LogLogisticCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double, bool>;
    double location;
    double scale;
    double threshold;
    bool upper;
    double operator()(double x) const;
};

// exp(q) + threshold, q the logistic quantile; a q from NA on is returned as it is.
struct LogLogisticInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double>;
    double location;
    double scale;
    double threshold;
    double operator()(double p) const;
    double AtUpperTail(double q) const;
};

}  // namespace zul::kernels
