// The kernels of the largest extreme value (Gumbel) family. Kernels return NA for "no result".
#pragma once

#include "distributions/closed_forms/exponential.h"
#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// e exp(-e) / scale with e = exp(-(x - location) / scale); 0 where e overflows.
struct LargestExtremeValuePdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double x) const;
};

// The other tail of the standard exponential family at e; 0 and 1 where e overflows.
struct LargestExtremeValueCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, bool>;
    double location;
    double scale;
    bool upper;
    StandardExponentialTail otherTail{!upper};
    double operator()(double x);
};

// location - scale log(-log(p)). p = 0 and p = 1 throw "float overflow".
struct LargestExtremeValueInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double p) const;
    double AtUpperTail(double q) const;
};

// The same when log(p) is known.
double LargestExtremeValueAtLogarithm(double logP, double location, double scale);

}  // namespace zul::kernels
