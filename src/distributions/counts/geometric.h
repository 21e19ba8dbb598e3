// The geometric family's kernels: the number of trials up to and including the first success, the negative
// binomial family with r = 1. Kernels return NA for "no result".
#pragma once

#include "distributions/counts/negative_binomial.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// (1 - prob)^(k - 1) prob at k = x.
struct GeometricPdfKernel {
    using Parameters = frame::ParameterList<double>;
    double prob;
    double operator()(double x) const { return NegBinomialPdfKernel{prob, 1}(x); }
};

// 1 - (1 - prob)^x or (1 - prob)^(x - 1), with x as it is.
struct GeometricCdfKernel {
    using Parameters = frame::ParameterList<double, bool>;
    double prob;
    bool upper;
    double operator()(double x) const { return NegBinomialCdfKernel{prob, 1, upper}(x); }
};

// The quantile at p.
class GeometricInvCdfKernel {
public:
    using Table = TabledQuantiles;
    using Parameters = frame::ParameterList<double>;
    explicit GeometricInvCdfKernel(double prob) : trials_(prob, 1) {}
    double operator()(double p) { return trials_(p); }
    double AtUpperTail(double q) { return trials_.AtUpperTail(q); }
    TabledCounts Counts() const { return trials_.Counts(); }

private:
    NegBinomialInvCdfKernel trials_;
};

}  // namespace zul::kernels
