#include "distributions/quantile_search.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

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
    return std::sqrt(kAtCentre * kAtCentre + z * z);
}

// The logit of the tail p + difference less that of p, without cancellation. 0 < tail < 1.
double LogitDifference(double difference, double p) {
    const double lower =
        std::abs(difference) < p / 2 ? std::log1p(difference / p) : std::log(p + difference) - std::log(p);
    return lower - std::log1p(-difference / (1 - p));
}

// The search along u = log(t).
class Search {
public:
    Search(CmInversion& f, const RatioGuess& guess) : f_(f), p_(f.target), guess_(guess) {}

    // NA: it came to no end.
    double Run() {
        constexpr int kLimit = 100;
        constexpr double kSmallest = -690;  // where t does not underflow yet
        constexpr double kLargest = 69;     // just below kFarEnd

        const double z = RoughDeviate(p_);
        double u = std::clamp(std::log(guess_.At(z)), kSmallest, kLargest);
        for (int count = 0; count < kLimit; ++count) {
            const double t = std::exp(u);
            const double value = f_.Evaluate(t);
            if (IsMissing(value)) return kNA;
            if (std::abs(value) <= kInversionRelTol * p_) return t;
            (value < 0 ? below_ : above_) = u;
            double next = Along(u, value, z);
            longest_ *= 2;
            if (!(next > below_ && next < above_)) next = Between(u, value < 0);
            if (std::abs(next - u) < kInversionRelTol) return std::exp(next);
            if (next < kSmallest || next > kLargest) return kNA;
            u = next;
        }
        return kNA;
    }

private:
    // The next point by the secant, for the first point by the guess; u where there is none.
    double Along(double u, double value, double z) {
        const double tail = p_ + value;
        const bool had = known_;
        known_ = tail > 0 && tail < 1;
        if (!known_) return u;
        const double logit = LogitDifference(value, p_);
        const double slope = had ? (logit - logit_) / (u - u_) : 0;
        const bool isFirst = u_ == DBL_MAX;
        logit_ = logit;
        u_ = u;
        if (isFirst) return std::log(guess_.At(z - logit / LogitSlope(z)));
        return slope > 0 ? u - std::clamp(logit / slope, -longest_, longest_) : u;
    }

    double Between(double u, bool isBelow) const {
        if (below_ > -DBL_MAX && above_ < DBL_MAX) return below_ + (above_ - below_) / 2;
        return isBelow ? u + longest_ : u - longest_;
    }

    CmInversion& f_;
    double p_;
    const RatioGuess& guess_;
    // The bracket, as far as it is known.
    double below_ = -DBL_MAX;
    double above_ = DBL_MAX;
    double longest_ = 0.1;  // of the steps
    // The last point, whose logit is known or not.
    double u_ = DBL_MAX;
    double logit_ = 0;
    bool known_ = false;
};

}  // namespace

RatioGuess::RatioGuess(double df1, double noncentrality, double df2, double scale) {
    constexpr double kLeast = 1e-50;
    constexpr double kMost = 1e50;
    if (!(df1 > kLeast && df1 < kMost && noncentrality >= 0 && noncentrality < kMost && df2 > kLeast)) return;
    const double sum = df1 + noncentrality;
    const double df = sum * (sum / (sum + noncentrality));
    mean_ = scale * (sum / df1);
    variance1_ = 2 / (9 * df);
    variance2_ = 2 / (9 * df2);
}

double RatioGuess::At(double z) const {
    constexpr double kLeast = 0.01;  // of the root, and of what it is divided by
    constexpr double kMost = 1e10;
    const double a1 = 1 - variance1_;
    const double a2 = 1 - variance2_;
    const double square = a1 * a1 * variance2_ + a2 * a2 * variance1_ - z * z * variance1_ * variance2_;
    const double divisor = std::max(a2 * a2 - z * z * variance2_, kLeast);
    const double root = (a1 * a2 + z * std::sqrt(std::max(square, 0.0))) / divisor;
    const double bounded = std::clamp(root, kLeast, kMost);
    return mean_ * bounded * bounded * bounded;
}

double SolvePositive(CmInversion& f, const RatioGuess& guess) {
    if (f.target > DBL_MIN && f.target < 1 && guess.Valid()) {
        const double t = Search(f, guess).Run();
        if (t != kNA) return t;
    }
    return SolveInversion(f, 0, kFarEnd);
}

}  // namespace zul::kernels
