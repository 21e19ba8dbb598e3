// The Poisson family's kernels. Kernels return NA for "no result".
#pragma once

#include "frame/call_frame.h"

namespace zul::kernels {

// mean^k exp(-mean) / k! at k = x, by logarithms; 0 for k < 0, between whole numbers, and for any failure:
// also for a mean <= 0, whose logarithm fails.
struct PoissonPdf {
    using Parameters = frame::ParameterList<double>;
    double mean;
    double operator()(double x) const;
};

// P(X <= x) or P(X >= x), an x between whole numbers standing for the one below or above. Where that is one
// of the two ends, 0 and 1. Else the other tail of the chi-square distribution at 2 mean with 2 (k + 1) degrees
// of freedom, for P(X <= k) and P(X > k); so a mean <= 0 puts all mass on 0.
struct PoissonCdf {
    using Parameters = frame::ParameterList<double, bool>;
    double mean;
    bool upper;
    double operator()(double x) const;
};

// The quantile at p. p = 0 gives 0, p = 1 gives NA.
struct PoissonInvCdf {
    using Parameters = frame::ParameterList<double>;
    double mean;
    double operator()(double p) const;
};

double PoissonPdfKernel(double x, double mean);
double PoissonCdfKernel(double x, double mean, bool upper);
double PoissonInvCdfKernel(double p, double mean);

}  // namespace zul::kernels
