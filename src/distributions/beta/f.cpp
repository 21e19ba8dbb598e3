#include "distributions/beta/f.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "distributions/quantile_search.h"
#include "elementary/error_function.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "numerics/beta/beta_quantiles.h"
#include "numerics/beta/noncentral_beta.h"
#include "numerics/counts/deviance.h"
#include "numerics/gamma/fast_logarithms.h"
#include "numerics/gamma/gamma_quantiles.h"
#include "numerics/gamma/gamma_shape.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::ErrorState;
using frame::kNA;
using numerics::BetaShapes;

namespace {

// Deliberate: ten times the smallest normal number, not the smallest normal number itself.
constexpr double kSmallestNoncentrality = 2.2250738585072014e-307;

double CentralIfTiny(double noncentrality) {
    return noncentrality < kSmallestNoncentrality ? 0 : noncentrality;
}

}  // namespace

double FPdfKernel::LogRatio() const {
    return logRatio_.Get([this] {
        const double logRatio = frame::SafeLog(df1_ / df2_);
        numerics::RequireGammaArgument(df1_ / 2);
        numerics::RequireGammaArgument(df2_ / 2);
        return logRatio;
    });
}

double FPdfKernel::LogBeta() const {
    return logBeta_.Get([this] {
        if ((df1_ + df2_) / 2 <= numerics::kFastLimit) return numerics::FastLogBeta(df1_ / 2, df2_ / 2);
        largeShapes_.emplace(df1_ / 2, df2_ / 2);
        return -largeShapes_->MinusLogBeta();
    });
}

FDensityPlan FPdfKernel::Plan() const {
    const double a = df1_ / 2;
    const double b = df2_ / 2;
    if (!numerics::AreOrdinaryShapes(a, b)) return {};
    const double logRatio = LogRatio();
    const double logBeta = LogBeta();
    const double constant = largeShapes_ ? largeShapes_->DensityConstant() : 0;
    return {{true, !largeShapes_, a, b, logBeta, constant}, df1_ / df2_, logRatio};
}

double FPdfKernel::operator()(double x) {
    // Up to here the powers themselves lose few digits; beyond, the deviances have to take their place.
    constexpr double kMediumSum = 1000;
    constexpr double kFar = 600;  // the logarithm of odds that do not overflow, nor their reciprocal

    if (x <= 0) return 0;
    const double a = df1_ / 2;
    const double b = df2_ / 2;
    const double sum = a + b;
    const double logRatio = LogRatio();
    const double logBeta = LogBeta();
    const double logX = elementary::Log(x);
    const double logOdds = logX + logRatio;
    const bool isFar = std::abs(logOdds) > kFar;
    if (sum <= kMediumSum || isFar) {
        const double logSum = isFar ? std::max(logOdds, 0.0) : numerics::FastLog1p(x * (df1_ / df2_));
        return frame::SafeExp(logX * (a - 1) + logRatio * a - logBeta - logSum * sum);
    }
    const double odds = x * (df1_ / df2_);
    const double share = 1 / (1 + odds);
    const double deviance = numerics::Deviance(a, sum * odds * share) + numerics::Deviance(b, sum * share);
    return frame::SafeExp(largeShapes_->DensityConstant() - deviance - logX);
}

bool FTails(double x, const BetaShapes& halfDf, double noncentrality, TailPair* tails) {
    *tails = {};
    if (x == kNA) return false;
    if (x <= 0) {
        *tails = {0, 1};
        return true;
    }
    TailPair found;
    numerics::F_ncdf(x, halfDf, noncentrality, &found.lower, &found.upper);
    if (ErrorState().Failed()) return false;
    *tails = found;
    return true;
}

double FCdfKernel::operator()(double x) const {
    TailPair tails;
    FTails(x, halfDf_, noncentrality_, &tails);
    return tails.Tail(upper_);
}

numerics::BetaTailPlan FCdfKernel::Plan() const {
    if (noncentrality_ == 0) return {numerics::PlanBeta(halfDf_), upper_};
    return {};
}

double FInvCdfKernel::operator()(double p) const {
    if (p >= kNA) return kNA;
    if (p == 0) return 0;
    if (p == 1) return kNA;
    return CentralIfTiny(noncentrality_) == 0 ? Central(p) : Noncentral(p, false);
}

double FInvCdfKernel::AtUpperTail(double q) const {
    if (CentralIfTiny(noncentrality_) != 0) return Noncentral(q, true);
    double x = 0;
    numerics::F_upper_quant(q, halfDf_, &x);
    return ErrorState().Failed() ? kNA : x;
}

