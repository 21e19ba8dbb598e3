#pragma once

#include <memory>

#include "sampling/combined_generator.h"
#include "zul/sampler.h"

namespace zul::sampling {

class Sampler final : public ISampler {
public:
    explicit Sampler(std::unique_ptr<CombinedGenerator> generator) : generator_(std::move(generator)) {}
    void Reseed(double seed) override;
    double GetSeed() const override;
    int SampleBeta(double* out, unsigned count, double a, double b) override;
    int SampleCauchy(double* out, unsigned count, double location, double scale) override;
    int SampleChiSquare(double* out, unsigned count, double df) override;
    int SampleExponential(double* out, unsigned count, double scale, double threshold) override;
    int SampleF(double* out, unsigned count, double df1, double df2) override;
    int SampleGamma(double* out, unsigned count, double shape, double scale, double threshold) override;
    int SampleLambda(double* out, unsigned count, double lambda, double location, double scale) override;
    int SampleLaplace(double* out, unsigned count, double location, double scale) override;
    int SampleLargestExtremeValue(double* out, unsigned count, double location, double scale) override;
    int SampleLogistic(double* out, unsigned count, double location, double scale) override;
    int SampleLogLogistic(double* out, unsigned count, double location, double scale,
                          double threshold) override;
    int SampleLognormal(double* out, unsigned count, double location, double scale,
                        double threshold) override;
    int SampleMVNormal(double* out, unsigned count, unsigned dimension, const double* mean,
                       const double* covariance) override;
    int SampleNormal(double* out, unsigned count, double mean, double standardDeviation) override;
    int Reserved17() override;
    int Reserved18() override;
    int SampleSmallestExtremeValue(double* out, unsigned count, double location, double scale) override;
    int SampleT(double* out, unsigned count, double df, double noncentrality) override;
    int SampleTriangular(double* out, unsigned count, double minimum, double mode, double maximum) override;
    int SampleIntegerUniform(double* out, unsigned count, int low, int high) override;
    int SampleUniform(double* out, unsigned count, double low, double high) override;
    int SampleWeibull(double* out, unsigned count, double shape, double scale, double threshold) override;
    int SampleBernoulli(double* out, unsigned count, double p) override;
    int SampleBinomial(double* out, unsigned count, int trials, double p) override;
    int SampleDiscrete(double* out, unsigned count, const double* values, const double* probabilities,
                       unsigned tableSize) override;
    int SampleNegBinomial(double* out, unsigned count, double prob, double r) override;
    int SampleHypergeometric(double* out, unsigned count, unsigned population, int successes,
                             int draws) override;
    int SampleNegBinomialTrials(double* out, unsigned count, int failuresOnly, double prob,
                                double r) override;
    int SamplePoisson(double* out, unsigned count, double mean) override;
    int SampleIndices(unsigned* out, unsigned population, unsigned count, bool withoutReplacement) override;

private:
    std::unique_ptr<CombinedGenerator> generator_;
};

}  // namespace zul::sampling
