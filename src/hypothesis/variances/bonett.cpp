#include "hypothesis/variances/bonett.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

#include "descriptive/compensated_sum.h"
#include "distributions/normal/normal.h"
#include "distributions/reference_distributions.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "elementary/root.h"
#include "frame/call_frame.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "numerics/roots/root_finder.h"
#include "zul/descriptive.h"

namespace zul::hypothesis {

using frame::kNA;
using frame::kQuietNaN;

int EstimateKurtosis(const double* data, unsigned count, double variance, double* kurtosis) {
    *kurtosis = 1;
    if (variance <= 0) return kSuccess;
    const double n = count;
    const double trimming = count >= 6 ? 1 / (2 * elementary::Sqrt(n - 4)) : 0;
    int status = kSuccess;
    const double centre = v1::GetTrimmedMean(data, count, trimming, &status);
    if (status != kSuccess) {
        *kurtosis = kQuietNaN;
        return status;
    }
    const double sd = elementary::Sqrt(variance);
    descriptive::CompensatedSum sum;
    for (unsigned i = 0; i < count; ++i)
        sum.Add(elementary::Pow((data[i] - centre) / sd, 4.0));
    *kurtosis = n * sum.Value() / ((n - 1) * (n - 1));
    return kSuccess;
}

void BonettBounds(const BonettSample& sample, double confidence, IntervalType type, double* lower,
                  double* upper) {
    *lower = *upper = kQuietNaN;
    const double n = sample.n;
    const double excess = sample.Excess();
    if (!(excess > 0 && std::isfinite(excess))) return;
    const double z = reference::NormalQuantile(UpperLevel(confidence, type));
    if (!(z < n)) return;
    const double c = n / (n - z);
    const double factor = elementary::Exp(c * z * elementary::Sqrt(excess / (n - 1)));
    const double scaled = c * sample.variance;
    SetBounds(
        type, 0, std::numeric_limits<double>::infinity(), [=] { return scaled / factor; },
        [=] { return scaled * factor; }, lower, upper);
}

CmBonettPValueFunction::CmBonettPValueFunction(bool lowerBound, double variance, double spread, double n,
                                               double variance0)
    : sign_(lowerBound ? -1 : 1),
      spread_(spread),
      n_(n),
      logN_(elementary::Log(n)),
      logVariance_(elementary::Log(variance)),
      logVariance0_(elementary::Log(variance0)) {
    target = 0;
    absTolX = 1e-30;
    relTolX = 1e-12;
    absTolF = 1e-30;
    relTolF = 1e-12;
}

double CmBonettPValueFunction::Evaluate(double z) {
    if (z >= n_) return n_ * sign_ * n_ * spread_;  // rounding may put a trial point beyond n
    if (z == -DBL_MAX) return -DBL_MAX;
    return (n_ - z) * (logN_ - elementary::Log(n_ - z) + logVariance_ - logVariance0_) +
           n_ * sign_ * z * spread_;
}

namespace {

// Where the root is sought, if it is found there.
struct Bracket {
    double lo;
    double hi;
    bool found = true;
};

struct Problem {
    double n;
    double variance;
    double spread;
    double variance0;
};

Bracket BracketUpper(const Problem& p, CmBonettPValueFunction* f) {
    // A root beyond it is as good as minus infinity; the search would overflow there.
    constexpr double kFarOut = -1e290;
    if (p.variance0 < p.variance) return {-DBL_MAX, 0, f->Evaluate(kFarOut) < 0};
    return {0, p.n - frame::SafeExp(-p.spread * p.n - 1) * (p.variance / p.variance0) * p.n};
}

Bracket BracketLower(const Problem& p, CmBonettPValueFunction* f) {
    const double exponent = p.spread * p.n - 1;
    // The values in the bracket reach exp(exponent) variance / variance0 n (n spread + 1).
    const double logRatio = elementary::Log(p.variance) - elementary::Log(p.variance0);
    if (exponent + logRatio + elementary::Log(p.n) + elementary::Log1p(p.spread * p.n) >
        frame::kExpOverflowLimit - 1)
        frame::ThrowFloatOverflow();
    const double lo = p.n - frame::SafeExp(exponent) * (p.variance / p.variance0) * p.n;
    return {lo, p.n, f->Evaluate(lo) >= 0};
}

// The probability beyond the quantile with which the lower, or upper, bound is variance0; NA when the search
// fails. Constant data have the limits of a vanishing variance.
double OneSided(const Problem& p, bool lowerBound) {
    if (p.variance == 0) return lowerBound ? 1 : kernels::StandardNormalTail(p.n, Side::Upper);
    CmBonettPValueFunction f(lowerBound, p.variance, p.spread, p.n, p.variance0);
    const Bracket bracket = lowerBound ? BracketLower(p, &f) : BracketUpper(p, &f);
    if (!bracket.found) return 1;
    int status = kSuccess;
    const double z = numerics::SolveFalsePosition(bracket.lo, bracket.hi, f, &status);
    return kernels::StandardNormalTail(z, Side::Upper);
}

double PValueInFrame(const Problem* p, Side side) {
    switch (side) {
        case Side::Lower:
            return OneSided(*p, false);
        case Side::Both: {
            const double greater = OneSided(*p, true);
            const double less = OneSided(*p, false);
            return greater == kNA || less == kNA ? kNA : 2 * std::min(greater, less);
        }
        case Side::Upper:
            return OneSided(*p, true);
        case Side::Unknown:
            break;
    }
    return 0;
}

}  // namespace

double BonettPValue(const BonettSample& sample, double variance0, Side side) {
    constexpr double kLeastVariance0 = 1e-30;
    if (!std::isfinite(sample.kurtosis) || !(variance0 >= kLeastVariance0 && variance0 <= DBL_MAX))
        return kQuietNaN;
    const double spread = elementary::Sqrt(sample.Excess() / (sample.n - 1));
    const bool constant = sample.variance == 0;
    if (!std::isfinite(sample.variance) || (!constant && !std::isfinite(spread))) return kQuietNaN;
    const Problem problem{sample.n, sample.variance, spread, variance0};
    const Problem* const pointer = &problem;
    return frame::FramedCall(&PValueInFrame, pointer, side);
}

}  // namespace zul::hypothesis
