// The Laplace (double exponential) family's kernels. Kernels return NA for "no result".
#pragma once

#include "distributions/closed_forms/exponential.h"
#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// exp(-|x - location| / scale) / (2 scale). A failure of any class gives NA.
struct LaplacePdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double x) const;
};

// With z = (x - location) / scale, negated for the upper tail: 0.5 + 0.5 times the lower tail of the standard
// exponential family at z for z >= 0, else 0.5 exp(z).
struct LaplaceCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, bool>;
    double location;
    double scale;
    bool upper;
    StandardExponentialTail exponential{false};
    double operator()(double x);
};

// location + scale log(2 p), or location - scale log(2 - 2 p) for p > 0.5. p = 0 and p = 1 give NA, a p that
// tolerantly equals 0.5 the location.
struct LaplaceInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double p) const;
    static constexpr bool kTakesEveryTail = true;
    double AtUpperTail(double q) const;
};

}  // namespace zul::kernels
