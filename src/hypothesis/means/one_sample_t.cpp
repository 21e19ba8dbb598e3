#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "hypothesis/means/sample.h"
#include "zul/hypothesis.h"

namespace zul::v0 {

using frame::kQuietNaN;

OneSampleT::OneSampleT()
    : mean(kQuietNaN),
      standardDeviation(kQuietNaN),
      standardError(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      tStatistic(kQuietNaN),
      pValue(kQuietNaN),
      n(0) {}

namespace {

void Summarise(OneSampleT* record, const double* data) {
    hypothesis::MeanAndStandardDeviation(data, record->n, &record->mean, &record->standardDeviation);
}

}  // namespace

int RunOneSampleT(OneSampleT* record, const double* data, double confidence, IntervalType type) {
    Summarise(record, data);
    return RunOneSampleT(record, confidence, type);
}

int RunOneSampleT(OneSampleT* record, const double* data, double confidence, IntervalType type,
                  AlternativeHypothesis alternative, double mu0) {
    Summarise(record, data);
    return RunOneSampleT(record, confidence, type, alternative, mu0);
}

int RunOneSampleT(OneSampleT* record, double confidence, IntervalType type) {
    record->standardError = record->standardDeviation / elementary::Sqrt(static_cast<double>(record->n));
    return hypothesis::TInterval(record->n - 1.0, confidence, type, record->mean, record->standardError,
                                 &record->lowerBound, &record->upperBound);
}

int RunOneSampleT(OneSampleT* record, double confidence, IntervalType type, AlternativeHypothesis alternative,
                  double mu0) {
    const int status = RunOneSampleT(record, confidence, type);
    if (status != kSuccess) return status;
    record->tStatistic = (record->mean - mu0) / record->standardError;
    record->pValue = hypothesis::TTestPValue(record->tStatistic, record->n - 1.0, alternative);
    return kSuccess;
}

}  // namespace zul::v0
