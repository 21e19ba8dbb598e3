#include "distributions/beta/student_t.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "distributions/quantile_search.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "numerics/beta/noncentral_t.h"
#include "numerics/gamma/fast_logarithms.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

using frame::ErrorState;
using frame::kNA;
using numerics::TShape;

namespace {

// log(1 + z^2).
double LogSumOfFar(double z) {
    constexpr double kSquareRange = 1e150;
    return z < kSquareRange ? numerics::FastLog1p(z * z) : 2 * elementary::Log(z);
}

}  // namespace

double TPdfKernel::operator()(double x) {
    return noncentrality_ == 0 || x == 0 ? Central(x, 0) : Noncentral(x);
}

double TPdfKernel::LogScale() const {
    constexpr double kFewHalves = 10;  // beyond it the log-gammas would cancel
    constexpr double kHalfLogTwoPi = 0.9189385332046727;
    return logScale_.Get([df = df_] {
        const double half = df / 2;
        numerics::RequireGammaArgument(half);
        if (half > kFewHalves) return numerics::FastLogHalfStep(half) - kHalfLogTwoPi;
        return numerics::FastLogGamma(half + 0.5) - numerics::FastLogGamma(half) -
               elementary::Log(df * std::numbers::pi) / 2;
    });
}

TDensityPlan TPdfKernel::Plan() const {
    if (noncentrality_ != 0 || !numerics::AreOrdinaryShapes(0.5, df_ / 2)) return {};
    return {true, df_, LogScale()};
}

double TPdfKernel::Central(double x, double logFactor) {
    constexpr double kMedium = 1e100;  // neither a square nor its quotient leaves the range

    const double logScale = LogScale();
    const double size = std::abs(x);
    const double logSum = size < kMedium && df_ > 1 / kMedium ? numerics::FastLog1p(size * size / df_)
                                                              : LogSumOfFar(size / elementary::Sqrt(df_));
    const double shift = std::min(std::abs(noncentrality_), kMedium);
    return frame::SafeExp(logScale - (df_ + 1) / 2 * logSum - shift * shift / 2 + logFactor);
}

double TPdfKernel::Noncentral(double x) {
    if (x == kNA) return kNA;
    double logSum = 0;
    if (LogPowerSeries(x, &logSum)) return Central(x, logSum);
    if (!shape_) {
        shape_.emplace(df_);
        shapeAbove_.emplace(df_ + 2);
    }
    TailPair above;
    TailPair here;
    if (!TTails(frame::SafeSqrt((df_ + 2) / df_) * x, *shapeAbove_, noncentrality_, &above) ||
        !TTails(x, *shape_, noncentrality_, &here))
        return kNA;
    // The upper tails have the same difference, and more of its digits where they are the smaller ones.
    const double difference = here.lower > 0.5 ? here.upper - above.upper : above.lower - here.lower;
    return std::max(0.0, difference * df_ / x);  // its rounding may leave less than nothing
}

// x / sqrt(x^2 + y^2) for y > 0, where the squares may overflow.
double SineOfLegs(double x, double y) {
    if (std::abs(x) <= y) {
        const double tangent = x / y;
        return tangent / elementary::Sqrt(1 + tangent * tangent);
    }
    const double cotangent = y / x;
    return std::copysign(1 / elementary::Sqrt(1 + cotangent * cotangent), x);
}

