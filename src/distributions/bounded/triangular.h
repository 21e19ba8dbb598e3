// The triangular family's kernels. Kernels return NA for "no result".
#pragma once

#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// 2 (x - lower) / ((mode - lower) (upper - lower)) on [lower, mode), 2 / (upper - lower) at the mode,
// 2 (upper - x) / ((upper - lower) (upper - mode)) on (mode, upper], else 0.
struct TriangularPdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double>;
    double lower;
    double mode;
    double upper;
    double operator()(double x) const;
};

// The lower tail: 1 for x >= upper; above the mode the tail of the mode plus
// ((upper - x) / (upper - mode) + 1) (x - mode) / (upper - lower); up to the mode
// (x - lower)^2 / ((mode - lower) (upper - lower)); 0 for x <= lower. The upper tail is the lower one of the
// mirrored problem, with x, lower, mode, upper replaced by -x, -upper, -mode, -lower.
struct TriangularCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double, bool>;
    double lower;
    double mode;
    double upper;
    bool upperTail;
    double operator()(double x) const;
};

// What is left of the upper end when its difference with a root has lost three bits, and a probability of which
// nothing is left in 1 less it.
inline constexpr double kCancelled = 0.125;
inline constexpr double kLostInComplement = 0x1p-54;

// The inverse of the two pieces, the upper one from the end that is nearer. p = 1 gives upper.
struct TriangularInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double>;
    double lower;
    double mode;
    double upper;
    double operator()(double p) const;
    double AtUpperTail(double q) const;
};

}  // namespace zul::kernels
