// The exact p-value of a proportion. Kernels return NA for "no result".
#pragma once

#include "distributions/inversion.h"
#include "frame/side.h"

namespace zul::kernels {

// The p-value of x successes in n trials under the proportion p0; an unknown side: 0.
//
// Two-sided: the probability of all counts on the side of x that are as far out, and of those on the other
// side whose likelihood ratio is as large. Source of the order: S. S. Wilks, The large-sample distribution of
// the likelihood ratio for testing composite hypotheses, 1938.
double BinomialPValue(double x, int n, double p0, Side side);

// A proportion and its complement, so that exchanging them rounds neither.
struct Proportion {
    double success;
    double failure;
    Proportion Mirrored() const { return {failure, success}; }
};

// Half the likelihood-ratio statistic of k successes in n trials under a proportion: (n - k) log((1 - k/n) /
// (1 - p0)), counted for k < n, plus k log((k/n) / p0), counted for k >= 1. Infinite where the proportion
// does not allow k; elsewhere a proportion outside [0, 1] is a logarithm that fails.
double LikelihoodRatio(double k, double n, Proportion p0);

// LikelihoodRatio at the whole number below t, minus the target.
class CmLRatio : public CmInversion {
public:
    CmLRatio(int n, Proportion p0, double ratio) : CmInversion(ratio, true), n_(n), p0_(p0) {}
    double Evaluate(double t) override;

private:
    double n_;
    Proportion p0_;
};

}  // namespace zul::kernels
