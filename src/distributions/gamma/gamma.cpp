#include "distributions/gamma/gamma.h"

#include <cfloat>
#include <cmath>

#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "elementary/logarithm.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "numerics/gamma/fast_logarithms.h"
#include "numerics/gamma/gamma_quantiles.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "numerics/limits.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::ErrorState;
using frame::kNA;
using numerics::GammaShape;

namespace {

double StandardLowerTail(double z, const GammaShape& shape) {
    double lower = 0;
    double upper = 0;
    numerics::gamma_df(z, shape, &lower, &upper, nullptr);
    return ErrorState().Failed() ? kNA : lower;
}

}  // namespace

double GammaPdfKernel::LogGamma() {
    return logGamma_.Get([a = shape_] { return numerics::FastLogGamma(a); });
}

const GammaShape& GammaPdfKernel::LargeShape() {
    if (!largeShape_) largeShape_.emplace(shape_);
    return *largeShape_;
}

double GammaPdfKernel::LogDensity(double z) {
    if (shape_ <= numerics::kFastLimit) return (shape_ - 1) * elementary::Log(z) - z - LogGamma();
    return z < numerics::kTinyArgument ? -DBL_MAX : numerics::GammaLogDensity(LargeShape(), z);
}

GammaDensityInLanes GammaPdfKernel::InLanes() {
    GammaDensityInLanes lanes{};
    lanes.ordinary = shape_ >= kLeastShapeInLanes && shape_ <= numerics::kShapeLimit;
    lanes.shape = shape_;
    lanes.scale = scale_;
    lanes.threshold = threshold_;
    if (!lanes.ordinary) return lanes;
    if (shape_ <= numerics::kFastLimit)
        lanes.logNorm = LogGamma();
    else
        lanes.larger = numerics::DensityConstantsOf(LargeShape());
    return lanes;
}

double GammaPdfKernel::operator()(double x) {
    const double distance = x - threshold_;
    if (distance <= 0) return 0;
    const double z = distance / scale_;
    if (!(shape_ > 0 && shape_ <= numerics::kShapeLimit && z >= 0)) return kNA;
    if (z == 0 || z > numerics::kArgumentLimit) return 0;
    // Deliberate: 0 from kLogUnderflow on, as "gamma_df" has its density.
    const double logDensity = LogDensity(z);
    return logDensity < numerics::kLogUnderflow ? 0 : frame::SafeExp(logDensity) / scale_;
}

double GammaCdfKernel::operator()(double x) const {
    const double distance = x - threshold_;
    if (distance < 0) return upper_ ? 1 : 0;
    double lower = 0;
    double upper = 0;
    numerics::gamma_df(distance / scale_, shape_, &lower, &upper, nullptr);
    if (ErrorState().Failed()) return kNA;
    return upper_ ? upper : lower;
}

GammaTailInLanes GammaCdfKernel::InLanes() const {
    return {numerics::PairConstantsOf(shape_), scale_, threshold_, upper_};
}

double GammaInvCdfKernel::operator()(double p) const {
    if (p == 0) return 0;
    const double z = Standard(p);
    if (z == kNA || z == 0) return z;
    return z * scale_ + threshold_;
}

namespace {

// The first answer of the search; the target is the smaller tail.
double FirstAnswer(double p, const GammaShape& shape) {
    double z = 0;
    if (p > 0.5)
        numerics::gamma_upper_quant(1 - p, shape, &z);
    else
        numerics::gamma_lower_quant(p, shape, &z);
    return ErrorState().Failed() ? kNA : z;
}

}  // namespace

void FindTargets(bool byUpperTail, double* targets, const double* p, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        const bool isInside = std::isgreater(p[i], 0.0) && std::isless(p[i], 1.0);
        if (!isInside)
            targets[i] = 0;
        else if (byUpperTail)
            targets[i] = p[i] < 0.5 ? -p[i] : LowerTailOf(p[i]);
        else
            targets[i] = p[i] > 0.5 ? -(1 - p[i]) : p[i];
    }
}

GammaTailInLanes GammaInvCdfKernel::InLanes() const {
    return {numerics::PairConstantsOf(shape_), scale_, threshold_, false};
}

double GammaInvCdfKernel::AtUpperTail(double q) const {
    double z = 0;
    numerics::gamma_upper_quant(q, shape_, &z);
    if (ErrorState().Failed()) return kNA;
    return z == 0 ? 0 : z * scale_ + threshold_;
}

double GammaInvCdfKernel::Standard(double p) const {
    const double z = FirstAnswer(p, shape_);
    if (z == kNA || z == 0 || (z > 0 && IsVerifiedQuantile(StandardLowerTail(z, shape_), p))) return z;
    CmGammaCdf f(shape_, p);
    return SolveByDoubling(f, z);
}

double CmGammaCdf::Evaluate(double t) {
    return (t < 0 ? 0 : StandardLowerTail(t, shape_)) - p_;
}

}  // namespace kernels

double GammaPdf(double x, double shape, double scale, double threshold) {
    return frame::Framed<kernels::GammaPdfKernel>(x, shape, scale, threshold);
}

double GammaCdf(double x, double shape, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::GammaCdfKernel>(x, shape, scale, threshold, upper);
}

double GammaInvCdf(double p, double shape, double scale, double threshold) {
    return frame::Framed<kernels::GammaInvCdfKernel>(p, shape, scale, threshold);
}

double GammaInvCdf(double p, double shape, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::GammaInvCdfKernel>>(p, shape, scale, threshold, upper);
}

void GammaPdf(double* out, const double* in, std::size_t count, double shape, double scale,
              double threshold) {
    frame::FramedEach<kernels::GammaPdfKernel>(out, in, count, shape, scale, threshold);
}

void GammaCdf(double* out, const double* in, std::size_t count, double shape, double scale, double threshold,
              bool upper) {
    frame::FramedEach<kernels::GammaCdfKernel>(out, in, count, shape, scale, threshold, upper);
}

void GammaInvCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                 double threshold) {
    frame::FramedEach<kernels::GammaInvCdfKernel>(out, in, count, shape, scale, threshold);
}

void GammaInvCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                 double threshold, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::GammaInvCdfKernel>>(out, in, count, shape, scale,
                                                                       threshold, upper);
}

}  // namespace zul
