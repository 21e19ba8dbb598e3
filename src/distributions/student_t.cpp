#include "distributions/student_t.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "distributions/quantile_search.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "numerics/noncentral_t.h"
#include "numerics/prompt_gamma.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::errorState;
using frame::kNA;
using numerics::TShape;

double TPdf::operator()(double x) {
    return noncentrality_ == 0 || x == 0 ? Central(x) : Noncentral(x);
}

double TPdf::Central(double x) {
    constexpr double kFewHalves = 10;         // beyond it the log-gammas cancel more than they save
    constexpr double kSquareRange = 1e150;    // where the square does not overflow
    constexpr double kDensityIsZero = 1e100;  // and neither does this square

    const double df = shape_.Df();
    const double logScale = logScale_.Get([this, df] {
        const double half = df / 2;
        numerics::RequireGammaArgument(half);
        const double logRatio = half <= kFewHalves
                                    ? numerics::PromptLogGamma(half + 0.5) - numerics::PromptLogGamma(half)
                                    : std::log(shape_.GammaRatio());
        return logRatio - std::log(df * std::numbers::pi) / 2;
    });
    const double z = std::abs(x) / std::sqrt(df);
    const double logSum = z < kSquareRange ? std::log1p(z * z) : 2 * std::log(z);
    const double shift = std::min(std::abs(noncentrality_), kDensityIsZero);
    return frame::SafeExp(logScale - (df + 1) / 2 * logSum - shift * shift / 2);
}

double TPdf::Noncentral(double x) {
    const double df = shape_.Df();
    double sum = 0;
    if (SumNearCentre(x, &sum)) return Central(x) * sum;
    TailPair above;
    TailPair here;
    if (!TTails(frame::SafeSqrt((df + 2) / df) * x, shapeAbove_, noncentrality_, &above) ||
        !TTails(x, shape_, noncentrality_, &here))
        return kNA;
    // The upper tails have the same difference, and more of its digits where they are the smaller ones.
    const double difference = here.lower > 0.5 ? here.upper - above.upper : above.lower - here.lower;
    return difference * df / x;
}

// The density as a multiple of the central one: the sum over j >= 0 of gamma((df + j + 1) / 2) /
// gamma((df + 1) / 2) y^j / j!, y = sqrt(2) noncentrality x / sqrt(df + x^2). False: it has more than a few
// terms. Where it has not, the difference of the tails may have lost all digits.
bool TPdf::SumNearCentre(double x, double* sum) const {
    constexpr double kLargestDf = 1e8;  // up to here, with the sizes below, "t_ncdf" refuses nothing
    constexpr double kLargestNoncentrality = 1000;
    constexpr double kFewTerms = 1;
    constexpr double kNegligible = 1e-17;
    constexpr int kTermLimit = 200;

    const double df = shape_.Df();
    if (!(df > 0 && df < kLargestDf && std::abs(noncentrality_) < kLargestNoncentrality)) return false;
    const double y = std::numbers::sqrt2 * noncentrality_ * (x / std::hypot(x, std::sqrt(df)));
    if (std::abs(y) * std::sqrt(df + 1) > kFewTerms * std::numbers::sqrt2) return false;
    double even = 1;
    double odd = df / 2 / shape_.GammaRatio() * y;
    *sum = even + odd;
    for (int j = 0; j < kTermLimit && std::abs(even) + std::abs(odd) > kNegligible; j += 2) {
        even *= y * y * (df + j + 1) / 2 / ((j + 1) * (j + 2));
        odd *= y * y * (df + j + 2) / 2 / ((j + 2) * (j + 3));
        *sum += even + odd;
    }
    return true;
}

namespace {

// The largest noncentrality's stand-in where "t_ncdf" refuses that noncentrality; NA when there is none.
double AcceptedNoncentrality(double df) {
    constexpr double kLinear = 6.1738;
    constexpr double kLimit = 94906265;
    constexpr double kJustBelow = 0.999999999999;
    const double discriminant = kLinear * kLinear - 4 * (df / 2 - kLimit);
    if (!(discriminant >= 0)) return kNA;
    const double y = (std::sqrt(discriminant) - kLinear) / 2;
    // Deliberate: sqrt(2 y), not sqrt(2) y. Any noncentrality below the refused one whose answer is saturated
    // proves the answer.
    return y < 0 ? kNA : std::sqrt(2 * y) * kJustBelow;
}

// For a positive noncentrality that "t_ncdf" refuses.
bool SaturatedTails(double x, const TShape& shape, TailPair* tails) {
    const double noncentrality = AcceptedNoncentrality(shape.Df());
    if (noncentrality == kNA) return false;
    numerics::t_ncdf(x, shape, noncentrality, &tails->lower, &tails->upper);
    return !errorState.Failed() && tails->lower == 0;
}

}  // namespace

