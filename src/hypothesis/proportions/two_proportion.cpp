#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "hypothesis/means/sample.h"
#include "hypothesis/proportions/fisher.h"
#include "zul/hypothesis.h"

namespace zul::v0 {

using frame::kQuietNaN;

TwoProportion::TwoProportion()
    : proportion1(kQuietNaN),
      proportion2(kQuietNaN),
      difference(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      zStatistic(kQuietNaN),
      pValue(kQuietNaN),
      fisherPValue(kQuietNaN),
      x1(0),
      x2(0),
      n1(0),
      n2(0) {}

namespace {

// Of the difference of two independent proportions.
double Variance(double p1, double n1, double p2, double n2) {
    return p1 * (1 - p1) / n1 + p2 * (1 - p2) / n2;
}

double PooledVariance(const TwoProportion& record) {
    // Deliberate: the sum of the events is one of 32 bits.
    const double p = (record.x1 + record.x2) / (static_cast<double>(record.n1) + record.n2);
    return (1.0 / record.n2 + 1.0 / record.n1) * (1 - p) * p;
}

double FisherPValue(const TwoProportion& record, Side side) {
    const double n1 = record.n1;
    const double x1 = record.x1;
    return hypothesis::HypergeometricTestPValue(x1, n1 + record.n2, n1, x1 + record.x2, side);
}

}  // namespace

int RunTwoProportionWaldCI(TwoProportion* record, bool continuity, double confidence, IntervalType type) {
    const double n1 = record->n1;
    const double n2 = record->n2;
    const double p1 = GetSampleProportion(record->x1, record->n1);
    const double p2 = GetSampleProportion(record->x2, record->n2);
    const double standardError = elementary::Sqrt(Variance(p1, n1, p2, n2));
    const int status = hypothesis::NormalInterval(confidence, type, p1 - p2, standardError,
                                                  &record->lowerBound, &record->upperBound);
    if (continuity) {
        const double correction = 0.5 * (1 / n2 + 1 / n1);
        record->lowerBound -= correction;
        record->upperBound += correction;
    }
    return status;
}

int RunTwoProportionAgrestiCaffoCI(TwoProportion* record, bool addOne, double confidence, IntervalType type) {
    const double z = hypothesis::TwoSidedNormalQuantile(confidence);
    const double addedEvents = addOne ? 1 : z * z * 0.25;
    const double addedTrials = addOne ? 2 : z * z * 0.5;
    const double n1 = record->n1 + addedTrials;
    const double n2 = record->n2 + addedTrials;
    const double p1 = (record->x1 + addedEvents) / n1;
    const double p2 = (record->x2 + addedEvents) / n2;
    const double standardError = elementary::Sqrt(Variance(p1, n1, p2, n2));
    return hypothesis::NormalInterval(confidence, type, p1 - p2, standardError, &record->lowerBound,
                                      &record->upperBound);
}

int RunKelTwoProportion(TwoProportion* record, const int* data1, const int* data2, bool pooled,
                        double confidence, IntervalType type, AlternativeHypothesis alternative,
                        double difference0) {
    record->x1 = hypothesis::SumCounts(data1, record->n1);
    record->x2 = hypothesis::SumCounts(data2, record->n2);
    return RunKelTwoProportion(record, pooled, confidence, type, alternative, difference0);
}

int RunKelTwoProportion(TwoProportion* record, bool pooled, double confidence, IntervalType type,
                        AlternativeHypothesis alternative, double difference0) {
    record->proportion1 = GetSampleProportion(record->x1, record->n1);
    record->proportion2 = GetSampleProportion(record->x2, record->n2);
    record->difference = record->proportion1 - record->proportion2;
    const int status = RunTwoProportionWaldCI(record, false, confidence, type);
    if (status != kSuccess) return status;
    return RunKelTwoProportion(record, pooled, alternative, difference0);
}

int RunKelTwoProportion(TwoProportion* record, bool pooled, AlternativeHypothesis alternative,
                        double difference0) {
    const double p1 = GetSampleProportion(record->x1, record->n1);
    const double p2 = GetSampleProportion(record->x2, record->n2);
    const bool noDifference = difference0 == 0;
    const double variance =
        noDifference && pooled ? PooledVariance(*record) : Variance(p1, record->n1, p2, record->n2);
    record->zStatistic = (p1 - p2 - difference0) / elementary::Sqrt(variance);
    record->pValue = hypothesis::NormalTestPValue(record->zStatistic, alternative);
    if (noDifference) record->fisherPValue = FisherPValue(*record, SideOf(alternative));
    return kSuccess;
}

}  // namespace zul::v0
