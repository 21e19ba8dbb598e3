#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <new>

#include "descriptive/sorting.h"
#include "elementary/root.h"
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
using hypothesis::RankLaw;
using hypothesis::Ranks;
using hypothesis::Tie;

constexpr unsigned kLastExactCount = 200;

// Of n untied ranks.
NormalLaw UntiedLaw(double n) {
    return {n * (n + 1) / 4, elementary::Sqrt(n * (n + 1) * (2 * n + 1) / 24)};
}

// untied: the exact law of untied ranks, if that is the one.
int SetPairInterval(Wilcoxon* record, descriptive::SortedValues* sorted, double confidence, IntervalType type,
                    const RankLaw& untied) {
    const unsigned n = record->n;
    const double* const x = sorted->Items();
    std::array<double, hypothesis::kOwnRoom> ownRoom;
    const std::span<double> room =
        sorted->Room() == nullptr ? std::span<double>(ownRoom) : std::span<double>(sorted->Room(), n);
    const auto setBy = [&](const auto& pairs) {
        return hypothesis::SetInterval(record, pairs, room, confidence, type, [&](double tail) {
            return record->exact == 1 ? hypothesis::DepthAt(tail, untied, pairs.Count())
                                      : hypothesis::DepthAt(tail, UntiedLaw(n), pairs.Count());
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

kernels::TailPair ExactTails(const double* x, unsigned n, double median0, double statistic,
                             const RankLaw& untied) {
    Ranks ranks;
    ranks.reserve(n);
    ForEachDistance(x, n, median0, [&](const Tie& tie) {
        ranks.insert(ranks.end(), tie.size, static_cast<unsigned>(tie.DoubledRank()));
    });
    const unsigned unit = hypothesis::MakeWhole(&ranks);
    const auto value = static_cast<std::size_t>(statistic * unit);
    return ranks == hypothesis::UntiedRanks(n)
               ? hypothesis::SignedRankTails(untied, ranks, value)
               : hypothesis::SignedRankTails(hypothesis::SignedRankLaw(ranks), ranks, value);
}

void Test(Wilcoxon* record, const double* x, const RankLaw& untied, Side side, double median0) {
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
        tails = ExactTails(x, record->n, median0, statistic, untied);
    } else if (used > 0) {
        NormalLaw law = UntiedLaw(record->used);
        law.sd = elementary::Sqrt(law.sd * law.sd - tied / 48);
        tails = law.Tails(statistic);
    }
    record->pValue = hypothesis::PValueOf(tails, side);
}

void Clear(Wilcoxon* record) {
    const unsigned n = record->n;
    *record = Wilcoxon();
    record->n = n;
}

// test(sorted, untied) is the test part.
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
        const RankLaw untied =
            record->exact == 1 ? hypothesis::SignedRankLaw(hypothesis::UntiedRanks(n)) : RankLaw{};
        const int status = SetPairInterval(record, &sorted, confidence, type, untied);
        test(sorted.Items(), untied);
        return status;
    } catch (const std::bad_alloc&) {
        Clear(record);
        return kOutOfMemory;
    }
}

}  // namespace

int RunWilcoxon(Wilcoxon* record, const double* data, bool normal, double confidence, IntervalType type) {
    return Run(record, data, normal, confidence, type, [](const double*, const RankLaw&) {});
}

int RunWilcoxon(Wilcoxon* record, const double* data, bool normal, double confidence, IntervalType type,
                AlternativeHypothesis alternative, double median0) {
    return Run(record, data, normal, confidence, type, [=](const double* sorted, const RankLaw& untied) {
        Test(record, sorted, untied, SideOf(alternative), median0);
    });
}

}  // namespace zul::v0
