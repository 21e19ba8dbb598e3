#include "hypothesis/intervals.h"

#include <limits>

#include "distributions/framed_evaluations.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul::hypothesis {
namespace {

double TwoSidedLevel(double confidence) {
    return (confidence + 1.0) * 0.5;
}

// quantile(p) is that of the standardised estimate.
template <typename Quantile>
int Interval(Quantile quantile, double confidence, IntervalType type, double estimate, double standardError,
             double* lower, double* upper) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    switch (type) {
        case IntervalType::UpperBound:
            *lower = -kInfinity;
            *upper = estimate + quantile(confidence) * standardError;
            return kSuccess;
        case IntervalType::TwoSided: {
            const double halfWidth = quantile(TwoSidedLevel(confidence)) * standardError;
            *lower = estimate - halfWidth;
            *upper = estimate + halfWidth;
            return kSuccess;
        }
        case IntervalType::LowerBound:
            *lower = estimate - quantile(confidence) * standardError;
            *upper = kInfinity;
            return kSuccess;
    }
    *lower = *upper = frame::kQuietNaN;
    return kBadIntervalType;
}

}  // namespace

int NormalInterval(double confidence, IntervalType type, double estimate, double standardError, double* lower,
                   double* upper) {
    return Interval(FramedNormalQuantile, confidence, type, estimate, standardError, lower, upper);
}

int TInterval(double df, double confidence, IntervalType type, double estimate, double standardError,
              double* lower, double* upper) {
    const auto quantile = [df](double p) { return FramedTQuantile(p, df); };
    return Interval(quantile, confidence, type, estimate, standardError, lower, upper);
}

double TwoSidedNormalQuantile(double confidence) {
    return FramedNormalQuantile(TwoSidedLevel(confidence));
}

double NormalTestPValue(double z, AlternativeHypothesis alternative) {
    return FramedNormalTail(z, static_cast<int>(alternative));
}

double TTestPValue(double t, double df, AlternativeHypothesis alternative) {
    return FramedTTail(t, df, static_cast<int>(alternative));
}

}  // namespace zul::hypothesis
