#include <algorithm>
#include <cmath>
#include <limits>

#include "distributions/reference_distributions.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "hypothesis/variances/bonett.h"
#include "hypothesis/variances/levene.h"
#include "hypothesis/variances/usable_sample.h"
#include "hypothesis/variances/variance_ratio.h"
#include "zul/variances.h"

namespace zul::v0 {

using frame::kQuietNaN;
using hypothesis::Distances;
using hypothesis::VarianceRatio;
using hypothesis::VarianceSample;

TwoVariance::TwoVariance()
    : variance1(kQuietNaN),
      variance2(kQuietNaN),
      ratio(kQuietNaN),
      fLowerBound(kQuietNaN),
      fUpperBound(kQuietNaN),
      bonettLowerBound(kQuietNaN),
      bonettUpperBound(kQuietNaN),
      fStatistic(kQuietNaN),
      fPValue(kQuietNaN),
      degreesOfFreedom1(kQuietNaN),
      degreesOfFreedom2(kQuietNaN),
      bonettPValue(kQuietNaN),
      leveneStatistic(kQuietNaN),
      levenePValue(kQuietNaN),
      n1(0),
      n2(0) {}

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool IsConfidence(double confidence) {
    return confidence > 0 && confidence < 1;
}

bool IsRatio(double x) {
    return x > 0 && x < kInfinity;
}

// The counts stay, and without data the variances.
void Clear(TwoVariance* record, bool withVariances) {
    TwoVariance cleared;
    cleared.n1 = record->n1;
    cleared.n2 = record->n2;
    if (!withVariances) {
        cleared.variance1 = record->variance1;
        cleared.variance2 = record->variance2;
    }
    *record = cleared;
}

// The ratio and the bounds for normal values.
int FInterval(TwoVariance* record, double confidence, IntervalType type) {
    record->ratio = record->variance1 / record->variance2;
    const double df1 = record->degreesOfFreedom1 = record->n1 - 1.0;
    const double df2 = record->degreesOfFreedom2 = record->n2 - 1.0;
    const double level = IsConfidence(confidence) ? hypothesis::UpperLevel(confidence, type) : kQuietNaN;
    const auto lower = [=] { return record->ratio / reference::FQuantile(level, df1, df2); };
    const auto upper = [=] { return record->ratio * reference::FQuantile(level, df2, df1); };
    const int status =
        hypothesis::SetBounds(type, 0, kInfinity, lower, upper, &record->fLowerBound, &record->fUpperBound);
    if (!IsConfidence(confidence)) record->fLowerBound = record->fUpperBound = kQuietNaN;
    return record->variance1 == 0 || record->variance2 == 0 ? std::max(status, kNoVariation) : status;
}

void FTest(TwoVariance* record, Side side, double ratio0) {
    record->fStatistic = record->ratio / ratio0;
    if (!IsRatio(ratio0)) return;
    const double p =
        reference::FPValue(record->fStatistic, record->degreesOfFreedom1, record->degreesOfFreedom2, side);
    record->fPValue = p > 1 ? 1 : p;
}

// One-sided by the t statistic, whose sign is that of the difference of the mean distances.
void LeveneTest(TwoVariance* record, const Distances (&samples)[2], AlternativeHypothesis alternative) {
    const auto [statistic, df1, df2] = hypothesis::CompareDistances(samples, 2);
    record->leveneStatistic = statistic;
    if (alternative == AlternativeHypothesis::NotEqual) {
        record->levenePValue = reference::FPValue(statistic, df1, df2, Side::Upper);
        return;
    }
    const double t = std::copysign(elementary::Sqrt(statistic), samples[0].mean - samples[1].mean);
    record->levenePValue = hypothesis::TTestPValue(t, df2, alternative);
}

// What the tests go on with.
struct Samples {
    VarianceSample variances[2];
    Distances distances[2];
    bool haveRatio = false;  // with an error by Bonett's method
};

int SummariseData(TwoVariance* record, const double* data1, const double* data2, Samples* samples) {
    Clear(record, true);
    const double* const data[] = {data1, data2};
    const unsigned n[] = {record->n1, record->n2};
    for (int i = 0; i < 2; ++i)
        if (!hypothesis::IsUsableSample(data[i], n[i])) return kUnusableData;
    for (int i = 0; i < 2; ++i) {
        const double variance = hypothesis::UsableVariance(data[i], n[i]);
        double kurtosis = 0;
        int status = hypothesis::EstimateKurtosis(data[i], n[i], variance, &kurtosis);
        if (status == kSuccess) status = hypothesis::MeasureDistances(data[i], n[i], &samples->distances[i]);
        if (status != kSuccess) return status;
        samples->variances[i] = hypothesis::SampleWithKurtosis(n[i], variance, kurtosis);
    }
    record->variance1 = samples->variances[0].variance;
    record->variance2 = samples->variances[1].variance;
    samples->haveRatio = IsRatio(record->variance1) && IsRatio(record->variance2);
    return kSuccess;
}

// The statuses that end the work leave all outputs NaN.
bool EndsWork(int status) {
    return status == kUnusableData || status == kOutOfMemory;
}

int RunIntervals(TwoVariance* record, const double* data1, const double* data2, double confidence,
                 IntervalType type, Samples* samples) {
    const int status = SummariseData(record, data1, data2, samples);
    if (status != kSuccess) return status;
    if (samples->haveRatio && IsConfidence(confidence)) {
        const VarianceRatio ratio(samples->variances[0], samples->variances[1]);
        hypothesis::RatioBounds(ratio, confidence, type, &record->bonettLowerBound,
                                &record->bonettUpperBound);
    }
    return FInterval(record, confidence, type);
}

}  // namespace

int RunTwoVariance(TwoVariance* record, const double* data1, const double* data2, double confidence,
                   IntervalType type) {
    Samples samples{};
    return RunIntervals(record, data1, data2, confidence, type, &samples);
}

int RunTwoVariance(TwoVariance* record, const double* data1, const double* data2, double confidence,
                   IntervalType type, AlternativeHypothesis alternative, double ratio0) {
    Samples samples{};
    const int status = RunIntervals(record, data1, data2, confidence, type, &samples);
    if (EndsWork(status)) return status;
    FTest(record, SideOf(alternative), ratio0);
    if (samples.haveRatio && IsRatio(ratio0)) {
        const VarianceRatio ratio(samples.variances[0], samples.variances[1]);
        record->bonettPValue = hypothesis::RatioPValue(ratio, ratio0, SideOf(alternative));
    }
    LeveneTest(record, samples.distances, alternative);
    return status;
}

int RunTwoVariance(TwoVariance* record, double confidence, IntervalType type) {
    Clear(record, false);
    const bool areUsable =
        record->n1 >= 2 && record->n2 >= 2 && record->variance1 >= 0 && record->variance2 >= 0;
    return areUsable ? FInterval(record, confidence, type) : kUnusableData;
}

int RunTwoVariance(TwoVariance* record, double confidence, IntervalType type,
                   AlternativeHypothesis alternative, double ratio0) {
    const int status = RunTwoVariance(record, confidence, type);
    if (!EndsWork(status)) FTest(record, SideOf(alternative), ratio0);
    return status;
}

}  // namespace zul::v0
