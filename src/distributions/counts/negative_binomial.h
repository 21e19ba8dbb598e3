// The negative binomial family's kernels: the number of trials up to and including the r-th success. Kernels
// return NA for "no result".
#pragma once

#include "distributions/counts/count_arrays.h"
#include "distributions/inversion.h"
#include "frame/call_frame.h"
#include "numerics/gamma/gamma_shape.h"

namespace zul::kernels {

// C(k - 1, r - 1) prob^r (1 - prob)^(k - r) at k = x: prob times the binomial mass of r - 1 successes in k -
// 1 trials. 0 * prob for k < r and between whole numbers.
struct NegBinomialPdfKernel {
    using Table = RepeatedCounts;
    using Parameters = frame::ParameterList<double, double>;
    double prob;
    double r;
    double operator()(double x) const;
    CountRange Counts() const;
};

// P(X <= x) is the probability of r or more successes in x trials, P(X >= x) that of fewer in x - 1 trials,
// both after the rules of BinomialCdfKernel for its n: for r = 1 1 - (1 - prob)^x and (1 - prob)^(x - 1) with
// x as it is.
struct NegBinomialCdfKernel {
    using Table = RepeatedCounts;
    using Parameters = frame::ParameterList<double, double, bool>;
    double prob;
    double r;
    bool upper;
    double operator()(double x) const;
    CountRange Counts() const;
};

// The quantile at p. p <= prob^r gives r; else p = 1 or prob = 0, within CompareTolerant, gives NA. For r = 1
// a failure of the logarithms gives NA.
class NegBinomialInvCdfKernel {
public:
    using Table = TabledQuantiles;
    using Parameters = frame::ParameterList<double, double>;
    NegBinomialInvCdfKernel(double prob, double r) : prob_(prob), r_(r) {}
    double operator()(double p);
    double AtUpperTail(double q);
    TabledCounts Counts() const;

private:
    double FirstMass();
    double Search(double p) const;
    double SearchUpperTail(double q) const;
    template <typename Condition>
    double LastBelow(double z, Condition isBelow) const;
    double prob_;
    double r_;
    numerics::Lazy firstMass_;
};

// The lower tail at t, not rounded, minus p.
class CmNegBinomialCdf : public CmInversion {
public:
    CmNegBinomialCdf(double prob, double r, double p) : CmInversion(p, true), lowerTail_{prob, r, false} {}
    double Evaluate(double t) override { return lowerTail_(t) - target; }

private:
    NegBinomialCdfKernel lowerTail_;
};

}  // namespace zul::kernels
