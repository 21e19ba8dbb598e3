#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "hypothesis/means/sample.h"
#include "zul/hypothesis.h"

namespace zul::v0 {

using frame::kQuietNaN;

OneSampleZ::OneSampleZ()
    : mean(kQuietNaN),
      standardDeviation(kQuietNaN),
      standardError(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      zStatistic(kQuietNaN),
      pValue(kQuietNaN),
      n(0) {}

namespace {

void Summarise(OneSampleZ* record, const double* data) {
    hypothesis::MeanAndStandardDeviation(data, record->n, &record->mean, &record->standardDeviation);
}

}  // namespace

int RunOneSampleZ(OneSampleZ* record, const double* data, double sigma, double confidence,
                  IntervalType type) {
    Summarise(record, data);
    return RunOneSampleZ(record, sigma, confidence, type);
}

int RunOneSampleZ(OneSampleZ* record, const double* data, double sigma, double confidence, IntervalType type,
                  AlternativeHypothesis alternative, double mu0) {
    Summarise(record, data);
    return RunOneSampleZ(record, sigma, confidence, type, alternative, mu0);
}

int RunOneSampleZ(OneSampleZ* record, double sigma, double confidence, IntervalType type) {
    record->standardError = sigma / elementary::Sqrt(static_cast<double>(record->n));
    return hypothesis::NormalInterval(confidence, type, record->mean, record->standardError,
                                      &record->lowerBound, &record->upperBound);
}

int RunOneSampleZ(OneSampleZ* record, double sigma, double confidence, IntervalType type,
                  AlternativeHypothesis alternative, double mu0) {
    const int status = RunOneSampleZ(record, sigma, confidence, type);
    if (status != kSuccess) return status;
    record->zStatistic = (record->mean - mu0) / record->standardError;
    record->pValue = hypothesis::NormalTestPValue(record->zStatistic, alternative);
    return kSuccess;
}

}  // namespace zul::v0
