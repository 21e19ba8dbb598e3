#include "distributions/gamma/chi_square.h"

#include <algorithm>
#include <limits>
#include <numbers>

#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "distributions/quantile_search.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/recover.h"
#include "numerics/gamma/fast_logarithms.h"
#include "numerics/gamma/gamma_quantiles.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "numerics/gamma/noncentral_gamma.h"
#include "numerics/limits.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::ErrorState;
using frame::kNA;

double ChiSqPdfKernel::LogNorm() {
    return logNorm_.Get([half = half_] {
        numerics::RequireGammaArgument(half);
        return half > numerics::kFastLimit ? 0 : numerics::FastLogGamma(half) + half * std::numbers::ln2;
    });
}

const numerics::GammaShape& ChiSqPdfKernel::LargeShape() {
    if (!largeShape_) largeShape_.emplace(half_);
    return *largeShape_;
}

double ChiSqPdfKernel::Density(ChiSqPdfKernel* at, double x) {
    const double half = at->half_;
    const double logNorm = at->LogNorm();
    if (half <= numerics::kFastLimit)
        return frame::SafeExp((half - 1) * elementary::Log(x) - logNorm - x / 2);
    if (x < numerics::kTinyArgument) return 0;
    return frame::SafeExp(numerics::GammaLogDensity(at->LargeShape(), x / 2)) / 2;
}

double ChiSqPdfKernel::operator()(double x) {
    if (x <= 0) return 0;
    return frame::OnRuntimeError(kNA, &ChiSqPdfKernel::Density, this, x);
}

GammaDensityInLanes ChiSqPdfKernel::InLanes() {
    GammaDensityInLanes lanes{};
    lanes.ordinary = half_ >= kLeastShapeInLanes && half_ <= numerics::kShapeLimit;
    lanes.shape = half_;
    if (!lanes.ordinary) return lanes;
    lanes.logNorm = LogNorm();
    if (half_ > numerics::kFastLimit) lanes.larger = numerics::DensityConstantsOf(LargeShape());
    return lanes;
}

bool ChiSqTails(double x, const numerics::GammaShape& halfDf, double noncentrality, TailPair* tails) {
    *tails = {};
    if (x == kNA) return false;
    if (x <= 0) {
        *tails = {0, 1};
        return true;
    }
    TailPair found;
    numerics::gamma_ncdf(x / 2, halfDf, noncentrality, &found.lower, &found.upper);
    if (ErrorState().Failed()) return false;
    *tails = found;
    return true;
}

double ChiSqCdfKernel::operator()(double x) const {
    TailPair tails;
    ChiSqTails(x, halfDf_, noncentrality_, &tails);
    return tails.Tail(upper_);
}

GammaTailInLanes ChiSqCdfKernel::InLanes() const {
    GammaTailInLanes lanes{numerics::PairConstantsOf(halfDf_), 2, 0, upper_};
    lanes.shape.ordinary &= numerics::IsCentral(noncentrality_);
    return lanes;
}

GammaTailInLanes ChiSqInvCdfKernel::InLanes() const {
    GammaTailInLanes lanes{numerics::PairConstantsOf(halfDf_), 2, 0, false};
    lanes.shape.ordinary &= noncentrality_ == 0;
    return lanes;
}

double ChiSqInvCdfKernel::operator()(double p) const {
    if (p == 0) return 0;
    if (p == 1) return kNA;
    return noncentrality_ == 0 ? Central(p) : Noncentral(p, false);
}

double ChiSqInvCdfKernel::AtUpperTail(double q) const {
    if (noncentrality_ != 0) return Noncentral(q, true);
    double half = 0;
    numerics::gamma_upper_quant(q, halfDf_, &half);
    return ErrorState().Failed() ? kNA : 2 * half;
}

double ChiSqInvCdfKernel::Central(double p) const {
    double half = 0;
    if (p > 0.5)
        numerics::gamma_upper_quant(1 - p, halfDf_, &half);
    else
        numerics::gamma_lower_quant(p, halfDf_, &half);
    if (ErrorState().Failed()) return kNA;
    const double x = 2 * half;
    if (x == 0) return 0;
    TailPair tails;
    if (ChiSqTails(x, halfDf_, 0, &tails) && IsVerifiedQuantile(tails.lower, p)) return x;
    CmChiSqCdf f(halfDf_, 0, p);
    return SolveByDoubling(f, x);
}

double ChiSqInvCdfKernel::Noncentral(double p, bool upper) const {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const double df = 2 * halfDf_.Value();
    CmChiSqCdf f(halfDf_, noncentrality_, p, upper);
    return SolveFromGuess(f, Range::Positive, RatioGuess(df, noncentrality_, kInfinity, df),
                          elementary::Sqrt(std::max(noncentrality_, 0.0)));
}

double CmChiSqCdf::Evaluate(double t) {
    TailPair tails;
    ChiSqTails(t, halfDf_, noncentrality_, &tails);
    return Difference(tails);
}

}  // namespace kernels

double ChiSqPdf(double x, double df) {
    return frame::Framed<kernels::ChiSqPdfKernel>(x, df);
}

double ChiSqCdf(double x, double df, double noncentrality, bool upper) {
    return frame::Framed<kernels::ChiSqCdfKernel>(x, df, noncentrality, upper);
}

double ChiSqInvCdf(double p, double df, double noncentrality) {
    return frame::Framed<kernels::ChiSqInvCdfKernel>(p, df, noncentrality);
}

double ChiSqInvCdf(double p, double df, double noncentrality, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::ChiSqInvCdfKernel>>(p, df, noncentrality, upper);
}

void ChiSqPdf(double* out, const double* in, std::size_t count, double df) {
    frame::FramedEach<kernels::ChiSqPdfKernel>(out, in, count, df);
}

void ChiSqCdf(double* out, const double* in, std::size_t count, double df, double noncentrality, bool upper) {
    frame::FramedEach<kernels::ChiSqCdfKernel>(out, in, count, df, noncentrality, upper);
}

void ChiSqInvCdf(double* out, const double* in, std::size_t count, double df, double noncentrality) {
    frame::FramedEach<kernels::ChiSqInvCdfKernel>(out, in, count, df, noncentrality);
}

void ChiSqInvCdf(double* out, const double* in, std::size_t count, double df, double noncentrality,
                 bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::ChiSqInvCdfKernel>>(out, in, count, df, noncentrality,
                                                                       upper);
}

}  // namespace zul
