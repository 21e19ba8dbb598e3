// The Poisson family's kernels. Kernels return NA for "no result".
#pragma once

#include "distributions/counts/count_arrays.h"
#include "frame/call_frame.h"
#include "numerics/counts/poisson.h"

namespace zul::kernels {

// mean^k exp(-mean) / k! at k = x, by logarithms; 0 for k < 0, between whole numbers, and for any failure:
// also for a mean <= 0, whose logarithm fails.
class PoissonPdfKernel {
public:
    using Parameters = frame::ParameterList<double>;
    static constexpr bool kKeptBetweenCalls = true;
    explicit PoissonPdfKernel(double mean) : shape_(mean) {}
    double operator()(double x) const;

private:
    numerics::PoissonShape shape_;
};

// P(X <= x) or P(X >= x), an x between whole numbers standing for the one below or above: the other tail of
// the chi-square distribution at 2 mean with 2 (k + 1) degrees of freedom for P(X <= k) and P(X > k). So a
// mean <= 0 puts all mass on 0, and the shapes end at kShapeLimit: NA. "poisson_df" has the same numbers from
// fewer steps.
class PoissonCdfKernel {
public:
    using Parameters = frame::ParameterList<double, bool>;
    static constexpr bool kKeptBetweenCalls = true;
    PoissonCdfKernel(double mean, bool upper) : shape_(mean), upper_(upper) {}
    double operator()(double x) const;

private:
    numerics::PoissonShape shape_;
    bool upper_;
};

// The quantile at p. p = 0 gives 0, p = 1 gives NA.
class PoissonInvCdfKernel {
public:
    using Table = TabledQuantiles;
    using Parameters = frame::ParameterList<double>;
    static constexpr bool kKeptBetweenCalls = true;
    explicit PoissonInvCdfKernel(double mean) : shape_(mean) {}
    double operator()(double p) const;
    double AtUpperTail(double q) const;
    TabledCounts Counts() const;

private:
    numerics::PoissonShape shape_;
};

}  // namespace zul::kernels