// The logarithm of the density's quotient with the central one: of the sum over j >= 0 of gamma((df + j + 1)
// / 2) / gamma((df + 1) / 2) y^j / j!, y = sqrt(2) noncentrality x / sqrt(df + x^2), but for
// exp(-noncentrality^2 / 2). False: the terms alternate and cancel, or there are too many. Source: N. L.
// Johnson, S. Kotz and N. Balakrishnan, Continuous Univariate Distributions, volume 2, 1995, chapter 31.
bool TPdfKernel::LogPowerSeries(double x, double* logSum) {
    // Up to here "t_ncdf" refuses nothing.
    constexpr double kLargestDf = 1e8;
    constexpr double kLargestSize = 1000;
    // The sum is near the exponential of its reach, and has few terms more; the size keeps it from overflow.
    constexpr double kReach = 1;
    constexpr double kPositiveReach = 100;
    constexpr double kSizeForPositive = 20;
    constexpr double kNegligible = 1e-17;
    constexpr int kTermLimit = 4000;

    const double df = df_;
    const double size = std::abs(noncentrality_);
    if (!(df > 0 && df < kLargestDf && size <= kLargestSize)) return false;
    const double y = std::numbers::sqrt2 * noncentrality_ * SineOfLegs(x, elementary::Sqrt(df));
    const double reach = y * elementary::Sqrt((df + 1) / 2);
    if (reach < -kReach || reach > (size <= kSizeForPositive ? kPositiveReach : kReach)) return false;
    double even = 1;
    double odd = df / 2 / gammaRatio_.Get([df] { return numerics::HalfStepGammaRatio(df / 2); }) * y;
    double sum = even + odd;
    const double step = y * y / 2;
    for (double j = 1; j < kTermLimit && std::abs(even) + std::abs(odd) > kNegligible * sum; j += 2) {
        even *= step * (df + j) / (j * (j + 1));
        odd *= step * (df + j + 1) / ((j + 1) * (j + 2));
        sum += even + odd;
    }
    *logSum = elementary::Log(sum);
    return true;
}

namespace {

// A noncentrality that "t_ncdf" takes, for one that it refuses; NA when there is none.
double AcceptedNoncentrality(double df) {
    constexpr double kLinear = 6.1738;
    constexpr double kLimit = 94906265;
    constexpr double kJustBelow = 0.999999999999;
    // Of y^2 + kLinear y + df / 2 - kLimit, over 4: a product with 4 might overflow.
    const double discriminant = kLinear * kLinear / 4 - (df / 2 - kLimit);
    if (!(discriminant >= 0)) return kNA;
    const double y = elementary::Sqrt(discriminant) - kLinear / 2;
    // Deliberate: sqrt(2 y), not sqrt(2) y. Any noncentrality below the refused one whose answer is saturated
    // proves the answer.
    return y < 0 ? kNA : elementary::Sqrt(2 * y) * kJustBelow;
}

// For a positive noncentrality that "t_ncdf" refuses.
bool SaturatedTails(double x, const TShape& shape, TailPair* tails) {
    const double noncentrality = AcceptedNoncentrality(shape.Df());
    if (noncentrality == kNA) return false;
    numerics::t_ncdf(x, shape, noncentrality, &tails->lower, &tails->upper);
    return !ErrorState().Failed() && tails->lower == 0;
}

}  // namespace

