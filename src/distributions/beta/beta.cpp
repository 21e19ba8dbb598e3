#include "distributions/beta/beta.h"

#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "elementary/logarithm.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/recover.h"
#include "numerics/beta/beta_quantiles.h"
#include "numerics/beta/incomplete_beta.h"
#include "numerics/gamma/fast_logarithms.h"
#include "numerics/limits.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::ErrorState;
using frame::kNA;

namespace {

// At an end with the given shape.
double DensityAtEnd(double shape, double other) {
    if (shape < 1) return kNA;
    return shape == 1 ? other : 0;
}

}  // namespace

double BetaPdfKernel::LogBeta() const {
    return logBeta_.Get([this] {
        numerics::RequireGammaArgument(a_);
        numerics::RequireGammaArgument(b_);
        if (a_ + b_ <= numerics::kFastLimit) return numerics::FastLogBeta(a_, b_);
        largeShapes_.emplace(a_, b_);
        return -largeShapes_->MinusLogBeta();
    });
}

BetaDensityPlan BetaPdfKernel::Plan() const {
    if (!numerics::AreOrdinaryShapes(a_, b_)) return {};
    const double logBeta = LogBeta();
    return {true, !largeShapes_, a_, b_, logBeta, largeShapes_ ? largeShapes_->DensityConstant() : 0};
}

double BetaPdfKernel::Density(BetaPdfKernel* at, double x) {
    const double logBeta = at->LogBeta();
    if (at->largeShapes_ && x >= numerics::kTinyArgument)
        return frame::SafeExp(numerics::BetaLogDensity(at->largeShapes_->Direct(), x));
    return frame::SafeExp((at->a_ - 1) * elementary::Log(x) + (at->b_ - 1) * numerics::FastLog1p(-x) -
                          logBeta);
}

double BetaPdfKernel::operator()(double x) {
    if (x < 0 || x > 1) return 0;
    if (x == 0) return DensityAtEnd(a_, b_);
    if (x == 1) return DensityAtEnd(b_, a_);
    return frame::OnAnyFailure(kNA, &BetaPdfKernel::Density, this, x);
}

double BetaCdfKernel::operator()(double x) const {
    if (x <= 0) return upper_ ? 1 : 0;
    if (x >= 1) return upper_ ? 0 : 1;
    double lower = 0;
    double upper = 0;
    numerics::beta_df(x, shapes_, &lower, &upper, nullptr);
    if (ErrorState().Failed()) return kNA;
    return upper_ ? upper : lower;
}

numerics::BetaTailPlan BetaCdfKernel::Plan() const {
    return {numerics::PlanBeta(shapes_), upper_};
}

double BetaInvCdfKernel::operator()(double p) const {
    if (p == 0 || p == 1) return p;
    double x = 0;
    double complement = 0;
    if (p > 0.5)
        numerics::beta_upper_quant(1 - p, shapes_, &x, &complement);
    else
        numerics::beta_lower_quant(p, shapes_, &x, &complement);
    return ErrorState().Failed() ? kNA : x;
}

double BetaInvCdfKernel::AtUpperTail(double q) const {
    double x = 0;
    double complement = 0;
    numerics::beta_upper_quant(q, shapes_, &x, &complement);
    return ErrorState().Failed() ? kNA : x;
}

numerics::BetaQuantilePlan BetaInvCdfKernel::Plan() const {
    return numerics::PlanBetaQuantiles(shapes_);
}

}  // namespace kernels

double BetaPdf(double x, double a, double b) {
    return frame::Framed<kernels::BetaPdfKernel>(x, a, b);
}

double BetaCdf(double x, double a, double b, bool upper) {
    return frame::Framed<kernels::BetaCdfKernel>(x, a, b, upper);
}

double BetaInvCdf(double p, double a, double b) {
    return frame::Framed<kernels::BetaInvCdfKernel>(p, a, b);
}

double BetaInvCdf(double p, double a, double b, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::BetaInvCdfKernel>>(p, a, b, upper);
}

void BetaPdf(double* out, const double* in, std::size_t count, double a, double b) {
    frame::FramedEach<kernels::BetaPdfKernel>(out, in, count, a, b);
}

void BetaCdf(double* out, const double* in, std::size_t count, double a, double b, bool upper) {
    frame::FramedEach<kernels::BetaCdfKernel>(out, in, count, a, b, upper);
}

void BetaInvCdf(double* out, const double* in, std::size_t count, double a, double b) {
    frame::FramedEach<kernels::BetaInvCdfKernel>(out, in, count, a, b);
}

void BetaInvCdf(double* out, const double* in, std::size_t count, double a, double b, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::BetaInvCdfKernel>>(out, in, count, a, b, upper);
}

}  // namespace zul
