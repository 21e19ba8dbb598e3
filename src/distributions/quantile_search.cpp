#include "distributions/quantile_search.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <numbers>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "numerics/rough_deviate.h"

namespace zul::kernels {

using frame::IsMissing;
using frame::kNA;

namespace {

// The standard normal deviate at p, roughly.
double RoughDeviate(double p) {
    return p < 0.5 ? -numerics::RoughNormalDeviate(p) : numerics::RoughNormalDeviate(1 - p);
}

// How fast the logit of the tail grows with the normal deviate z, roughly.
double LogitSlope(double z) {
    constexpr double kAtCentre = 1.6;
    return elementary::Sqrt(kAtCentre * kAtCentre + z * z);
}

// The logit of the tail p + difference less that of p, without cancellation. Both tails lie in (0, 1).
double LogitDifference(double difference, double p) {
    const double lower = std::abs(difference) < p / 2 ? elementary::Log1p(difference / p)
                                                      : elementary::Log(p + difference) - elementary::Log(p);
    return lower - elementary::Log1p(-difference / (1 - p));
}

// For |u| up to 709.
double Sinh(double u) {
    const double growth = elementary::Expm1(std::abs(u));
    return std::copysign((growth + growth / (growth + 1)) / 2, u);
}

double Asinh(double t) {
    constexpr double kLarge = 0x1p28;  // from here on 1 + t^2 rounds to t^2, which may overflow
    const double size = std::abs(t);
    if (size > kLarge) return std::copysign(elementary::Log(size) + std::numbers::ln2, t);
    const double square = size * size;
    return std::copysign(elementary::Log1p(size + square / (1 + elementary::Sqrt(1 + square))), t);
}

// The search along u, which is log(t) or asinh(t).
class Search {
public:
    Search(CmInversion& f, Range range, const QuantileGuess& guess)
        : f_(f), p_(f.target), positive_(range == Range::Positive), guess_(guess) {}

    double Run(int limit) {
        constexpr double kLeastLog = -690;  // where t does not underflow yet
        const double most = U(kFarEnd);
        const double least = positive_ ? kLeastLog : -most;

        const double z = f_.IsUpper() ? -RoughDeviate(p_) : RoughDeviate(p_);
        double u = std::clamp(U(guess_.At(z)), least, most);
        for (int count = 0; count < limit; ++count) {
            const double value = f_.Evaluate(T(u));
            if (IsMissing(value)) return FromRest();
            if (std::abs(value) <= Tolerance(count)) return T(u);
            (value < 0 ? below_ : above_) = u;
            if (value < 0 && u == most && positive_) return kNA;  // the root lies beyond
            if (value < 0 ? u == most : u == least) return FromRest();
            const double next = std::clamp(Next(u, value, z), least, most);
            if (AreClose(u, next)) return T(next);
            u = next;
        }
        return kNA;
    }

private:
    double T(double u) const { return positive_ ? elementary::Exp(u) : Sinh(u); }
    double U(double t) const { return positive_ ? elementary::Log(t) : Asinh(t); }

    bool AreClose(double u, double next) const {
        return std::abs(T(next) - T(u)) < kInversionRelTol * std::abs(T(u));
    }

    // Of the value of f. The absolute one is for tiny p where the tail leaps, as it does to its underflow.
    double Tolerance(int count) const {
        constexpr int kUsualCount = 20;
        const double relative = kInversionRelTol * p_;
        return count < kUsualCount ? relative : std::max(relative, f_.absTolF);
    }

    // By the root finder alone.
    double FromRest() const {
        const double lo = below_ > -DBL_MAX ? T(below_) : positive_ ? 0 : -kFarEnd;
        return SolveInversion(f_, lo, above_ < DBL_MAX ? T(above_) : kFarEnd);
    }

    double Next(double u, double value, double z) {
        const bool isFirst = u_ == DBL_MAX;
        double next = 0;
        const bool isGuided = Guided(u, value, z, &next);
        longest_ *= 2;
        // At the root the next point may be outside by a rounding.
        if (isGuided && ((next > below_ && next < above_) || (!isFirst && AreClose(u, next)))) return next;
        return Between(u, value < 0);
    }

