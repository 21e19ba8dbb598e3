#include "distributions/gamma.h"

#include <cfloat>
#include <cmath>

#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "numerics/gamma_quantiles.h"
#include "numerics/incomplete_gamma.h"
#include "numerics/limits.h"
#include "numerics/prompt_gamma.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::errorState;
using frame::kNA;
using numerics::GammaShape;

namespace {

bool InDomain(const GammaShape& shape) {
    return shape.Value() > 0 && shape.Value() <= numerics::kShapeLimit;
}

double StandardLowerTail(double z, const GammaShape& shape) {
    double lower = 0;
    double upper = 0;
    numerics::gamma_df(z, shape, &lower, &upper, nullptr);
    return errorState.Failed() ? kNA : lower;
}

}  // namespace

double GammaPdf::LogDensity(double z) {
    const double a = shape_.Value();
    if (a > numerics::kPromptLimit) {
        return z < numerics::kTinyArgument ? -DBL_MAX : numerics::GammaLogDensity(shape_, z);
    }
    return (a - 1) * std::log(z) - z - logGamma_.Get([a] { return numerics::PromptLogGamma(a); });
}

double GammaPdf::operator()(double x) {
    const double distance = x - threshold_;
    if (distance <= 0) return 0;
    const double z = distance / scale_;
    if (!InDomain(shape_) || z < 0) return kNA;
    if (z == 0 || z > numerics::kArgumentLimit) return 0;
    const double logDensity = LogDensity(z);
    // Deliberate: 0 from kLogUnderflow on, as "gamma_df" has its density.
    return logDensity < numerics::kLogUnderflow ? 0 : frame::SafeExp(logDensity) / scale_;
}

double GammaCdf::operator()(double x) const {
    const double distance = x - threshold_;
    if (distance < 0) return upper_ ? 1 : 0;
    double lower = 0;
    double upper = 0;
    numerics::gamma_df(distance / scale_, shape_, &lower, &upper, nullptr);
    if (errorState.Failed()) return kNA;
    return upper_ ? upper : lower;
}

double GammaInvCdf::operator()(double p) const {
    if (p == 0) return 0;
    const double z = Standard(p);
    if (z == kNA || z == 0) return z;
    return z * scale_ + threshold_;
}

double GammaInvCdf::Standard(double p) const {
    double z = 0;
    if (p > 0.5)
        numerics::gamma_upper_quant(1 - p, shape_, &z);
    else
        numerics::gamma_lower_quant(p, shape_, &z);
    if (errorState.Failed()) return kNA;
    if (z == 0 || (z > 0 && IsVerifiedQuantile(StandardLowerTail(z, shape_), p))) return z;
    CmGammaCdf f(shape_, p);
    return SolveByDoubling(f, z);
}

double CmGammaCdf::Evaluate(double t) {
    return (t < 0 ? 0 : StandardLowerTail(t, shape_)) - p_;
}

double GammaPdfKernel(double x, double shape, double scale, double threshold) {
    return GammaPdf(shape, scale, threshold)(x);
}

double GammaCdfKernel(double x, double shape, double scale, double threshold, bool upper) {
    return GammaCdf(shape, scale, threshold, upper)(x);
}

double GammaInvCdfKernel(double p, double shape, double scale, double threshold) {
    return GammaInvCdf(shape, scale, threshold)(p);
}

}  // namespace kernels

double GammaPdf(double x, double shape, double scale, double threshold) {
    return frame::Framed<kernels::GammaPdf>(x, shape, scale, threshold);
}

double GammaCdf(double x, double shape, double scale, double threshold, bool upper) {
    return frame::Framed<kernels::GammaCdf>(x, shape, scale, threshold, upper);
}

double GammaInvCdf(double p, double shape, double scale, double threshold) {
    return frame::Framed<kernels::GammaInvCdf>(p, shape, scale, threshold);
}

void GammaPdf(double* out, const double* in, std::size_t count, double shape, double scale,
              double threshold) {
    frame::FramedEach<kernels::GammaPdf>(out, in, count, shape, scale, threshold);
}

void GammaCdf(double* out, const double* in, std::size_t count, double shape, double scale, double threshold,
              bool upper) {
    frame::FramedEach<kernels::GammaCdf>(out, in, count, shape, scale, threshold, upper);
}

void GammaInvCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                 double threshold) {
    frame::FramedEach<kernels::GammaInvCdf>(out, in, count, shape, scale, threshold);
}

}  // namespace zul
