// The normal family's kernels, and the tail that its p-values use. Kernels return NA for "no result".
#pragma once

#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"
#include "frame/side.h"
#include "numerics/roots/real_function.h"

namespace zul::kernels {

// exp(-z^2 / 2) / (sqrt(2 pi) sd), z = (x - mean) / sd. A failure of class std::runtime_error gives 0: the
// density is negligible where z^2 overflows. No parameter is checked.
struct NormalPdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double mean;
    double sd;
    double operator()(double x) const;
};

// The lower or upper tail at x; x = mean gives 0.5 without a division. No parameter is checked: sd = 0 away
// from the mean divides by zero.
struct NormalCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, bool>;
    double mean;
    double sd;
    bool upper;
    double operator()(double x) const;
};

// The quantile at p: "inv_normal_df", and where that fails for a tiny p the root of the lower tail in
// [-36, 0]. p below the lower tail at -36 (4.18e-284), or p >= 1: NA.
struct NormalInvCdfKernel {
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double>;
    double mean;
    double sd;
    double operator()(double p) const;
    double AtUpperTail(double q) const;
};

// The standard normal p-value of z: one of the tails, or twice the smaller; 0 for an unknown side.
double StandardNormalTail(double z, Side side);

// The lower tail at x minus the target probability.
class CmStandardNormalCdf : public numerics::CmRealFunction {
public:
    explicit CmStandardNormalCdf(double p);
    double Evaluate(double x) override;
};

}  // namespace zul::kernels
