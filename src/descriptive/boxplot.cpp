#include "descriptive/median_interval.h"
#include "descriptive/quantiles.h"
#include "descriptive/sorting.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "zul/descriptive.h"

namespace zul::v1 {

using descriptive::kSummaryMethod;
using descriptive::SortedQuantile;
using frame::kQuietNaN;

KelBoxplotHelper::KelBoxplotHelper()
    : minimum(kQuietNaN),
      maximum(kQuietNaN),
      firstQuartile(kQuietNaN),
      thirdQuartile(kQuietNaN),
      median(kQuietNaN),
      medianLowerBound(kQuietNaN),
      medianUpperBound(kQuietNaN),
      lowerHinge(kQuietNaN),
      upperHinge(kQuietNaN),
      mean(kQuietNaN),
      standardDeviation(kQuietNaN) {}

int RunKelBoxplotHelper(KelBoxplotHelper* out, double confidence, const double* x, unsigned n) {
    *out = KelBoxplotHelper();
    const descriptive::SortedValues sorted(x, n);
    if (!sorted.Obtained()) return kOutOfMemory;

    FiveNumberSummary five;
    descriptive::SummariseSorted(sorted.Items(), n, &five);
    out->minimum = five.minimum;
    out->maximum = five.maximum;
    out->firstQuartile = five.firstQuartile;
    out->thirdQuartile = five.thirdQuartile;
    out->median = five.median;

    // The probability of the depth (n + 3) / 4 by the method's position (n + 1) p.
    const double hinge = (n + 3.0) / (4 * (n + 1.0));
    out->lowerHinge = SortedQuantile(sorted.Items(), n, kSummaryMethod, hinge);
    out->upperHinge = SortedQuantile(sorted.Items(), n, kSummaryMethod, 1 - hinge);

    const auto [lower, upper] = descriptive::MedianInterval(sorted.Items(), n, out->median, confidence);
    out->medianLowerBound = lower;
    out->medianUpperBound = upper;

    double variance = kQuietNaN;
    GetSampleMeanAndVariance(x, n, &out->mean, &variance);
    out->standardDeviation = elementary::Sqrt(variance);
    return kSuccess;
}

}  // namespace zul::v1
