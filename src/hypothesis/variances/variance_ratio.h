// Bonett's method for the ratio of two variances. Source: D. G. Bonett, Robust confidence interval for a ratio of
// standard deviations, 2006. Here the kurtosis is pooled at the ratio that is asked about, and the interval is the
// inverted test: the two always agree, and samples that change places invert the bounds.
#pragma once

#include "frame/side.h"
#include "numerics/roots/real_function.h"
#include "zul/hypothesis.h"

namespace zul::hypothesis {

// What the method takes from a sample.
struct VarianceSample {
    double n;
    double variance;      // positive
    double fourthPowers;  // the sum of those of (x - trimmed mean) / standard deviation
};

// The sum from the kurtosis estimate of one sample.
VarianceSample SampleWithKurtosis(double n, double variance, double kurtosis);

// Two samples, the first over the second.
class VarianceRatio {
public:
    VarianceRatio(const VarianceSample& first, const VarianceSample& second);

    const VarianceSample& First() const { return first_; }
    const VarianceSample& Second() const { return second_; }
    VarianceRatio Swapped() const { return {second_, first_}; }
    // The logarithm of the ratio of the sample variances.
    double Log() const { return log_; }
    // The standard error of that under a ratio with the logarithm u.
    double ErrorAt(double u) const;
    // The logarithm of n1 / (n1 - z) over n2 / (n2 - z), z below both.
    double LogFactor(double z) const;

private:
    VarianceSample first_;
    VarianceSample second_;
    double log_;
};

// NaN where a bound does not exist: for samples of different size a quantile beyond the smaller one. Both for an unknown
// type.
void RatioBounds(const VarianceRatio& ratio, double confidence, IntervalType type, double* lower,
                 double* upper);

// The p-value of the ratio ratio0 > 0.
double RatioPValue(const VarianceRatio& ratio, double ratio0, Side side);

// Vanishes at the logarithm of the lower bound for the normal quantile z.
class CmScaledRatioLCLFunc : public numerics::CmRealFunction {
public:
    CmScaledRatioLCLFunc(const VarianceRatio& ratio, double z);
    double Evaluate(double u) override;
    double Start() const { return start_; }

private:
    VarianceRatio ratio_;
    double z_;
    double start_;  // the bound with an error of 0
};

// Vanishes at the normal quantile for which the lower bound is the ratio with the logarithm u0.
class CmTwoSamplePValueFunction : public numerics::CmRealFunction {
public:
    CmTwoSamplePValueFunction(const VarianceRatio& ratio, double u0);
    double Evaluate(double z) override;
    double Distance() const { return distance_; }
    double Error() const { return error_; }

private:
    VarianceRatio ratio_;
    double distance_;  // of the logarithms
    double error_;
};

}  // namespace zul::hypothesis
