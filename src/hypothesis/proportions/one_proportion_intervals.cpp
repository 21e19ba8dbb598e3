#include <cmath>
#include <limits>

#include "distributions/reference_distributions.h"
#include "elementary/root.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "zul/hypothesis.h"

namespace zul::v0 {
namespace {

// Wilson's bounds with the continuity correction.
struct CorrectedScore {
    double x;
    double n;
    double half;      // z^2 / 2
    double quarter;   // z^2 / 4
    double adjusted;  // n + z^2

    // q is the quantile that the root is multiplied by.
    double Bound(Side side, double q) const {
        const double sign = side == Side::Lower ? -1 : 1;
        const double shifted = x + sign * 0.5;
        const double spread = elementary::Sqrt((n - x - sign * 0.5) / n * shifted + quarter);
        return (half + shifted) / adjusted + sign * q * spread / adjusted;
    }
};

int CorrectedInterval(const CorrectedScore& score, double confidence, IntervalType type, double* lower,
                      double* upper) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const double q = reference::NormalQuantile(hypothesis::UpperLevel(confidence, type));
    return hypothesis::SetBounds(
        type, -kInfinity, kInfinity, [&] { return score.Bound(Side::Lower, q); },
        [&] { return score.Bound(Side::Upper, q); }, lower, upper);
}

}  // namespace

double GetSampleProportion(unsigned x, unsigned n) {
    return static_cast<double>(x) / n;
}

int RunOneProportionWilson(OneProportion* record, bool continuity, double confidence, IntervalType type) {
    const double x = record->x;
    const double n = record->n;
    // Deliberate: the two-sided quantile, also for a single bound, whose own quantile is only the multiplier.
    const double z = hypothesis::TwoSidedNormalQuantile(confidence);
    const CorrectedScore score{x, n, z * z * 0.5, z * z * 0.25, n + z * z};
    if (continuity)
        return CorrectedInterval(score, confidence, type, &record->lowerBound, &record->upperBound);
    const double centre = (score.half + x) / score.adjusted;
    const double spread = elementary::Sqrt((1 - x / n) * x + score.quarter) / score.adjusted;
    return hypothesis::NormalInterval(confidence, type, centre, spread, &record->lowerBound,
                                      &record->upperBound);
}

int RunOneProportionWilson(OneProportion* record, bool continuity, AlternativeHypothesis alternative,
                           double p0) {
    const double n = record->n;
    const double deviation = record->x - n * p0;
    double correction = 0;
    if (continuity) {
        // Deliberate: two-sided, half of the number of trials is the threshold, and the sign is always the
        // same; an unknown alternative is corrected as GreaterThan.
        if (alternative == AlternativeHypothesis::LessThan)
            correction = 0.5;
        else if (alternative != AlternativeHypothesis::NotEqual || std::abs(deviation) >= n * 0.5)
            correction = -0.5;
    }
    record->zStatistic = (deviation + correction) / elementary::Sqrt((1 - p0) * (n * p0));
    record->pValue = hypothesis::NormalTestPValue(record->zStatistic, alternative);
    return kSuccess;
}

int RunOneProportionWaldCI(OneProportion* record, bool continuity, double confidence, IntervalType type) {
    const double n = record->n;
    const double p = GetSampleProportion(record->x, record->n);
    const double standardError = elementary::Sqrt((1 - p) * p / n);
    const int status = hypothesis::NormalInterval(confidence, type, p, standardError, &record->lowerBound,
                                                  &record->upperBound);
    if (continuity) {
        record->lowerBound -= 0.5 / n;
        record->upperBound += 0.5 / n;
    }
    return status;
}

int RunOneProportionAgrestiCoullCI(OneProportion* record, bool addTwo, double confidence, IntervalType type) {
    const double z = hypothesis::TwoSidedNormalQuantile(confidence);
    const double addedEvents = addTwo ? 2 : z * z * 0.5;
    const double addedTrials = addTwo ? 4 : z * z;
    const double trials = record->n + addedTrials;
    const double p = (record->x + addedEvents) / trials;
    const double standardError = elementary::Sqrt((1 - p) * p / trials);
    return hypothesis::NormalInterval(confidence, type, p, standardError, &record->lowerBound,
                                      &record->upperBound);
}

}  // namespace zul::v0