bool TTails(double x, const TShape& shape, double noncentrality, TailPair* tails) {
    *tails = {};
    if (x == kNA) return false;
    TailPair found;
    numerics::t_ncdf(x, shape, noncentrality, &found.lower, &found.upper);
    if (ErrorState().Failed()) {
        if (ErrorState().level != frame::LevelNoncentrality) return false;
        // Not by ==, which the compiler may put before the level: there a signalling NaN would trap.
        if (!std::islessgreater(noncentrality, 0.0)) return false;
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

double TCdfKernel::operator()(double x) const {
    TailPair tails;
    TTails(x, shape_, noncentrality_, &tails);
    return tails.Tail(upper_);
}

numerics::BetaTailPlan TCdfKernel::Plan() const {
    if (noncentrality_ == 0) return {numerics::PlanBeta(shape_.Square()), upper_};
    return {};
}

double TInvCdfKernel::operator()(double p) const {
    if (p == 0 || p == 1) return kNA;
    return noncentrality_ == 0 ? Central(p) : Noncentral(p, false);
}

double TInvCdfKernel::AtUpperTail(double q) const {
    if (noncentrality_ != 0) return Noncentral(q, true);
    double t = 0;
    numerics::t_upper_qt(q, shape_, &t);
    return ErrorState().Failed() ? kNA : t;
}

numerics::TQuantilePlan TInvCdfKernel::Plan() const {
    const double df = shape_.Df();
    // Quiet comparisons. From 1 on Hill's start serves, at 1 and 2 nothing is searched for.
    const bool isSearch = std::isgreater(df, 1.0) && df != 2 && numerics::AreOrdinaryShapes(0.5, df / 2);
    if (noncentrality_ != 0 || !isSearch) return {};
    return {true, df, shape_.GammaRatio()};
}

double TInvCdfKernel::Central(double p) const {
    double t = 0;
    if (p > 0.5)
        numerics::t_upper_qt(1 - p, shape_, &t);
    else
        numerics::t_lower_qt(p, shape_, &t);
    return ErrorState().Failed() ? kNA : t;
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
        const double root = elementary::Sqrt(std::max(square + variance * excess, 0.0));
        const double centre = noncentrality_ * meanScale_;
        // Between 0 and the centre nothing cancels in this form.
        if (excess > 0 && noncentrality_ * z < 0) return excess / (centre - z * root);
        return (centre + z * root) / std::max(square - z * z * variance, kLeast * square);
    }

private:
    // The mean of the divisor sqrt(chi-square / df).
    static double MeanScale(const TShape& shape) {
        constexpr double kLeast = 1e-50;
        if (shape.Df() < kLeast) return elementary::Sqrt(kLeast);
        return shape.Df() > kMost ? 1 : shape.GammaRatio() * elementary::Sqrt(2 / shape.Df());
    }
    static constexpr double kMost = 1e50;
    double noncentrality_;
    double meanScale_;
};

}  // namespace

// A bracket from the moments, which the distribution has for df > 1, would be widened to the same root.
double TInvCdfKernel::Noncentral(double p, bool upper) const {
    CmTCdf f(shape_, noncentrality_, p, upper);
    return SolveFromGuess(f, Range::Real, TGuess(shape_, noncentrality_), 2 * std::abs(noncentrality_));
}

CmTCdf::CmTCdf(const TShape& shape, double noncentrality, double p, bool upper)
    : CmInversion(p, false, upper), shape_(shape), noncentrality_(noncentrality) {}

double CmTCdf::Evaluate(double t) {
    TailPair tails;
    TTails(t, shape_, noncentrality_, &tails);
    return Difference(tails);
}

}  // namespace kernels

double TPdf(double x, double df, double noncentrality) {
    return frame::Framed<kernels::TPdfKernel>(x, df, noncentrality);
}

double TCdf(double x, double df, double noncentrality, bool upper) {
    return frame::Framed<kernels::TCdfKernel>(x, df, noncentrality, upper);
}

double TInvCdf(double p, double df, double noncentrality) {
    return frame::Framed<kernels::TInvCdfKernel>(p, df, noncentrality);
}

double TInvCdf(double p, double df, double noncentrality, bool upper) {
    return frame::Framed<kernels::EitherTail<kernels::TInvCdfKernel>>(p, df, noncentrality, upper);
}

void TPdf(double* out, const double* in, std::size_t count, double df, double noncentrality) {
    frame::FramedEach<kernels::TPdfKernel>(out, in, count, df, noncentrality);
}

void TCdf(double* out, const double* in, std::size_t count, double df, double noncentrality, bool upper) {
    frame::FramedEach<kernels::TCdfKernel>(out, in, count, df, noncentrality, upper);
}

void TInvCdf(double* out, const double* in, std::size_t count, double df, double noncentrality) {
    frame::FramedEach<kernels::TInvCdfKernel>(out, in, count, df, noncentrality);
}

void TInvCdf(double* out, const double* in, std::size_t count, double df, double noncentrality, bool upper) {
    frame::FramedEach<kernels::EitherTail<kernels::TInvCdfKernel>>(out, in, count, df, noncentrality, upper);
}

}  // namespace zul
