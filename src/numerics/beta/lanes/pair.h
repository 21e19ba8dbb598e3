// The incomplete beta pair of many points in lanes.
//
// The points are sorted by the branch that they take and, within it, by their distance from its switch point in
// standard deviations, since neighbours have about the same number of terms. What the branches do not cover is left
// to beta_df: there the result is the bits of frame::kNA.
//
// All is in an unnamed namespace: see elementary/core/value.h.
#pragma once

#include <cstdint>
#include <cstring>

#include "elementary/core/value.h"
#include "frame/missing_value.h"
#include "numerics/beta/lanes/plan.h"
#include "numerics/beta/lanes/terms.h"

namespace zul::numerics {
namespace {

// So many points at a time, sorted in memory that stays near.
inline constexpr int kBetaPoints = 512;

enum BetaBranch { LowerBranch, UpperBranch, SmallShapeBranch };
inline constexpr int kBetaBranches = 3;

// Points in the order of their branches, each of which begins at a whole flight and ends with copies of its last
// point.
struct BetaOrder {
    static constexpr int kDistances = 32;
    static constexpr int kGroups = 2 * kBetaBranches;  // branch + kBetaBranches mirrored
    static constexpr int kKeys = kGroups * kDistances;
    static constexpr int kNowhere = kKeys;
    static constexpr int kSpace = kBetaPoints + kGroups * kInFlight * 8;
    // By point; for what is outside of the lanes' reach kNowhere.
    std::uint64_t keys[kBetaPoints];
    double points[kBetaPoints];
    double rests[kBetaPoints];
    // By place.
    double y[kSpace];
    double rest[kSpace];
    unsigned short point[kSpace];
    int begin[kGroups];
    int end[kGroups];
};

// The least y of the lanes: far above what counts as 0.
inline constexpr double kLeastLanePoint = 1e-200;

// Points of [0, 1] with their complements.
template <class D>
struct UnitLanes {
    D x;
    D complement;
};

template <class D, class PointsFrom>
ZUL_INLINE void KeyBetaPoints(const BetaPlan& plan, PointsFrom pointsFrom, int count, BetaOrder& order) {
    // Half of the distances are within two standard deviations, most of the others within forty.
    const double middle = 2 * plan.standardDeviation;
    for (int i = 0; i < count; i += elementary::kLanesOf<D>) {
        const auto [direct, other] = pointsFrom(i);
        const MarksOf<D> mirrored = (MarksOf<D>)(other < direct);
        const auto ofSide = [&](double BetaSidePlan::*member) {
            return Select(mirrored, elementary::Splat<D>(plan.sides[1].*member),
                          elementary::Splat<D>(plan.sides[0].*member));
        };
        const D y = Select(mirrored, other, direct);
        elementary::Store(order.points + i, y);
        elementary::Store(order.rests + i, Select(mirrored, direct, other));
        const D beyond = y - ofSide(&BetaSidePlan::medianSplit);
        const MarksOf<D> small =
            (MarksOf<D>)(ofSide(&BetaSidePlan::p) < 1.0) & (MarksOf<D>)(y * ofSide(&BetaSidePlan::q) < 1.0);
        const D upperBranch =
            Select(small, elementary::Splat<D>(SmallShapeBranch), elementary::Splat<D>(UpperBranch));
        const D branch = Select((MarksOf<D>)(beyond > 0.0), upperBranch, D{});
        const D group = branch + Select(mirrored, elementary::Splat<D>(kBetaBranches), D{});
        const D size = elementary::Absolute(beyond);
        const D distance = size / (size + middle) * (BetaOrder::kDistances - 1);
        const D key = group * BetaOrder::kDistances + distance;
        const D inReach =
            Select((MarksOf<D>)(y >= kLeastLanePoint), key, elementary::Splat<D>(BetaOrder::kNowhere));
        const BitsOf<D> keys = elementary::Bits(inReach + 0x1p52) & 0xFFFF;
        std::memcpy(order.keys + i, &keys, sizeof keys);
    }
}

// A counting sort. Whether all points are within the lanes' reach.
template <class D>
ZUL_INLINE bool SortBetaPoints(int count, BetaOrder& order) {
    int next[BetaOrder::kKeys + 1] = {};
    for (int i = 0; i < count; ++i)
        ++next[order.keys[i]];
    constexpr int kFlight = kFlightPoints<D>;
    int place = 0;
    for (int group = 0; group < BetaOrder::kGroups; ++group) {
        order.begin[group] = place;
        for (int key = group * BetaOrder::kDistances; key < (group + 1) * BetaOrder::kDistances; ++key) {
            const int points = next[key];
            next[key] = place;
            place += points;
        }
        order.end[group] = place;
        place = (place + kFlight - 1) / kFlight * kFlight;
    }
    for (int i = 0; i < count; ++i) {
        if (order.keys[i] == BetaOrder::kNowhere) continue;
        const int to = next[order.keys[i]]++;
        order.y[to] = order.points[i];
        order.rest[to] = order.rests[i];
        order.point[to] = static_cast<unsigned short>(i);
    }
    for (int group = 0; group < BetaOrder::kGroups; ++group) {
        const int end = order.end[group];
        for (int to = end; end > order.begin[group] && to % kFlightPoints<D> != 0; ++to) {
            order.y[to] = order.y[end - 1];
            order.rest[to] = order.rest[end - 1];
        }
    }
    return next[BetaOrder::kNowhere] == 0;
}

// What is asked of the pair at each point: one of its tails.
struct BetaTailsOnly {
    static constexpr bool kInFull = false;
    bool upper;
    double* tails;
};

// Also the density and, for a step to the next point, the count of terms or kOtherTerms.
struct BetaEvaluations {
    static constexpr bool kInFull = true;
    bool upper;
    double* tails;
    double* densities;
    double* terms;
};

template <class D>
ZUL_INLINE void StoreFlight(const Flight<D>& values, const BetaOrder& order, int first, int used,
                            double* out) {
    double results[kFlightPoints<D>] = {};
    for (int w = 0; w < kInFlight; ++w)
        elementary::Store(results + w * elementary::kLanesOf<D>, values[w]);
    for (int k = 0; k < used; ++k)
        out[order.point[first + k]] = results[k];
}

// Density and terms of a flight of which the tails are known.
template <class D>
ZUL_INLINE void FillRest(const BetaPlan& plan, const BetaSidePlan& side, int branch, const LaneRatios& ratios,
                         BetaFlight<D>& at, const BetaOrder& order, int first, int used,
                         const BetaEvaluations& out) {
    Flight<D> density;
    Flight<D> terms;
    if (branch == SmallShapeBranch) {
        TakeLogDensity(plan, side, at);
        for (int w = 0; w < kInFlight; ++w)
            terms[w] = elementary::Splat<D>(kOtherTerms);
    } else {
        TakeRepeatedTerms(ratios, at, terms);
    }
    if (branch == LowerBranch) {
        for (int w = 0; w < kInFlight; ++w)
            density[w] = Select(at.gone[w], D{}, at.power[w]);
    } else {
        TakeDensity(at, density);
    }
    StoreFlight<D>(density, order, first, used, out.densities);
    StoreFlight<D>(terms, order, first, used, out.terms);
}

// At the points of one group. Whether none is left to beta_df.
template <class D, class Out>
ZUL_INLINE bool FillBetaGroup(const BetaPlan& plan, int group, const BetaOrder& order, const Out& out) {
    constexpr bool kInFull = Out::kInFull;
    const bool mirrored = group >= kBetaBranches;
    const int branch = group % kBetaBranches;
    const BetaSidePlan& side = plan.sides[mirrored];
    const BetaSidePlan& ratioSide = plan.sides[mirrored != (branch == UpperBranch)];
    LaneRatios ratios;
    ratios.p = ratioSide.p;
    ratios.q = ratioSide.q;
    ratios.known = 0;
    bool all = true;
    const bool direct = out.upper == (mirrored != (branch != LowerBranch));
    for (int first = order.begin[group]; first < order.end[group]; first += kFlightPoints<D>) {
        BetaFlight<D> at;
        for (int w = 0; w < kInFlight; ++w) {
            at.y[w] = elementary::Load<D>(order.y + first + w * elementary::kLanesOf<D>);
            at.rest[w] = elementary::Load<D>(order.rest + first + w * elementary::kLanesOf<D>);
            at.left[w] = MarksOf<D>{};
        }
        if (branch == LowerBranch)
            EvaluateLower<kInFull>(plan, side, ratios, at);
        else if (branch == UpperBranch)
            EvaluateUpper<kInFull>(plan, side, ratios, at);
        else
            EvaluateSmallShape(side, at);
        constexpr int kMost = kFlightPoints<D>;
        const int points = order.end[group] - first;
        const int used = points < kMost ? points : kMost;
        if constexpr (kInFull) FillRest(plan, side, branch, ratios, at, order, first, used, out);
        all &= !AnyLane<D>(at.left);
        Flight<D> tails;
        for (int w = 0; w < kInFlight; ++w) {
            const D tail = direct ? at.value[w] : 1.0 - at.value[w];
            tails[w] = Select(at.left[w], elementary::Splat<D>(frame::kNA), tail);
        }
        StoreFlight<D>(tails, order, first, used, out.tails);
    }
    return all;
}

// At count points, up to kBetaPoints; the tail is frame::kNA where it is left to beta_df. Whether none is.
// pointsFrom(i) are those from point i on, whatever behind the last one.
template <class D, class PointsFrom, class Out>
ZUL_INLINE bool FillBetaPoints(const BetaPlan& plan, PointsFrom pointsFrom, int count, const Out& out) {
    BetaOrder order;
    KeyBetaPoints<D>(plan, pointsFrom, count, order);
    for (int i = 0; i < count; ++i)
        out.tails[i] = frame::kNA;
    bool all = SortBetaPoints<D>(count, order);
    for (int group = 0; group < BetaOrder::kGroups; ++group) {
        if (order.end[group] > order.begin[group]) all &= FillBetaGroup<D>(plan, group, order, out);
    }
    return all;
}

}  // namespace
}  // namespace zul::numerics
