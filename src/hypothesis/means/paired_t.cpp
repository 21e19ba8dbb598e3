#include <memory>
#include <new>

#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "hypothesis/means/sample.h"
#include "zul/hypothesis.h"

namespace zul::v0 {

using frame::kQuietNaN;

PairedT::PairedT()
    : mean1(kQuietNaN),
      mean2(kQuietNaN),
      standardDeviation1(kQuietNaN),
      standardDeviation2(kQuietNaN),
      standardError1(kQuietNaN),
      standardError2(kQuietNaN),
      meanDifference(kQuietNaN),
      standardDeviationDifference(kQuietNaN),
      standardErrorDifference(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      tStatistic(kQuietNaN),
      pValue(kQuietNaN),
      n(0) {}

namespace {

using hypothesis::MeanAndStandardDeviation;

int SummariseDifferences(PairedT* record, const double* first, const double* second) {
    const std::unique_ptr<double[]> differences(new (std::nothrow) double[record->n]);
    if (differences == nullptr) return kOutOfMemory;
    for (unsigned i = 0; i < record->n; ++i)
        differences[i] = first[i] - second[i];
    MeanAndStandardDeviation(differences.get(), record->n, &record->meanDifference,
                             &record->standardDeviationDifference);
    return kSuccess;
}

int Summarise(PairedT* record, const double* first, const double* second) {
    const unsigned n = record->n;
    const double rootN = elementary::Sqrt(static_cast<double>(n));
    MeanAndStandardDeviation(first, n, &record->mean1, &record->standardDeviation1);
    MeanAndStandardDeviation(second, n, &record->mean2, &record->standardDeviation2);
    record->standardError1 = record->standardDeviation1 / rootN;
    record->standardError2 = record->standardDeviation2 / rootN;
    return SummariseDifferences(record, first, second);
}

}  // namespace

int RunPairedT(PairedT* record, const double* first, const double* second, double confidence,
               IntervalType type) {
    const int status = Summarise(record, first, second);
    return status == kSuccess ? RunPairedT(record, confidence, type) : status;
}

int RunPairedT(PairedT* record, const double* first, const double* second, double confidence,
               IntervalType type, AlternativeHypothesis alternative, double difference0) {
    const int status = Summarise(record, first, second);
    return status == kSuccess ? RunPairedT(record, confidence, type, alternative, difference0) : status;
}

int RunPairedT(PairedT* record, double confidence, IntervalType type) {
    const double n = record->n;
    record->standardErrorDifference = record->standardDeviationDifference / elementary::Sqrt(n);
    return hypothesis::TInterval(n - 1, confidence, type, record->meanDifference,
                                 record->standardErrorDifference, &record->lowerBound, &record->upperBound);
}

int RunPairedT(PairedT* record, double confidence, IntervalType type, AlternativeHypothesis alternative,
               double difference0) {
    const int status = RunPairedT(record, confidence, type);
    if (status != kSuccess) return status;
    record->tStatistic = (record->meanDifference - difference0) / record->standardErrorDifference;
    record->pValue = hypothesis::TTestPValue(record->tStatistic, record->n - 1.0, alternative);
    return kSuccess;
}

}  // namespace zul::v0
