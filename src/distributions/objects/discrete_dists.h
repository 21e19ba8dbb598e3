// Objects of the families on whole numbers.
#pragma once

#include <cstdint>
#include <vector>

#include "distributions/counts/binomial.h"
#include "distributions/counts/hypergeometric.h"
#include "distributions/counts/integer_uniform.h"
#include "distributions/counts/negative_binomial.h"
#include "distributions/counts/poisson.h"
#include "distributions/objects/gamma_dists.h"
#include "distributions/objects/kernel_dist.h"

namespace zul::objects {

// A family on whole numbers: what KernelDist gives, and the mass table.
template <typename PdfKernel, typename CdfKernel, typename InvCdfKernel>
class DiscreteDist : public KernelDist<PdfKernel, CdfKernel, InvCdfKernel> {
public:
    using KernelDist<PdfKernel, CdfKernel, InvCdfKernel>::KernelDist;
    bool IsContinuous() const override { return false; }
    bool HasLowerBound() override { return true; }
    void MassTable(double lo, double hi, std::vector<double>& masses) override;
};

// Parameters n, p. A deviate counts the successes among n uniforms, those that are at most p; n <= 0 gives 0.
class CmDistBinomial : public DiscreteDist<kernels::BinomialPdfKernel, kernels::BinomialCdfKernel,
                                           kernels::BinomialInvCdfKernel> {
public:
    using DiscreteDist::DiscreteDist;
    bool IsValid() const override;
    double Draw() override;
    void Modes(std::vector<double>& modes) override;
    bool HasUpperBound() override { return true; }
    double UpperBound() const override { return Parameter<0>(); }
};

// Parameter p. A deviate takes one uniform, and is 1 if it is at most p.
class CmDistBernoulli final : public CmDistBinomial {
public:
    explicit CmDistBernoulli(double p) : CmDistBinomial(1, p) {}
    double Draw() override { return NextUniform() <= Parameter<1>() ? 1 : 0; }
    void GetParameters(std::vector<double>& parameters) const override;
};

// Parameters N, M, n: population, successes in it, sample size. A deviate takes a uniform for each member of
// the sample until no success, or nothing but successes, is left; none for n < 1.
class CmDistHypergeometric final
    : public DiscreteDist<kernels::HypergeometricPdfKernel, kernels::HypergeometricCdfKernel,
                          kernels::HypergeometricInvCdfKernel> {
public:
    // N beyond the range of an int is for drawing only.
    CmDistHypergeometric(unsigned N, int M, int n);
    bool IsValid() const override;
    double Draw() override;
    void Modes(std::vector<double>& modes) override;
    bool HasUpperBound() override { return true; }
    double LowerBound() const override;
    double UpperBound() const override;

private:
    std::int64_t population_;
};

// Parameters a, b, the ends, both included. A deviate takes one uniform.
class CmDistIntegerUniform final
    : public DiscreteDist<kernels::IntegerUniformPdfKernel, kernels::IntegerUniformCdfKernel,
                          kernels::IntegerUniformInvCdfKernel> {
public:
    using DiscreteDist::DiscreteDist;
    bool IsValid() const override { return Parameter<0>() <= Parameter<1>(); }
    double Draw() override;
    bool HasUpperBound() override { return true; }
    double LowerBound() const override { return Parameter<0>(); }
    double UpperBound() const override { return Parameter<1>(); }
};

// Parameter mean. A deviate is the quantile at one uniform.
class CmDistPoisson final : public DiscreteDist<kernels::PoissonPdfKernel, kernels::PoissonCdfKernel,
                                                kernels::PoissonInvCdfKernel> {
public:
    explicit CmDistPoisson(double mean) : DiscreteDist(mean), inverse_{mean} {}
    bool IsValid() const override { return IsAbove(Parameter<0>(), 0); }
    double InvCdf(double p) override { return inverse_(p); }
    double Draw() override { return inverse_(NextUniform()); }
    void Modes(std::vector<double>& modes) override;

private:
    kernels::PoissonInvCdfKernel inverse_;
};

// What the negative binomial object counts.
enum class NegBinomialCount : bool {
    Trials,   // up to and including the r-th success
    Failures  // before the r-th success
};

// Parameters: what is counted (1 for failures only), prob, r. A deviate takes the uniforms of a gamma deviate
// with shape r and scale (1 - prob) / prob, the mean of a Poisson distribution, then one for the quantile of
// that, the number of failures; a mean of 0 gives 0 failures.
class CmDistNegBinomial final
    : public DiscreteDist<kernels::NegBinomialPdfKernel, kernels::NegBinomialCdfKernel,
                          kernels::NegBinomialInvCdfKernel> {
public:
    CmDistNegBinomial(NegBinomialCount counted, double prob, double r);
    bool IsValid() const override;
    void SetGenerator(UniformSource* generator) override;
    double Pdf(double x) override { return DiscreteDist::Pdf(x + Uncounted()); }
    double Cdf(double x, bool upper) override { return DiscreteDist::Cdf(x + Uncounted(), upper); }
    double InvCdf(double p) override;
    double Draw() override;
    void Modes(std::vector<double>& modes) override;
    double LowerBound() const override { return Parameter<1>() - Uncounted(); }
    void GetParameters(std::vector<double>& parameters) const override;

private:
    // The kernels count trials: the r successes are left out where failures are counted.
    double Uncounted() const { return counted_ == NegBinomialCount::Failures ? Parameter<1>() : 0; }
    NegBinomialCount counted_;
    CmDistGamma mean_;
};

}  // namespace zul::objects
