// The gamma family's kernels. Kernels return NA for "no result".
#pragma once

#include <cstddef>
#include <optional>

#include "distributions/inversion.h"
#include "distributions/lanes/forward.h"
#include "frame/call_frame.h"
#include "numerics/gamma/gamma_shape.h"
#include "numerics/gamma/lanes/pair_constants.h"

namespace zul::kernels {

// What the lanes of densities and tails take from the parameters: the shape, by its logarithmic density or what that
// takes, and z = (x - threshold) / scale.
inline constexpr double kLeastShapeInLanes = 1e-14;  // the domain of log-gamma begins below it
struct GammaDensityInLanes {
    bool ordinary;
    double shape;
    double logNorm;                          // for shapes up to kFastLimit
    numerics::GammaDensityConstants larger;  // for the others
    double scale;
    double threshold;
};

struct GammaTailInLanes {
    numerics::GammaPairConstants shape;
    double scale;
    double threshold;
    bool upper;
};

// The density of the standard gamma distribution at z = (x - threshold) / scale, divided by the scale, for
// x > threshold, else 0. NA for a shape outside (0, kShapeLimit], and for z < 0.
class GammaPdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double>;
    static constexpr bool kKeptBetweenCalls = true;
    GammaPdfKernel(double shape, double scale, double threshold)
        : shape_(shape), scale_(scale), threshold_(threshold) {}
    double operator()(double x);
    GammaDensityInLanes InLanes();

private:
    double LogDensity(double z);
    double LogGamma();
    const numerics::GammaShape& LargeShape();
    double shape_;
    double scale_;
    double threshold_;
    numerics::Lazy logGamma_;
    std::optional<numerics::GammaShape> largeShape_;
};

// Either tail at x: "gamma_df" at (x - threshold) / scale for x >= threshold, else 0 and 1.
class GammaCdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double, bool>;
    static constexpr bool kKeptBetweenCalls = true;
    GammaCdfKernel(double shape, double scale, double threshold, bool upper)
        : shape_(shape), scale_(scale), threshold_(threshold), upper_(upper) {}
    double operator()(double x) const;
    GammaTailInLanes InLanes() const;

private:
    numerics::GammaShape shape_;
    double scale_;
    double threshold_;
    bool upper_;
};

// The quantile at p. Deliberate: 0, not the threshold, for p = 0 and where the quantile of the standard gamma
// distribution is an exact 0.
class GammaInvCdfKernel {
public:
    using Table = Lanes;
    using Parameters = frame::ParameterList<double, double, double>;
    static constexpr bool kKeptBetweenCalls = true;
    GammaInvCdfKernel(double shape, double scale, double threshold)
        : shape_(shape), scale_(scale), threshold_(threshold) {}
    double operator()(double p) const;
    double AtUpperTail(double q) const;
    GammaTailInLanes InLanes() const;
    const numerics::GammaShape& Shape() const { return shape_; }

private:
    double Standard(double p) const;
    numerics::GammaShape shape_;
    double scale_;
    double threshold_;
};

// The tails, at most 1/2, that the quantiles at n probabilities are searched for by, negative for the upper tail; 0 outside
// 0 < p < 1.
void FindTargets(bool byUpperTail, double* targets, const double* p, std::size_t n);

// The lower tail of the standard gamma distribution at t minus p; the shape has to outlive it.
class CmGammaCdf : public CmInversion {
public:
    CmGammaCdf(const numerics::GammaShape& shape, double p) : CmInversion(p), shape_(shape), p_(p) {}
    double Evaluate(double t) override;

private:
    const numerics::GammaShape& shape_;
    double p_;
};

}  // namespace zul::kernels
