#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <new>

#include "descriptive/sorting.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "hypothesis/ranks/rank_interval.h"
#include "hypothesis/ranks/tied_ranks.h"
#include "hypothesis/ranks/values.h"
#include "zul/rank_tests.h"

namespace zul::v0 {

using frame::kQuietNaN;

Wilcoxon::Wilcoxon()
    : statistic(kQuietNaN),
      pValue(kQuietNaN),
      estimate(kQuietNaN),
      achievedConfidence(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      used(0),
      exact(0),
      n(0) {}

namespace {

using hypothesis::NormalLaw;
using hypothesis::Ranks;
using hypothesis::Tie;

constexpr unsigned kLastExactCount = 200;

// Of n untied ranks.
NormalLaw UntiedLaw(double n) {
    return {n * (n + 1) / 4, std::sqrt(n * (n + 1) * (2 * n + 1) / 24)};
}

int SetPairInterval(Wilcoxon* record, descriptive::SortedValues* sorted, double confidence,
                    IntervalType type) {
    const unsigned n = record->n;
    const double* const x = sorted->Items();
    std::array<double, hypothesis::kOwnRoom> ownRoom;
    const std::span<double> room =
        sorted->Room() == nullptr ? std::span<double>(ownRoom) : std::span<double>(sorted->Room(), n);
    const auto setBy = [&](const auto& pairs) {
        return hypothesis::SetInterval(record, pairs, room, confidence, type, [&](double tail) {
            const std::uint64_t count = pairs.Count();
            if (record->exact == 0) return hypothesis::DepthAt(tail, UntiedLaw(n), count);
            return hypothesis::DepthAt(
                tail, hypothesis::SignedRankLaw(hypothesis::UntiedRanks(n), count / 2 + 1), count);
        });
    };
    const bool mayOverflow = std::max(-x[0], x[n - 1]) > DBL_MAX / 2;
    return mayOverflow ? setBy(hypothesis::AveragesOfHalves(x, n)) : setBy(hypothesis::Averages(x, n));
}

// The runs of equal |x - median0| of sorted values, those of values above it being the first of each.
template <typename Visit>
void ForEachDistance(const double* x, unsigned n, double median0, Visit visit) {
    const double* const below = std::lower_bound(x, x + n, median0);
    const double* const above = std::upper_bound(below, x + n, median0);
    hypothesis::ForEachTie(
        static_cast<std::size_t>(x + n - above), [=](std::size_t i) { return above[i] - median0; },
        static_cast<std::size_t>(below - x), [=](std::size_t i) { return median0 - *(below - 1 - i); },
        visit);
}

// The ranks of the values that are used, whole ones, and twice the statistic.
kernels::TailPair ExactTails(const double* x, unsigned n, double median0, double statistic) {
    Ranks ranks;
    ranks.reserve(n);
    bool hasHalves = false;
    ForEachDistance(x, n, median0, [&](const Tie& tie) {
        ranks.insert(ranks.end(), tie.size, static_cast<unsigned>(tie.DoubledRank()));
        hasHalves = hasHalves || tie.size % 2 == 0;
    });
    if (hasHalves) return hypothesis::SignedRankTails(ranks, static_cast<std::size_t>(2 * statistic));
    for (unsigned& rank : ranks)
        rank /= 2;
    return hypothesis::SignedRankTails(ranks, static_cast<std::size_t>(statistic));
}

void Test(Wilcoxon* record, const double* x, Side side, double median0) {
    if (std::isnan(median0)) return;
    double statistic = 0;
    double tied = 0;
    std::uint64_t used = 0;
    ForEachDistance(x, record->n, median0, [&](const Tie& tie) {
        const auto size = static_cast<double>(tie.size);
        statistic += static_cast<double>(tie.inFirst) * tie.Rank();
        tied += size * size * size - size;
        used += tie.size;
    });
    record->statistic = statistic;
    record->used = static_cast<unsigned>(used);
    kernels::TailPair tails{1, 1};
    if (used > 0 && record->exact == 1) {
        tails = ExactTails(x, record->n, median0, statistic);
    } else if (used > 0) {
        NormalLaw law = UntiedLaw(record->used);
        law.sd = std::sqrt(law.sd * law.sd - tied / 48);
        tails = law.Tails(statistic);
    }
    record->pValue = hypothesis::PValueOf(tails, side);
}

void Clear(Wilcoxon* record) {
    const unsigned n = record->n;
    *record = Wilcoxon();
    record->n = n;
}

// test(record, sorted) is the test part.
template <typename TestPart>
int Run(Wilcoxon* record, const double* data, bool normal, double confidence, IntervalType type,
        TestPart test) {
    Clear(record);
    const unsigned n = record->n;
    if (n == 0 || !hypothesis::AreFinite(data, n)) return kUnusableData;
    try {
        descriptive::SortedValues sorted(data, n);
        if (!sorted.Obtained()) return kOutOfMemory;
        record->exact = !normal && n <= kLastExactCount ? 1 : 0;
        const int status = SetPairInterval(record, &sorted, confidence, type);
        test(sorted.Items());
        return status;
    } catch (const std::bad_alloc&) {
        Clear(record);
        return kOutOfMemory;
    }
}

}  // namespace

int RunWilcoxon(Wilcoxon* record, const double* data, bool normal, double confidence, IntervalType type) {
    return Run(record, data, normal, confidence, type, [](const double*) {});
}

int RunWilcoxon(Wilcoxon* record, const double* data, bool normal, double confidence, IntervalType type,
                AlternativeHypothesis alternative, double median0) {
    return Run(record, data, normal, confidence, type,
               [=](const double* sorted) { Test(record, sorted, SideOf(alternative), median0); });
}

}  // namespace zul::v0