    // The next point by the secant, from the first point by the guess. False: there is none.
    bool Guided(double u, double value, double z, double* next) {
        constexpr double kSecantReach = 16;
        const double tail = f_.IsUpper() ? p_ - value : p_ + value;
        const bool isFirst = u_ == DBL_MAX;
        const bool hadLogit = hasLogit_;
        hasLogit_ = tail > 0 && tail < 1;
        const double logit = hasLogit_ ? LowerLogitDifference(value) : 0;
        const double slope = hasLogit_ && hadLogit ? (logit - logit_) / (u - u_) : 0;
        logit_ = logit;
        u_ = u;
        if (isFirst && hasLogit_) {
            *next = U(guess_.At(z - logit / LogitSlope(z)));
            return true;
        }
        if (!(slope > 0)) return false;
        const double reach = kSecantReach * longest_;
        *next = u - std::clamp(logit / slope, -reach, reach);
        return true;
    }

    // The logit of the lower tail less that at the root.
    double LowerLogitDifference(double value) const {
        return f_.IsUpper() ? -LogitDifference(-value, p_) : LogitDifference(value, p_);
    }

    double Between(double u, bool isBelow) const {
        if (below_ > -DBL_MAX && above_ < DBL_MAX) return below_ + (above_ - below_) / 2;
        return isBelow ? u + longest_ : u - longest_;
    }

    CmInversion& f_;
    double p_;
    bool positive_;
    const QuantileGuess& guess_;
    // The bracket, as far as it is known.
    double below_ = -DBL_MAX;
    double above_ = DBL_MAX;
    double longest_ = 0.25;  // step that leaves the bracket
    // The last point, and its logit unless that is infinite.
    double u_ = DBL_MAX;
    double logit_ = 0;
    bool hasLogit_ = false;
};

}  // namespace

RatioGuess::RatioGuess(double df1, double noncentrality, double df2, double scale) {
    // Within these nothing below overflows.
    constexpr double kLeast = 1e-50;
    constexpr double kMost = 1e50;
    const double first = std::clamp(df1, kLeast, kMost);
    const double sum = first + std::clamp(noncentrality, 0.0, kMost);
    const double df = sum * (sum / (2 * sum - first));
    mean_ = std::clamp(scale, kLeast, kMost) * (sum / first);
    variance1_ = 2 / (9 * df);
    variance2_ = 2 / std::max(df2, kLeast) / 9;
}

double RatioGuess::At(double z) const {
    // The limits of the root, and the least of what it is divided by.
    constexpr double kLeast = 0.01;
    constexpr double kMost = 1e10;
    const double a1 = 1 - variance1_;
    const double a2 = 1 - variance2_;
    const double rest1 = a1 * a1 - z * z * variance1_;
    const double rest2 = a2 * a2 - z * z * variance2_;
    const double shift = z * elementary::Sqrt(std::max(a1 * a1 * variance2_ + rest2 * variance1_, 0.0));
    // Of the two forms of the root the one that does not cancel.
    const double root = z < 0 ? (a1 > 0 ? rest1 / std::max(a1 * a2 - shift, kLeast) : 0)
                              : (a1 * a2 + shift) / std::max(rest2, kLeast);
    const double bounded = std::clamp(root, kLeast, kMost);
    return mean_ * bounded * bounded * bounded;
}

double SolveFromGuess(CmInversion& f, Range range, const QuantileGuess& guess, double terms) {
    constexpr double kTermBudget = 8e5;
    constexpr double kLeast = 12;
    constexpr double kMost = 100;
    if (!(f.target > DBL_MIN && f.target < 1)) {
        return SolveInversion(f, range == Range::Positive ? 0 : -kFarEnd, kFarEnd);
    }
    const double limit = std::clamp(kTermBudget / std::max(terms, 1.0), kLeast, kMost);
    return Search(f, range, guess).Run(static_cast<int>(limit));
}

}  // namespace zul::kernels
