#include "hypothesis/intervals.h"

#include <limits>

#include "distributions/reference_distributions.h"

namespace zul::hypothesis {
namespace {

// q is the quantile of the standardised estimate at the upper level.
int Interval(double q, IntervalType type, double estimate, double standardError, double* lower,
             double* upper) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const double margin = q * standardError;
    return SetBounds(
        type, -kInfinity, kInfinity, [=] { return estimate - margin; }, [=] { return estimate + margin; },
        lower, upper);
}

}  // namespace

double UpperLevel(double confidence, IntervalType type) {
    switch (type) {
        case IntervalType::TwoSided:
            return (confidence + 1) * 0.5;
        case IntervalType::UpperBound:
        case IntervalType::LowerBound:
            return confidence;
    }
    return frame::kQuietNaN;
}

double LowerLevel(double confidence, IntervalType type) {
    return type == IntervalType::TwoSided ? (1 - confidence) * 0.5 : 1 - confidence;
}

int NormalInterval(double confidence, IntervalType type, double estimate, double standardError, double* lower,
                   double* upper) {
    const double q = reference::NormalQuantile(UpperLevel(confidence, type));
    return Interval(q, type, estimate, standardError, lower, upper);
}

int TInterval(double df, double confidence, IntervalType type, double estimate, double standardError,
              double* lower, double* upper) {
    const double q = reference::TQuantile(UpperLevel(confidence, type), df);
    return Interval(q, type, estimate, standardError, lower, upper);
}

double TwoSidedNormalQuantile(double confidence) {
    return reference::NormalQuantile(UpperLevel(confidence, IntervalType::TwoSided));
}

double NormalTestPValue(double z, AlternativeHypothesis alternative) {
    return reference::NormalPValue(z, SideOf(alternative));
}

double TTestPValue(double t, double df, AlternativeHypothesis alternative) {
    return reference::TPValue(t, df, SideOf(alternative));
}

}  // namespace zul::hypothesis
