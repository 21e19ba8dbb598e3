// The geometric family's kernels: the number of trials up to and including the first success, the negative
// binomial family with r = 1. Kernels return NA for "no result".
#pragma once

#include "distributions/negative_binomial.h"
#include "frame/call_frame.h"

namespace zul::kernels {

// (1 - prob)^(k - 1) prob at k = x.
struct GeometricPdf {
    using Parameters = frame::ParameterList<double>;
    double prob;
    double operator()(double x) const { return NegBinomialPdf{prob, 1}(x); }
};

// 1 - (1 - prob)^x or (1 - prob)^(x - 1), with x as it is.
struct GeometricCdf {
    using Parameters = frame::ParameterList<double, bool>;
    double prob;
    bool upper;
    double operator()(double x) const { return NegBinomialCdf{prob, 1, upper}(x); }
};

// The quantile at p.
class GeometricInvCdf {
public:
    using Parameters = frame::ParameterList<double>;
    explicit GeometricInvCdf(double prob) : trials_(prob, 1) {}
    double operator()(double p) { return trials_(p); }

private:
    NegBinomialInvCdf trials_;
};

double GeometricPdfKernel(double x, double prob);
double GeometricCdfKernel(double x, double prob, bool upper);
double GeometricInvCdfKernel(double p, double prob);

}  // namespace zul::kernels