bool TTails(double x, const TShape& shape, double noncentrality, TailPair* tails) {
    *tails = {};
    if (x == kNA) return false;
    TailPair found;
    numerics::t_ncdf(x, shape, noncentrality, &found.lower, &found.upper);
    if (errorState.Failed()) {
        if (errorState.level != frame::LevelNoncentrality || noncentrality == 0) return false;
        if (noncentrality > 0) {
            if (!SaturatedTails(x, shape, &found)) return false;
        } else {
            if (!SaturatedTails(-x, shape, &found)) return false;
            std::swap(found.lower, found.upper);
        }
    }
    *tails = found;
    return true;
}

double TCdf::operator()(double x) const {
    TailPair tails;
    TTails(x, shape_, noncentrality_, &tails);
    return tails.Tail(upper_);
}

double TInvCdf::operator()(double p) const {
    if (p == 0 || p == 1) return kNA;
    return noncentrality_ == 0 ? Central(p) : Noncentral(p);
}

double TInvCdf::Central(double p) const {
    double t = 0;
    if (p > 0.5)
        numerics::t_upper_qt(1 - p, shape_, &t);
    else
        numerics::t_lower_qt(p, shape_, &t);
    return errorState.Failed() ? kNA : t;
}

namespace {

// Source: W. A. Jennett and B. L. Welch, The control of proportion defective as judged by a single quality
// characteristic varying on a continuous scale, 1939.
class TGuess final : public QuantileGuess {
public:
    TGuess(const TShape& shape, double noncentrality)
        : noncentrality_(std::clamp(noncentrality, -kMost, kMost)), meanScale_(MeanScale(shape)) {}
    double At(double z) const override {
        constexpr double kLeast = 0.01;  // of what is divided by, to its value at the centre
        const double square = meanScale_ * meanScale_;
        const double variance = std::max(1 - square, 0.0);
        const double excess = noncentrality_ * noncentrality_ - z * z;
        const double root = std::sqrt(std::max(square + variance * excess, 0.0));
        const double centre = noncentrality_ * meanScale_;
        // Between 0 and the centre nothing cancels in this form.
        if (excess > 0 && noncentrality_ * z < 0) return excess / (centre - z * root);
        return (centre + z * root) / std::max(square - z * z * variance, kLeast * square);
    }

private:
    // The mean of the divisor sqrt(chi-square / df).
    static double MeanScale(const TShape& shape) {
        constexpr double kLeast = 1e-50;
        if (shape.Df() < kLeast) return std::sqrt(kLeast);
        return shape.Df() > kMost ? 1 : shape.GammaRatio() * std::sqrt(2 / shape.Df());
    }
    static constexpr double kMost = 1e50;
    double noncentrality_;
    double meanScale_;
};

}  // namespace

// A bracket from the moments, which the distribution has for df > 1, would be widened to the same root.
double TInvCdf::Noncentral(double p) const {
    CmTCdf f(shape_, noncentrality_, p);
    return SolveFromGuess(f, Range::Real, TGuess(shape_, noncentrality_), 2 * std::abs(noncentrality_));
}

CmTCdf::CmTCdf(const TShape& shape, double noncentrality, double p)
    : CmInversion(p), shape_(shape), noncentrality_(noncentrality), p_(p) {}

double CmTCdf::Evaluate(double t) {
    TailPair tails;
    TTails(t, shape_, noncentrality_, &tails);
    return tails.lower - p_;
}

double TPdfKernel(double x, double df, double noncentrality) {
    return TPdf(df, noncentrality)(x);
}

double TCdfKernel(double x, double df, double noncentrality, bool upper) {
    return TCdf(df, noncentrality, upper)(x);
}

double TInvCdfKernel(double p, double df, double noncentrality) {
    return TInvCdf(df, noncentrality)(p);
}

}  // namespace kernels

double TPdf(double x, double df, double noncentrality) {
    return frame::Framed<kernels::TPdf>(x, df, noncentrality);
}

double TCdf(double x, double df, double noncentrality, bool upper) {
    return frame::Framed<kernels::TCdf>(x, df, noncentrality, upper);
}

double TInvCdf(double p, double df, double noncentrality) {
    return frame::Framed<kernels::TInvCdf>(p, df, noncentrality);
}

void TPdf(double* out, const double* in, std::size_t count, double df, double noncentrality) {
    frame::FramedEach<kernels::TPdf>(out, in, count, df, noncentrality);
}

void TCdf(double* out, const double* in, std::size_t count, double df, double noncentrality, bool upper) {
    frame::FramedEach<kernels::TCdf>(out, in, count, df, noncentrality, upper);
}

void TInvCdf(double* out, const double* in, std::size_t count, double df, double noncentrality) {
    frame::FramedEach<kernels::TInvCdf>(out, in, count, df, noncentrality);
}

}  // namespace zul
