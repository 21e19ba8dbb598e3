// The general entry points: they choose among the methods of the one_proportion_*.cpp.
#include "distributions/reference_distributions.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/means/sample.h"
#include "zul/hypothesis.h"

namespace zul::v0 {

using frame::kQuietNaN;

OneProportion::OneProportion()
    : proportion(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      zStatistic(kQuietNaN),
      pValue(kQuietNaN),
      x(0),
      n(0) {}

namespace {

void CountEvents(OneProportion* record, const int* data) {
    record->x = hypothesis::SumCounts(data, record->n);
}

// At the ends only one exact bound has something to say.
IntervalType TypeForEvents(unsigned x, unsigned n, IntervalType type) {
    if (x == 0) return IntervalType::UpperBound;
    return x == n ? IntervalType::LowerBound : type;
}

}  // namespace

int RunOneProportion(OneProportion* record, const int* data, bool normal, double confidence,
                     IntervalType type) {
    CountEvents(record, data);
    return RunOneProportion(record, normal, confidence, type);
}

int RunOneProportion(OneProportion* record, const int* data, bool normal, double confidence,
                     IntervalType type, AlternativeHypothesis alternative, double p0) {
    CountEvents(record, data);
    return RunOneProportion(record, normal, confidence, type, alternative, p0);
}

int RunOneProportion(OneProportion* record, bool normal, double confidence, IntervalType type) {
    record->proportion = GetSampleProportion(record->x, record->n);
    return normal ? RunOneProportionWilson(record, false, confidence, type)
                  : RunOneProportionClopperPearson(record, confidence, type);
}

int RunOneProportion(OneProportion* record, bool normal, double confidence, IntervalType type,
                     AlternativeHypothesis alternative, double p0) {
    const int status = RunOneProportion(record, normal, confidence, type);
    if (status != kSuccess) return status;
    return normal ? RunOneProportionWilson(record, false, alternative, p0)
                  : RunOneProportionClopperPearson(record, alternative, p0);
}

int RunKelOneProportion(OneProportion* record, const int* data, bool normal, double confidence,
                        IntervalType type) {
    CountEvents(record, data);
    return RunKelOneProportion(record, normal, confidence, type);
}

int RunKelOneProportion(OneProportion* record, const int* data, bool normal, double confidence,
                        IntervalType type, AlternativeHypothesis alternative, double p0) {
    CountEvents(record, data);
    return RunKelOneProportion(record, normal, confidence, type, alternative, p0);
}

int RunKelOneProportion(OneProportion* record, bool normal, double confidence, IntervalType type) {
    record->proportion = GetSampleProportion(record->x, record->n);
    if (normal) return RunOneProportionWaldCI(record, false, confidence, type);
    return RunOneProportionClopperPearson(record, confidence, TypeForEvents(record->x, record->n, type));
}

int RunKelOneProportion(OneProportion* record, bool normal, double confidence, IntervalType type,
                        AlternativeHypothesis alternative, double p0) {
    const int status = RunKelOneProportion(record, normal, confidence, type);
    if (status != kSuccess) return status;
    if (normal) return RunOneProportionWilson(record, false, alternative, p0);
    record->pValue = reference::BinomialPValue(record->x, record->n, p0, SideOf(alternative));
    return kSuccess;
}

}  // namespace zul::v0
