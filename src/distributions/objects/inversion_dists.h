// Objects of the families whose deviates are quantiles, or as good as quantiles: each takes one uniform.
#pragma once

#include <vector>

#include "distributions/bounded/triangular.h"
#include "distributions/bounded/tukey_lambda.h"
#include "distributions/bounded/uniform.h"
#include "distributions/closed_forms/cauchy.h"
#include "distributions/closed_forms/exponential.h"
#include "distributions/closed_forms/laplace.h"
#include "distributions/closed_forms/largest_extreme_value.h"
#include "distributions/closed_forms/log_logistic.h"
#include "distributions/closed_forms/logistic.h"
#include "distributions/closed_forms/smallest_extreme_value.h"
#include "distributions/objects/kernel_dist.h"

namespace zul::objects {

// Parameters location, scale; the mode is the location.
template <typename PdfKernel, typename CdfKernel, typename InvCdfKernel>
class LocationScaleDist final : public InversionDist<PdfKernel, CdfKernel, InvCdfKernel> {
public:
    using InversionDist<PdfKernel, CdfKernel, InvCdfKernel>::InversionDist;
    bool IsValid() const override { return IsAbove(this->template Parameter<1>(), 0); }
    void Modes(std::vector<double>& modes) override { modes.assign({this->template Parameter<0>()}); }
};

using CmDistCauchy =
    LocationScaleDist<kernels::CauchyPdfKernel, kernels::CauchyCdfKernel, kernels::CauchyInvCdfKernel>;
using CmDistLaplace =
    LocationScaleDist<kernels::LaplacePdfKernel, kernels::LaplaceCdfKernel, kernels::LaplaceInvCdfKernel>;
using CmDistLogistic =
    LocationScaleDist<kernels::LogisticPdfKernel, kernels::LogisticCdfKernel, kernels::LogisticInvCdfKernel>;
using CmDistLargestExtremeValue =
    LocationScaleDist<kernels::LargestExtremeValuePdfKernel, kernels::LargestExtremeValueCdfKernel,
                      kernels::LargestExtremeValueInvCdfKernel>;
using CmDistSmallestExtremeValue =
    LocationScaleDist<kernels::SmallestExtremeValuePdfKernel, kernels::SmallestExtremeValueCdfKernel,
                      kernels::SmallestExtremeValueInvCdfKernel>;

// Parameters scale, threshold.
class CmDistExponential final
    : public InversionDist<kernels::ExponentialPdfKernel, kernels::ExponentialCdfKernel,
                           kernels::ExponentialInvCdfKernel> {
public:
    using InversionDist::InversionDist;
    bool IsValid() const override { return IsAbove(Parameter<0>(), 0); }
    void Modes(std::vector<double>& modes) override { modes.assign({Parameter<1>()}); }
    bool HasLowerBound() override { return IsLowerBoundNear(); }
    double LowerBound() const override { return Parameter<1>(); }
};

// Parameters location, scale, threshold.
class CmDistLogLogistic final
    : public InversionDist<kernels::LogLogisticPdfKernel, kernels::LogLogisticCdfKernel,
                           kernels::LogLogisticInvCdfKernel> {
public:
    using InversionDist::InversionDist;
    bool IsValid() const override { return IsAbove(Parameter<1>(), 0); }
    void Modes(std::vector<double>& modes) override;
    bool HasLowerBound() override { return IsLowerBoundNear(); }
    double LowerBound() const override { return Parameter<2>(); }
};

// Tukey's lambda distribution, parameters lambda, location, scale.
class CmDistLambda final
    : public InversionDist<kernels::LambdaPdfKernel, kernels::LambdaCdfKernel, kernels::LambdaInvCdfKernel> {
public:
    using InversionDist::InversionDist;
    bool IsValid() const override { return IsAbove(Parameter<2>(), 0); }
    // None for lambda 1 and 2, where the distribution is uniform, and the two ends for lambda between them.
    void Modes(std::vector<double>& modes) override;
};

// Parameters a, b, the ends.
class CmDistUniform final
    : public KernelDist<kernels::UniformPdfKernel, kernels::UniformCdfKernel, kernels::UniformInvCdfKernel,
                        frame::ParameterList<double, double>> {
public:
    using KernelDist::KernelDist;
    bool IsValid() const override { return IsAbove(Parameter<1>(), Parameter<0>()); }
    // The quantile without its two special cases.
    double Draw() override { return (Parameter<1>() - Parameter<0>()) * NextUniform() + Parameter<0>(); }
    void DrawMany(double* out, std::size_t count);
    bool HasLowerBound() override { return true; }
    bool HasUpperBound() override { return true; }
    double LowerBound() const override { return Parameter<0>(); }
    double UpperBound() const override { return Parameter<1>(); }
};

// Parameters lower, mode, upper.
class CmDistTriangular final : public KernelDist<kernels::TriangularPdfKernel, kernels::TriangularCdfKernel,
                                                 kernels::TriangularInvCdfKernel> {
public:
    using KernelDist::KernelDist;
    bool IsValid() const override;
    void SetGenerator(UniformSource* generator) override;
    // The quantile with its products formed in another order than in the kernel.
    double Draw() override;
    void Modes(std::vector<double>& modes) override { modes.assign({Parameter<1>()}); }
    bool HasLowerBound() override { return true; }
    bool HasUpperBound() override { return true; }
    double LowerBound() const override { return Parameter<0>(); }
    double UpperBound() const override { return Parameter<2>(); }

private:
    double belowMode_ = 0;  // the probability of a value below the mode
};

}  // namespace zul::objects
