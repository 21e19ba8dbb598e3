#include <algorithm>
#include <cstdint>

#include "descriptive/quantiles.h"
#include "descriptive/sorting.h"
#include "distributions/reference_distributions.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/ranks/values.h"
#include "zul/rank_tests.h"

namespace zul::v0 {

using frame::kQuietNaN;

MoodMedian::MoodMedian()
    : overallMedian(kQuietNaN),
      chiSquare(kQuietNaN),
      degreesOfFreedom(kQuietNaN),
      pValue(kQuietNaN),
      groups(0),
      n(0) {}

namespace {

using hypothesis::Groups;
using hypothesis::SetOutput;

struct Outputs {
    unsigned* notAbove;
    unsigned* above;
    double* medians;
    double* interquartileRanges;

    void Clear(MoodMedian* record) const {
        const unsigned groups = record->groups;
        *record = MoodMedian();
        record->groups = groups;
        hypothesis::FillOutput(notAbove, groups, 0U);
        hypothesis::FillOutput(above, groups, 0U);
        hypothesis::FillOutput(medians, groups, kQuietNaN);
        hypothesis::FillOutput(interquartileRanges, groups, kQuietNaN);
    }
};

std::uint64_t CountAbove(const double* sorted, unsigned n, double median) {
    return static_cast<std::uint64_t>(sorted + n - std::upper_bound(sorted, sorted + n, median));
}

// The outputs of the groups and the statistic: of so many values, some of them above the overall median.
int SetGroups(MoodMedian* record, const Groups& groups, std::uint64_t allAbove, const Outputs& out) {
    const std::uint64_t N = groups.values;
    const double scale = static_cast<double>(allAbove) * static_cast<double>(N - allAbove);
    double sum = 0;
    for (std::size_t i = 0; i < groups.all.size(); ++i) {
        const auto n = static_cast<unsigned>(groups.all[i].size());
        if (n == 0) continue;
        const descriptive::SortedValues sorted(groups.all[i].data(), n);
        if (!sorted.Obtained()) return kOutOfMemory;
        const double* const x = sorted.Items();
        const auto quantile = [=](double p) {
            return descriptive::SortedQuantile(x, n, descriptive::kSummaryMethod, p);
        };
        const std::uint64_t above = CountAbove(x, n, record->overallMedian);
        SetOutput(out.notAbove, i, static_cast<unsigned>(n - above));
        SetOutput(out.above, i, static_cast<unsigned>(above));
        SetOutput(out.medians, i, descriptive::SortedMedian(x, n) + 0.0);
        SetOutput(out.interquartileRanges, i, quantile(0.75) - quantile(0.25));
        // N times the difference of the count above from its expectation, in whole numbers.
        const std::uint64_t found = above * N;
        const std::uint64_t expected = n * allAbove;
        const auto difference = static_cast<double>(std::max(found, expected) - std::min(found, expected));
        sum += difference * difference / n;
    }
    if (allAbove > 0) record->chiSquare = sum / scale;
    return kSuccess;
}

int Test(MoodMedian* record, const double* data, const Groups& groups, const Outputs& out) {
    std::uint64_t allAbove = 0;
    {
        const descriptive::SortedValues sorted(data, groups.values);
        if (!sorted.Obtained()) return kOutOfMemory;
        record->overallMedian = descriptive::SortedMedian(sorted.Items(), groups.values) + 0.0;
        allAbove = CountAbove(sorted.Items(), groups.values, record->overallMedian);
    }
    const int status = SetGroups(record, groups, allAbove, out);
    if (status != kSuccess) return status;
    record->n = groups.values;
    record->degreesOfFreedom = groups.withValues - 1.0;
    if (allAbove == 0) return kNoVariation;
    record->pValue = reference::ChiSqPValue(record->chiSquare, record->degreesOfFreedom, Side::Upper);
    return kSuccess;
}

}  // namespace

int RunMoodMedian(MoodMedian* record, const double* data, const unsigned* sizes, unsigned* notAbove,
                  unsigned* above, double* medians, double* interquartileRanges) {
    const Outputs out{notAbove, above, medians, interquartileRanges};
    return hypothesis::TestGroups(record, data, sizes, out, &Test);
}

}  // namespace zul::v0
