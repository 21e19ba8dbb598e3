// What the signed rank and the rank-sum test share: depths of order statistics of pairs, bounds, p-values.
#pragma once

#include <cstdint>
#include <limits>
#include <span>

#include "distributions/tail_pair.h"
#include "frame/side.h"
#include "frame/status.h"
#include "hypothesis/intervals.h"
#include "hypothesis/ranks/exact_laws.h"
#include "hypothesis/ranks/pair_selection.h"

namespace zul::hypothesis {

// The p-value of both tails at a statistic, the statistic itself in each; at most 1.
double PValueOf(const kernels::TailPair& tails, Side side);

// The normal law of a statistic that takes whole or half values.
struct NormalLaw {
    double mean;
    double sd;

    // With a correction for continuity.
    kernels::TailPair Tails(double statistic) const;
};

// A depth k from 1 to the middle of the pairs, and the probability P(T < k).
struct PairDepth {
    std::uint64_t k;
    double below;
};

// The smallest k with P(T <= k) >= tail, the tail in (0, 1).
PairDepth DepthAt(double tail, const RankLaw& law, std::uint64_t pairs);
PairDepth DepthAt(double tail, const NormalLaw& law, std::uint64_t pairs);

inline bool IsIntervalType(IntervalType type) {
    return type >= IntervalType::UpperBound && type <= IntervalType::LowerBound;
}

inline bool IsConfidence(double confidence) {
    return confidence > 0 && confidence < 1;
}

// Estimate, bounds and their confidence, all of them NaN before. depthAt(tail) is a depth.
template <typename Record, typename Pairs, typename Depth>
int SetInterval(Record* record, const Pairs& pairs, std::span<double> room, double confidence,
                IntervalType type, Depth depthAt) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    PairSelection<Pairs> selection(pairs, room);
    record->estimate = selection.Median();
    if (!IsIntervalType(type)) return kBadIntervalType;
    if (!IsConfidence(confidence)) return kSuccess;
    const PairDepth depth = depthAt(LowerLevel(confidence, type));
    record->achievedConfidence = 1 - (type == IntervalType::TwoSided ? 2 : 1) * depth.below;
    return SetBounds(
        type, -kInfinity, kInfinity, [&] { return selection.Smallest(depth.k); },
        [&] { return selection.Smallest(pairs.Count() + 1 - depth.k); }, &record->lowerBound,
        &record->upperBound);
}

}  // namespace zul::hypothesis
