// The incomplete beta pair of many points in lanes.
//
// The points are sorted by the branch that they take and, within it, by their distance from its switch point in
// standard deviations, since neighbours have about the same number of terms. What the branches do not cover is left
// to beta_df: there the result is the bits of frame::kNA.
//
// All is in an unnamed namespace: see elementary/core/value.h.
#pragma once

#include <cstddef>

#include "elementary/core/value.h"
#include "frame/missing_value.h"
#include "numerics/beta/lanes/plan.h"
#include "numerics/beta/lanes/terms.h"
#include "numerics/lanes/part_of_vector.h"
#include "numerics/lanes/sorted_block.h"

namespace zul::numerics {
namespace {

// So many points at a time, sorted in memory that stays near.
inline constexpr std::size_t kBetaPoints = 512;

enum BetaBranch { LowerBranch, UpperBranch, SmallShapeBranch };
inline constexpr int kBetaBranches = 3;

// Points y with their complements in the order of their groups: branch + kBetaBranches mirrored.
inline constexpr int kDistances = 32;
inline constexpr int kBetaGroups = 2 * kBetaBranches;
using BetaOrder =
    SortedBlock<kBetaPoints, 2, kDistances, kDistances, kDistances, kDistances, kDistances, kDistances>;
static_assert(BetaOrder::kBranches == kBetaGroups);

// The least y of the lanes: far above what counts as 0.
inline constexpr double kLeastLanePoint = 1e-200;

// Points of [0, 1] with their complements.
template <class D>
struct UnitLanes {
    D x;
    D complement;
};

template <class D, class PointsFrom>
ZUL_INLINE void FindBetaCells(const BetaPlan& plan, PointsFrom pointsFrom, std::size_t count,
                              BetaOrder& order) {
    // Half of the distances are within two standard deviations, most of the others within forty.
    const double middle = 2 * plan.standardDeviation;
    for (std::size_t i = 0; i < count; i += elementary::kLanesOf<D>) {
        const auto [direct, other] = pointsFrom(i);
        const MarksOf<D> mirrored = (MarksOf<D>)(other < direct);
        const auto ofSide = [&](double BetaSidePlan::*member) {
            return Select(mirrored, elementary::Splat<D>(plan.sides[1].*member),
                          elementary::Splat<D>(plan.sides[0].*member));
        };
        const D y = Select(mirrored, other, direct);
        elementary::Store(order.elements[0] + i, y);
        elementary::Store(order.elements[1] + i, Select(mirrored, direct, other));
        const D beyond = y - ofSide(&BetaSidePlan::medianSplit);
        const MarksOf<D> small =
            (MarksOf<D>)(ofSide(&BetaSidePlan::p) < 1.0) & (MarksOf<D>)(y * ofSide(&BetaSidePlan::q) < 1.0);
        const D upperBranch =
            Select(small, elementary::Splat<D>(SmallShapeBranch), elementary::Splat<D>(UpperBranch));
        const D branch = Select((MarksOf<D>)(beyond > 0.0), upperBranch, D{});
        const D group = branch + Select(mirrored, elementary::Splat<D>(kBetaBranches), D{});
        const D size = elementary::Absolute(beyond);
        const D distance = size / (size + middle) * (kDistances - 1);
        const D key = group * kDistances + distance;
        const D inReach =
            Select((MarksOf<D>)(y >= kLeastLanePoint), key, elementary::Splat<D>(BetaOrder::kLeftOut));
        order.template SetCells<D>(i, elementary::Bits(inReach + 0x1p52) & 0xFFFF);
    }
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

// Density and terms of a flight of which the tails are known.
template <class D>
ZUL_INLINE void StoreRest(const BetaPlan& plan, const BetaSidePlan& side, int branch,
                          const LaneRatios& ratios, BetaFlight<D>& at, double* densities, double* terms) {
    if (branch == SmallShapeBranch)
        TakeLogDensity(plan, side, at);
    else
        TakeRepeatedTerms(ratios, at);
    if (branch != LowerBranch) TakeDensity(at);
    for (int w = 0; w < kInFlight; ++w) {
        const D count = branch == SmallShapeBranch ? elementary::Splat<D>(kOtherTerms) : at.count[w];
        elementary::Store(densities + w * elementary::kLanesOf<D>, Select(at.gone[w], D{}, at.power[w]));
        elementary::Store(terms + w * elementary::kLanesOf<D>, count);
    }
}

// At the points of one group: the tails in place of y and, if they are asked for, the densities in place of its
// complement and the terms. Whether none is left to beta_df.
template <class D, class Out>
ZUL_INLINE bool FillBetaGroup(const BetaPlan& plan, int group, const Out& out, BetaOrder& order,
                              [[maybe_unused]] double* terms) {
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
    for (std::size_t first = order.begin[group]; first < order.end[group]; first += kFlightPoints<D>) {
        double* const y = order.columns[0] + first;
        double* const rest = order.columns[1] + first;
        BetaFlight<D> at;
        for (int w = 0; w < kInFlight; ++w) {
            at.y[w] = elementary::Load<D>(y + w * elementary::kLanesOf<D>);
            at.rest[w] = elementary::Load<D>(rest + w * elementary::kLanesOf<D>);
            at.left[w] = MarksOf<D>{};
        }
        if (branch == LowerBranch)
            EvaluateLower<kInFull>(plan, side, ratios, at);
        else if (branch == UpperBranch)
            EvaluateUpper<kInFull>(plan, side, ratios, at);
        else
            EvaluateSmallShape(side, at);
        if constexpr (kInFull) StoreRest(plan, side, branch, ratios, at, rest, terms + first);
        all &= !AnyLane<D>(at.left);
        for (int w = 0; w < kInFlight; ++w) {
            const D tail = direct ? at.value[w] : 1.0 - at.value[w];
            elementary::Store(y + w * elementary::kLanesOf<D>,
                              Select(at.left[w], elementary::Splat<D>(frame::kNA), tail));
        }
    }
    return all;
}

// At count points, up to kBetaPoints; the tail is frame::kNA where it is left to beta_df. Whether none is.
// pointsFrom(i) are those from point i on, whatever behind the last one.
template <class D, class PointsFrom, class Out>
ZUL_INLINE bool FillBetaPoints(const BetaPlan& plan, PointsFrom pointsFrom, std::size_t count,
                               const Out& out) {
    BetaOrder order;
    FindBetaCells<D>(plan, pointsFrom, count, order);
    bool all = order.Sort(count);
    [[maybe_unused]] double terms[Out::kInFull ? BetaOrder::kPlaces : 1] = {};
    for (int group = 0; group < kBetaGroups; ++group) {
        if (order.end[group] > order.begin[group]) all &= FillBetaGroup<D>(plan, group, out, order, terms);
    }
    for (std::size_t i = 0; i < count; i += elementary::kLanesOf<D>) {
        StoreFirst(out.tails + i, count - i, order.template ResultsAt<D>(i));
        if constexpr (Out::kInFull) {
            StoreFirst(out.densities + i, count - i, order.template ValuesAt<D>(order.columns[1], i));
            StoreFirst(out.terms + i, count - i, order.template ValuesAt<D>(terms, i));
        }
    }
    return all;
}

}  // namespace
}  // namespace zul::numerics