numerics::BetaQuantilePlan FInvCdfKernel::Plan() const {
    if (noncentrality_ == 0) return numerics::PlanBetaQuantiles(halfDf_);
    return {};
}

double FInvCdfKernel::Central(double p) const {
    double x = 0;
    if (p > 0.5)
        numerics::F_upper_quant(1 - p, halfDf_, &x);
    else
        numerics::F_lower_quant(p, halfDf_, &x);
    return ErrorState().Failed() ? kNA : x;
}

namespace {

// For a noncentrality beside which the numerator hardly varies: its mean divided by a quantile of the
// denominator. RatioGuess is far from that for few degrees of freedom.
class FixedNumeratorGuess final : public QuantileGuess {
public:
    FixedNumeratorGuess(double df1, double noncentrality, double halfDf2)
        : numerator_((noncentrality + df1) / std::max(df1, kLeast) * halfDf2), halfDf2_(halfDf2) {}
    double At(double z) const override {
        constexpr double kFar = 37;  // beyond it the tail underflows
        const double tail = elementary::Erfc(std::min(std::abs(z), kFar) / std::numbers::sqrt2) / 2;
        double half = 0;
        (z < 0 ? numerics::gamma_upper_quant : numerics::gamma_lower_quant)(tail, halfDf2_, &half);
        return numerator_ / std::max(ErrorState().Failed() ? halfDf2_.Value() : half, kLeast);
    }

private:
    static constexpr double kLeast = 1e-100;
    double numerator_;
    numerics::GammaShape halfDf2_;
};

}  // namespace

double FInvCdfKernel::Noncentral(double p, bool upper) const {
    // Beyond it each evaluation takes some milliseconds.
    constexpr double kSlow = 1e9;
    constexpr double kFewDf = 10;

    const double df1 = 2 * halfDf_.A();
    const double df2 = 2 * halfDf_.B();
    CmFCdf f(halfDf_, noncentrality_, p, upper);
    if (noncentrality_ > kSlow && df2 < kFewDf) {
        return SolveFromGuess(f, Range::Positive, FixedNumeratorGuess(df1, noncentrality_, halfDf_.B()),
                              elementary::Sqrt(noncentrality_));
    }
    return SolveFromGuess(f, Range::Positive, RatioGuess(df1, noncentrality_, df2, 1),
                          elementary::Sqrt(noncentrality_));
}

CmFCdf::CmFCdf(const BetaShapes& halfDf, double noncentrality, double p, bool upper)
    : CmInversion(p, false, upper), halfDf_(halfDf), noncentrality_(CentralIfTiny(noncentrality)) {}

double CmFCdf::Evaluate(double t) {
    TailPair tails;
    FTails(t, halfDf_, noncentrality_, &tails);
    return Difference(tails);
}

}  // namespace kernels

double FPdf(double x, double df1, double df2) {
    return frame::Framed<kernels::FPdfKernel>(x, df1, df2);
}

double FCdf(double x, double df1, double df2, double noncentrality, bool upper) {
    return frame::Framed<kernels::FCdfKernel>(x, df1, df2, noncentrality, upper);
}

double FInvCdf(double p, double df1, double df2, double noncentrality) {
    return frame::Framed<kernels::FInvCdfKernel>(p, df1, df2, noncentrality);
}

double FInvCdf(double p, double df1, double df2, double noncentrality, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::FInvCdfKernel>>(p, df1, df2, noncentrality, upper);
}

void FPdf(double* out, const double* in, std::size_t count, double df1, double df2) {
    frame::FramedEach<kernels::FPdfKernel>(out, in, count, df1, df2);
}

void FCdf(double* out, const double* in, std::size_t count, double df1, double df2, double noncentrality,
          bool upper) {
    frame::FramedEach<kernels::FCdfKernel>(out, in, count, df1, df2, noncentrality, upper);
}

void FInvCdf(double* out, const double* in, std::size_t count, double df1, double df2, double noncentrality) {
    frame::FramedEach<kernels::FInvCdfKernel>(out, in, count, df1, df2, noncentrality);
}

void FInvCdf(double* out, const double* in, std::size_t count, double df1, double df2, double noncentrality,
             bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::FInvCdfKernel>>(out, in, count, df1, df2, noncentrality,
                                                                   upper);
}

}  // namespace zul
