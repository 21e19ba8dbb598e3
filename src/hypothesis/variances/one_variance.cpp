#include <algorithm>
#include <limits>

#include "distributions/reference_distributions.h"
#include "frame/missing_value.h"
#include "hypothesis/intervals.h"
#include "hypothesis/variances/bonett.h"
#include "zul/descriptive.h"
#include "zul/hypothesis.h"

namespace zul::v0 {

using frame::kQuietNaN;

OneVariance::OneVariance()
    : variance(kQuietNaN),
      chiSquareLowerBound(kQuietNaN),
      chiSquareUpperBound(kQuietNaN),
      bonettLowerBound(kQuietNaN),
      bonettUpperBound(kQuietNaN),
      chiSquareStatistic(kQuietNaN),
      chiSquarePValue(kQuietNaN),
      degreesOfFreedom(kQuietNaN),
      bonettPValue(kQuietNaN),
      n(0) {}

namespace {

using hypothesis::BonettSample;

int ChiSquareInterval(OneVariance* record, double confidence, IntervalType type) {
    const double df = record->n - 1.0;
    const double sumOfSquares = record->variance * df;
    const auto lower = [=] {
        return sumOfSquares / reference::ChiSqQuantile(hypothesis::UpperLevel(confidence, type), df);
    };
    const auto upper = [=] {
        return sumOfSquares / reference::ChiSqQuantile(hypothesis::LowerLevel(confidence, type), df);
    };
    return hypothesis::SetBounds(type, 0, std::numeric_limits<double>::infinity(), lower, upper,
                                 &record->chiSquareLowerBound, &record->chiSquareUpperBound);
}

void ChiSquareTest(OneVariance* record, Side side, double variance0) {
    const double df = record->n - 1.0;
    record->degreesOfFreedom = df;
    record->chiSquareStatistic = record->variance * df / variance0;
    const bool usable = record->chiSquareStatistic < std::numeric_limits<double>::infinity();
    record->chiSquarePValue =
        usable ? reference::ChiSqPValue(record->chiSquareStatistic, df, side) : kQuietNaN;
}

void ClearTests(OneVariance* record) {
    record->chiSquareStatistic = record->chiSquarePValue = kQuietNaN;
    record->degreesOfFreedom = record->bonettPValue = kQuietNaN;
}

// The variance and the bounds of both methods; the sample is what Bonett's test goes on with.
int RunIntervals(OneVariance* record, const double* data, double confidence, IntervalType type,
                 BonettSample* sample) {
    double mean = 0;
    v1::GetSampleMeanAndVariance(data, record->n, &mean, &record->variance);
    const int chiSquareStatus = ChiSquareInterval(record, confidence, type);
    *sample = {static_cast<double>(record->n), record->variance, kQuietNaN};
    const int bonettStatus =
        hypothesis::EstimateKurtosis(data, record->n, record->variance, &sample->kurtosis);
    hypothesis::BonettBounds(*sample, confidence, type, &record->bonettLowerBound, &record->bonettUpperBound);
    return std::max(chiSquareStatus, bonettStatus);
}

}  // namespace

int RunOneVariance(OneVariance* record, const double* data, double confidence, IntervalType type) {
    BonettSample sample{};
    ClearTests(record);
    return RunIntervals(record, data, confidence, type, &sample);
}

// A bad type does not keep the tests from being computed: they do not need it.
int RunOneVariance(OneVariance* record, const double* data, double confidence, IntervalType type,
                   AlternativeHypothesis alternative, double variance0) {
    BonettSample sample{};
    const int status = RunIntervals(record, data, confidence, type, &sample);
    ChiSquareTest(record, SideOf(alternative), variance0);
    record->bonettPValue = kQuietNaN;
    record->bonettPValue = hypothesis::BonettPValue(sample, variance0, SideOf(alternative));
    return status;
}

int RunOneVariance(OneVariance* record, double confidence, IntervalType type) {
    ClearTests(record);
    record->bonettLowerBound = record->bonettUpperBound = kQuietNaN;
    return ChiSquareInterval(record, confidence, type);
}

int RunOneVariance(OneVariance* record, double confidence, IntervalType type,
                   AlternativeHypothesis alternative, double variance0) {
    const int status = RunOneVariance(record, confidence, type);
    ChiSquareTest(record, SideOf(alternative), variance0);
    return status;
}

}  // namespace zul::v0
