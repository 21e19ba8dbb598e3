// The logistic family's kernels. Kernels return NA for "no result".
#pragma once

#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// 1 / (1/e + 2 + e) / scale with e = exp(-z), z = (x - location) / scale. 0 where an exponential overflows, and
// for a failure of any class.
struct LogisticPdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double x) const;
};

// Lower tail 1 / (1 + e), upper tail e / (1 + e); 0 and 1 where e overflows.
struct LogisticCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, bool>;
    double location;
    double scale;
    bool upper;
    double operator()(double x) const;
};

// location - (log(1 - p) - log(p)) scale. A p that tolerantly equals 0.5 gives the location; p = 0 and p = 1
// throw "float overflow".
struct LogisticInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double p) const;
    static constexpr bool kTakesEveryTail = true;
    double AtUpperTail(double q) const;
};

}  // namespace zul::kernels
