#include <algorithm>
#include <array>
#include <new>

#include "descriptive/quantiles.h"
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

MannWhitney::MannWhitney()
    : median1(kQuietNaN),
      median2(kQuietNaN),
      rankSum(kQuietNaN),
      u(kQuietNaN),
      pValue(kQuietNaN),
      pValueTies(kQuietNaN),
      estimate(kQuietNaN),
      achievedConfidence(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      exact(0),
      n1(0),
      n2(0) {}

namespace {

using descriptive::SortedValues;
using hypothesis::NormalLaw;
using hypothesis::RankLaw;
using hypothesis::Ranks;
using hypothesis::Tie;

constexpr std::uint64_t kLastExactCount = 100;

struct Samples {
    SortedValues first;
    SortedValues second;
    unsigned n1;
    unsigned n2;

    template <typename Visit>
    void ForEachTie(Visit visit) const {
        const double* const x = first.Items();
        const double* const y = second.Items();
        hypothesis::ForEachTie(
            n1, [=](std::size_t i) { return x[i]; }, n2, [=](std::size_t j) { return y[j]; }, visit);
    }
    // The one that its sort left over and that is the larger.
    std::span<double> Room(std::span<double> own) {
        double* const room = n1 >= n2 ? first.Room() : second.Room();
        return room == nullptr ? own : std::span<double>(room, std::max(n1, n2));
    }
};

// Of the number of pairs without ties.
NormalLaw UntiedLaw(double n1, double n2) {
    return {n1 * n2 / 2, elementary::Sqrt(n1 * n2 * (n1 + n2 + 1) / 12)};
}

// untied: the exact law of untied ranks, if that is the one.
int SetPairInterval(MannWhitney* record, Samples* samples, double confidence, IntervalType type,
                    const RankLaw& untied) {
    const unsigned n1 = record->n1;
    const unsigned n2 = record->n2;
    std::array<double, hypothesis::kOwnRoom> ownRoom;
    const hypothesis::Differences pairs(samples->first.Items(), n1, samples->second.Items(), n2);
    return hypothesis::SetInterval(record, pairs, samples->Room(ownRoom), confidence, type, [&](double tail) {
        return record->exact == 1 ? hypothesis::DepthAt(tail, untied, pairs.Count())
                                  : hypothesis::DepthAt(tail, UntiedLaw(n1, n2), pairs.Count());
    });
}

// By the smaller sample, whose sums are fewer.
kernels::TailPair ExactTails(const Samples& samples, double rankSum, const RankLaw& untied) {
    const unsigned N = samples.n1 + samples.n2;
    const unsigned chosen = std::min(samples.n1, samples.n2);
    Ranks ranks;
    ranks.reserve(N);
    samples.ForEachTie([&](const Tie& tie) {
        ranks.insert(ranks.end(), tie.size, static_cast<unsigned>(tie.DoubledRank()));
    });
    const unsigned unit = hypothesis::MakeWhole(&ranks);
    const double sum = samples.n1 == chosen ? rankSum : N * (N + 1.0) / 2 - rankSum;
    const auto value = static_cast<std::size_t>(sum * unit);
    const kernels::TailPair tails =
        ranks == hypothesis::UntiedRanks(N)
            ? hypothesis::RankSumTails(untied, ranks, chosen, value)
            : hypothesis::RankSumTails(hypothesis::RankSumLaw(ranks, chosen), ranks, chosen, value);
    return samples.n1 == chosen ? tails : kernels::TailPair{tails.upper, tails.lower};
}

// Medians, rank sum and its u; the share that ties leave of the variance.
double Summarise(MannWhitney* record, const Samples& samples) {
    const double n1 = record->n1;
    record->median1 = descriptive::SortedMedian(samples.first.Items(), record->n1) + 0.0;
    record->median2 = descriptive::SortedMedian(samples.second.Items(), record->n2) + 0.0;
    hypothesis::TieShare share;
    double rankSum = 0;
    samples.ForEachTie([&](const Tie& tie) {
        rankSum += static_cast<double>(tie.inFirst) * tie.Rank();
        share.Add(tie);
    });
    record->rankSum = rankSum;
    record->u = rankSum - n1 * (n1 + 1) / 2;
    return share.Of(1, n1 + record->n2);
}

int Test(MannWhitney* record, const Samples& samples, double tieShare, const RankLaw& untied, Side side) {
    if (tieShare == 0) return kNoRankSumTest;
    if (record->exact == 1) {
        record->pValue = hypothesis::PValueOf(ExactTails(samples, record->rankSum, untied), side);
        record->pValueTies = record->pValue;
        return kSuccess;
    }
    NormalLaw law = UntiedLaw(record->n1, record->n2);
    record->pValue = hypothesis::PValueOf(law.Tails(record->u), side);
    law.sd *= elementary::Sqrt(tieShare);
    record->pValueTies = hypothesis::PValueOf(law.Tails(record->u), side);
    return kSuccess;
}

void Clear(MannWhitney* record) {
    const unsigned n1 = record->n1;
    const unsigned n2 = record->n2;
    *record = MannWhitney();
    record->n1 = n1;
    record->n2 = n2;
}

// test(samples, tieShare, untied) is the test part.
template <typename TestPart>
int Run(MannWhitney* record, const double* sample1, const double* sample2, bool normal, double confidence,
        IntervalType type, TestPart test) {
    Clear(record);
    const unsigned n1 = record->n1;
    const unsigned n2 = record->n2;
    if (n1 == 0 || n2 == 0) return kNoRankSumTest;
    if (!hypothesis::AreFinite(sample1, n1) || !hypothesis::AreFinite(sample2, n2)) return kUnusableData;
    try {
        Samples samples{SortedValues(sample1, n1), SortedValues(sample2, n2), n1, n2};
        if (!samples.first.Obtained() || !samples.second.Obtained()) return kOutOfMemory;
        record->exact = !normal && std::uint64_t{n1} + n2 <= kLastExactCount ? 1 : 0;
        const double tieShare = Summarise(record, samples);
        const RankLaw untied =
            record->exact == 1 ? hypothesis::RankSumLaw(hypothesis::UntiedRanks(n1 + n2), std::min(n1, n2))
                               : RankLaw{};
        const int status = SetPairInterval(record, &samples, confidence, type, untied);
        return std::max(status, test(samples, tieShare, untied));
    } catch (const std::bad_alloc&) {
        Clear(record);
        return kOutOfMemory;
    }
}

}  // namespace

int RunMannWhitney(MannWhitney* record, const double* sample1, const double* sample2, bool normal,
                   double confidence, IntervalType type) {
    return Run(record, sample1, sample2, normal, confidence, type,
               [](const Samples&, double, const RankLaw&) { return kSuccess; });
}

int RunMannWhitney(MannWhitney* record, const double* sample1, const double* sample2, bool normal,
                   double confidence, IntervalType type, AlternativeHypothesis alternative) {
    return Run(record, sample1, sample2, normal, confidence, type,
               [=](const Samples& samples, double tieShare, const RankLaw& untied) {
                   return Test(record, samples, tieShare, untied, SideOf(alternative));
               });
}

}  // namespace zul::v0
