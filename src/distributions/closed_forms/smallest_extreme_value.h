// The kernels of the smallest extreme value family: -X has the largest extreme value distribution with the
// location negated. Kernels return NA for "no result".
#pragma once

#include "distributions/closed_forms/largest_extreme_value.h"
#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// The density of the mirrored family at -x.
struct SmallestExtremeValuePdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double x) const;
};

// The other tail of the mirrored family at -x.
struct SmallestExtremeValueCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, bool>;
    double location;
    double scale;
    bool upper;
    LargestExtremeValueCdfKernel mirrored{-location, scale, !upper};
    double operator()(double x);
};

// The negative of the mirrored family's inverse at 1 - p; the sign is changed only when that is below NA.
struct SmallestExtremeValueInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double location;
    double scale;
    double operator()(double p) const;
    double AtUpperTail(double q) const;

private:
    // From the logarithm of the upper tail.
    double Mirrored(double logUpper) const;
};

}  // namespace zul::kernels
