// Bonett's method for one variance. Source: D. G. Bonett, Approximate confidence interval for standard
// deviation of nonnormal distributions, 2006.
#pragma once

#include "frame/side.h"
#include "numerics/roots/real_function.h"
#include "zul/hypothesis.h"

namespace zul::hypothesis {

// The summary that the method works on.
struct BonettSample {
    double n;
    double variance;
    double kurtosis;  // n times the fourth moment about the trimmed mean, over the squared one about the mean

    // (kurtosis - 1 + 3 / n), the squared spread of the logarithm of the variance times n - 1.
    double Excess() const { return 3 / n + kurtosis - 1; }
};

// Takes the kurtosis from n values. Variance <= 0: 1, and the values are not read. kOutOfMemory: NaN.
int EstimateKurtosis(const double* data, unsigned n, double variance, double* kurtosis);

// NaN where the bounds do not exist, and for an unknown type.
void BonettBounds(const BonettSample& sample, double confidence, IntervalType type, double* lower,
                  double* upper);

// The p-value, by the root finder in the call frame, which an exception leaves entered: std::runtime_error
// "float overflow" where n spread exceeds some 690, except for the lower side.
double BonettPValue(const BonettSample& sample, double variance0, Side side);

// Vanishes at the normal quantile z with which a bound is variance0: the lower bound, or the upper one.
class CmBonettPValueFunction : public numerics::CmRealFunction {
public:
    CmBonettPValueFunction(bool lowerBound, double variance, double spread, double n, double variance0);
    double Evaluate(double z) override;

private:
    double sign_;  // -1 for the lower bound
    double spread_;
    double n_;
    double logN_;
    double logVariance_;
    double logVariance0_;
};

}  // namespace zul::hypothesis
