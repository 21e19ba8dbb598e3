#include "descriptive/modes.h"
#include "descriptive/quantiles.h"
#include "descriptive/sorting.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "zul/descriptive.h"

namespace zul::v1 {

using descriptive::SortedValues;
using frame::kQuietNaN;

FiveNumberSummary::FiveNumberSummary()
    : minimum(kQuietNaN),
      firstQuartile(kQuietNaN),
      median(kQuietNaN),
      thirdQuartile(kQuietNaN),
      maximum(kQuietNaN) {}

int GetKelFiveNumberSummary(FiveNumberSummary* out, const double* x, unsigned n) {
    const SortedValues sorted(x, n);
    if (!sorted.Obtained()) return kOutOfMemory;
    descriptive::SummariseSorted(sorted.Items(), n, out);
    return kSuccess;
}

int GetKel2013ExtendedSummary(SecondSampleMoments* moments, FiveNumberSummary* five, double* modes,
                              unsigned* modeCount, unsigned* modeFrequency, const double* x) {
    constexpr unsigned kMaxModes = 5;
    GetSecondSampleMoments(moments, x);
    const unsigned n = moments->count;
    const SortedValues sorted(x, n);
    if (!sorted.Obtained()) return kOutOfMemory;
    descriptive::SummariseSorted(sorted.Items(), n, five);
    descriptive::SortedModes(sorted.Items(), n, modes, kMaxModes, modeCount, modeFrequency);
    return kSuccess;
}

}  // namespace zul::v1
