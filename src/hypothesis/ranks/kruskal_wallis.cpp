#include <vector>

#include "descriptive/quantiles.h"
#include "descriptive/sorting.h"
#include "distributions/reference_distributions.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/ranks/tied_ranks.h"
#include "hypothesis/ranks/values.h"
#include "zul/rank_tests.h"

namespace zul::v0 {

using frame::kQuietNaN;

KruskalWallis::KruskalWallis()
    : h(kQuietNaN),
      hAdjusted(kQuietNaN),
      degreesOfFreedom(kQuietNaN),
      pValue(kQuietNaN),
      pValueAdjusted(kQuietNaN),
      groups(0),
      n(0) {}

namespace {

using hypothesis::Groups;
using hypothesis::SetOutput;
using hypothesis::Tie;

struct Outputs {
    double* medians;
    double* meanRanks;
    double* z;

    void Clear(KruskalWallis* record) const {
        const unsigned groups = record->groups;
        *record = KruskalWallis();
        record->groups = groups;
        for (double* const out : {medians, meanRanks, z})
            hypothesis::FillOutput(out, groups, kQuietNaN);
    }
};

// Writes the rank of each value and notes the ties.
int Rank(const double* data, unsigned n, double* ranks, hypothesis::TieShare* share) {
    const descriptive::SortedIndices sorted(data, n);
    if (!sorted.Obtained()) return kOutOfMemory;
    const descriptive::IndexedValue* const items = sorted.Items();
    hypothesis::ForEachTie(
        n, [=](std::size_t i) { return items[i].value; }, 0, [](std::size_t) { return 0.0; },
        [=](const Tie& tie) {
            for (std::uint64_t i = 0; i < tie.size; ++i)
                ranks[items[tie.before + i].index] = tie.Rank();
            share->Add(tie);
        });
    return kSuccess;
}

// The outputs of the groups. The squared differences of rank sums from their means hold no rounded difference.
int SetGroups(KruskalWallis* record, const Groups& groups, const double* ranks, const Outputs& out) {
    const double N = groups.values;
    double spread = 0;
    for (std::size_t i = 0; i < groups.all.size(); ++i) {
        const auto size = static_cast<unsigned>(groups.all[i].size());
        if (size == 0) continue;
        const descriptive::SortedValues sorted(groups.all[i].data(), size);
        if (!sorted.Obtained()) return kOutOfMemory;
        SetOutput(out.medians, i, descriptive::SortedMedian(sorted.Items(), size) + 0.0);
        const double n = size;
        double rankSum = 0;
        for (unsigned j = 0; j < size; ++j)
            rankSum += *ranks++;
        SetOutput(out.meanRanks, i, rankSum / n);
        const double difference = rankSum - n * (N + 1) / 2;
        SetOutput(out.z, i, difference / n / elementary::Sqrt((N + 1) * ((N - n) / n) / 12));
        spread += difference * difference / n;
    }
    record->h = 12 / (N * (N + 1)) * spread;
    return kSuccess;
}

int Test(KruskalWallis* record, const double* data, const Groups& groups, const Outputs& out) {
    std::vector<double> ranks(groups.values);
    hypothesis::TieShare share;
    int status = Rank(data, groups.values, ranks.data(), &share);
    if (status == kSuccess) status = SetGroups(record, groups, ranks.data(), out);
    if (status != kSuccess) return status;
    record->n = groups.values;
    record->degreesOfFreedom = groups.withValues - 1.0;
    record->pValue = reference::ChiSqPValue(record->h, record->degreesOfFreedom, Side::Upper);
    const double left = share.Of(1, groups.values);
    if (left == 0) return kNoVariation;
    record->hAdjusted = record->h / left;
    record->pValueAdjusted = reference::ChiSqPValue(record->hAdjusted, record->degreesOfFreedom, Side::Upper);
    return kSuccess;
}

}  // namespace

int RunKruskalWallis(KruskalWallis* record, const double* data, const unsigned* sizes, double* medians,
                     double* meanRanks, double* z) {
    return hypothesis::TestGroups(record, data, sizes, Outputs{medians, meanRanks, z}, &Test);
}

}  // namespace zul::v0
