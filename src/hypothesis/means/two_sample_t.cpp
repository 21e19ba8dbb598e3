#include <cmath>

#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "hypothesis/means/sample.h"
#include "zul/hypothesis.h"

namespace zul::v0 {

using frame::kQuietNaN;

TwoSampleT::TwoSampleT()
    : mean1(kQuietNaN),
      mean2(kQuietNaN),
      standardDeviation1(kQuietNaN),
      standardDeviation2(kQuietNaN),
      standardError1(kQuietNaN),
      standardError2(kQuietNaN),
      difference(kQuietNaN),
      pooledStandardDeviation(kQuietNaN),
      degreesOfFreedom(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      tStatistic(kQuietNaN),
      pValue(kQuietNaN),
      n1(0),
      n2(0) {}

namespace {

void Summarise(TwoSampleT* record, const double* sample1, const double* sample2) {
    hypothesis::MeanAndStandardDeviation(sample1, record->n1, &record->mean1, &record->standardDeviation1);
    hypothesis::MeanAndStandardDeviation(sample2, record->n2, &record->mean2, &record->standardDeviation2);
}

// The standard error of the difference, which the record has no field for; its degrees of freedom go there.
double PooledStandardError(TwoSampleT* record) {
    const double n1 = record->n1;
    const double n2 = record->n2;
    const double variance1 = record->standardDeviation1 * record->standardDeviation1;
    const double variance2 = record->standardDeviation2 * record->standardDeviation2;
    // Deliberate: the sum of the counts is one of 32 bits.
    const double df = (record->n1 + record->n2) - 2.0;
    record->degreesOfFreedom = df;
    record->pooledStandardDeviation = elementary::Sqrt((n2 - 1) * variance2 / df + (n1 - 1) * variance1 / df);
    return elementary::Sqrt(1 / n2 + 1 / n1) * record->pooledStandardDeviation;
}

double WelchStandardError(TwoSampleT* record) {
    const double a = record->standardError1 * record->standardError1;
    const double b = record->standardError2 * record->standardError2;
    // Deliberate: rounded down to a whole number, before interval and p-value use it.
    record->degreesOfFreedom =
        std::floor((a + b) * (a + b) / (b * b / (record->n2 - 1.0) + a * a / (record->n1 - 1.0)));
    return elementary::Sqrt(a + b);
}

int RunInterval(TwoSampleT* record, bool equalVariances, double confidence, IntervalType type,
                double* standardError) {
    record->difference = record->mean1 - record->mean2;
    record->standardError1 = record->standardDeviation1 / elementary::Sqrt(static_cast<double>(record->n1));
    record->standardError2 = record->standardDeviation2 / elementary::Sqrt(static_cast<double>(record->n2));
    *standardError = equalVariances ? PooledStandardError(record) : WelchStandardError(record);
    return hypothesis::TInterval(record->degreesOfFreedom, confidence, type, record->difference,
                                 *standardError, &record->lowerBound, &record->upperBound);
}

}  // namespace

int RunTwoSampleT(TwoSampleT* record, const double* sample1, const double* sample2, bool equalVariances,
                  double confidence, IntervalType type) {
    Summarise(record, sample1, sample2);
    return RunTwoSampleT(record, equalVariances, confidence, type);
}

int RunTwoSampleT(TwoSampleT* record, const double* sample1, const double* sample2, bool equalVariances,
                  double confidence, IntervalType type, AlternativeHypothesis alternative,
                  double difference0) {
    Summarise(record, sample1, sample2);
    return RunTwoSampleT(record, equalVariances, confidence, type, alternative, difference0);
}

int RunTwoSampleT(TwoSampleT* record, bool equalVariances, double confidence, IntervalType type) {
    double standardError = 0;
    return RunInterval(record, equalVariances, confidence, type, &standardError);
}

int RunTwoSampleT(TwoSampleT* record, bool equalVariances, double confidence, IntervalType type,
                  AlternativeHypothesis alternative, double difference0) {
    double standardError = 0;
    const int status = RunInterval(record, equalVariances, confidence, type, &standardError);
    if (status != kSuccess) return status;
    record->tStatistic = (record->difference - difference0) / standardError;
    record->pValue = hypothesis::TTestPValue(record->tStatistic, record->degreesOfFreedom, alternative);
    return kSuccess;
}

}  // namespace zul::v0
