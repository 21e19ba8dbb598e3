// Quantiles of the beta distribution in lanes: of many targets each round evaluates the pair at the points of those that
// are still searched for, in the steps of quantile_steps.h. What the lanes of the pair leave, and the few that need more
// evaluations, are left to the scalar routine: there the result is the bits of frame::kNA.
//
// All is in an unnamed namespace: see elementary/core/value.h.
#pragma once

#include <cstdint>

#include "elementary/core/value.h"
#include "frame/missing_value.h"
#include "numerics/beta/lanes/pair.h"
#include "numerics/beta/lanes/plan.h"
#include "numerics/beta/lanes/search.h"
#include "numerics/beta/quantile_steps.h"

namespace zul::numerics {
namespace {

// An orientation of the shapes of a plan.
class PlannedShapes {
public:
    ZUL_INLINE PlannedShapes(const BetaQuantilePlan& plan, int index) : plan_(plan), index_(index) {}
    ZUL_INLINE double P() const { return plan_.pair.sides[index_].p; }
    ZUL_INLINE double Q() const { return plan_.pair.sides[index_].q; }
    ZUL_INLINE double LogP() const { return plan_.sides[index_].logP; }
    ZUL_INLINE double LogQ() const { return plan_.sides[index_].logQ; }
    ZUL_INLINE double LogFirstDivisor() const { return plan_.sides[index_].logFirstDivisor; }
    ZUL_INLINE double HighestLogit() const { return plan_.sides[index_].highestLogit; }
    ZUL_INLINE const BetaSidePlan& Side() const { return plan_.pair.sides[index_]; }
    ZUL_INLINE PlannedShapes Mirrored() const { return {plan_, 1 - index_}; }

private:
    const BetaQuantilePlan& plan_;
    int index_;
};

// Searches for quantiles in one orientation.
struct BetaSearches {
    static constexpr std::size_t kCopies = 8;
    static constexpr std::size_t kSpace = kBetaPoints + kCopies;
    std::size_t count = 0;
    double target[kSpace];
    double logTarget[kSpace];
    double logit[kSpace];
    double low[kSpace];
    double high[kSpace];
    unsigned short element[kSpace];
    // Of this round.
    double y[kSpace];
    double rest[kSpace];
    double tails[kSpace] = {};
    double densities[kSpace] = {};
    double terms[kSpace] = {};
    std::uint64_t fates[kSpace];

    struct Columns {
        double* columns[5];
    };
    ZUL_INLINE Columns Kept() { return {{target, logTarget, logit, low, high}}; }
};

// Where a search starts, or its end where the start is exact.
template <class D>
ZUL_INLINE void StartSearches(const PlannedShapes& shapes, BetaSearches& searches, std::size_t i) {
    const D target = elementary::Load<D>(searches.target + i);
    const D logTarget = elementary::CoreLog(target);
    const StartAtEnd<D> near = FindStartAtEnd(shapes, logTarget);
    MarksOf<D> ended = (MarksOf<D>)near.exact & (MarksOf<D>)near.good;
    MarksOf<D> left = (MarksOf<D>)(near.logY < -kStartReach);
    PointOf<D> at{near.y, 1.0 - near.y};
    const auto elsewhere = [&]() ZUL_INLINED {
        D inside = StartInside(shapes, target, logTarget);
        if (!(shapes.Q() < 1)) return inside;
        const StartAtEnd<D> far = FindStartAtEnd(shapes.Mirrored(), elementary::CoreLog1p(-target));
        const MarksOf<D> taken = (MarksOf<D>)far.good & ~(MarksOf<D>)near.good;
        ended |= taken & (MarksOf<D>)far.exact;
        left |= taken & (MarksOf<D>)(far.logY < -kStartReach);
        at = {Select(taken, 1.0 - far.y, at.y), Select(taken, far.y, at.rest)};
        return Select(far.good, -far.Logit(), inside);
    };
    const D start = Either<D>(
        near.good, [&]() ZUL_INLINED { return near.Logit(); }, elsewhere);
    const D low = elementary::Splat<D>(-kLogitLimit);
    const D high = elementary::Splat<D>(shapes.HighestLogit());
    elementary::Store(searches.logTarget + i, logTarget);
    elementary::Store(searches.logit + i, Select(start < low, low, Select(high < start, high, start)));
    elementary::Store(searches.low + i, low);
    elementary::Store(searches.high + i, high);
    elementary::Store(searches.y + i, at.y);
    elementary::Store(searches.rest + i, at.rest);
    SetFates<D>(searches.fates + i, ended, left);
}

// Whether two points are on the same side of 0.5 and, seen from there, in the same branch of the pair, which sums a
// series. The tail that is computed is not a small complement, either.
template <class D>
ZUL_INLINE MarksOf<D> AreAlike(const PlannedShapes& shapes, const PointOf<D>& at, const PointOf<D>& next,
                               D target) {
    const PlannedShapes mirroredShapes = shapes.Mirrored();
    const BetaSidePlan& direct = shapes.Side();
    const BetaSidePlan& mirrored = mirroredShapes.Side();
    const MarksOf<D> far = (MarksOf<D>)(at.rest < at.y);
    const MarksOf<D> nextFar = (MarksOf<D>)(next.rest < next.y);
    const auto ofSide = [&](double BetaSidePlan::*member) {
        return Select(far, elementary::Splat<D>(mirrored.*member), elementary::Splat<D>(direct.*member));
    };
    const D split = ofSide(&BetaSidePlan::medianSplit);
    const D nextNear = Select(far, next.rest, next.y);
    const MarksOf<D> lower = (MarksOf<D>)(Select(far, at.rest, at.y) <= split);
    const MarksOf<D> nextLower = (MarksOf<D>)(nextNear <= split);
    const MarksOf<D> small = (MarksOf<D>)(ofSide(&BetaSidePlan::p) < 1.0) &
                             (MarksOf<D>)(nextNear * ofSide(&BetaSidePlan::q) < 1.0);
    const MarksOf<D> direction = far ^ lower;  // all bits: the tail is the computed one
    const MarksOf<D> known = direction | (MarksOf<D>)(target >= kLeastSureComplement);
    return ~(far ^ nextFar) & ~(lower ^ nextLower) & (lower | ~small) & known;
}

// What an evaluation has given.
template <class D>
struct BetaResidual {
    D excess;
    D slope;
    D steadiness;  // what has to be far from an underflow
    D terms;
};

// Whether the next evaluation may be left out: by the terms of the last one, as by NeedsNoEvaluation in
// beta_quantiles.cpp.
template <class D>
ZUL_INLINE MarksOf<D> NeedNoEvaluation(const PlannedShapes& shapes, const BetaResidual<D>& r,
                                       MarksOf<D> candidates, D target) {
    const double sum = shapes.P() + shapes.Q();
    if (!(sum <= kLargestSureSum)) return MarksOf<D>{};
    return candidates & (MarksOf<D>)(target > kSteady) & (MarksOf<D>)(r.steadiness > kSteady) &
           (MarksOf<D>)LeavesNothing(sum, r.terms, elementary::Absolute(r.excess), r.slope);
}

// As the loop of Refine in beta_quantiles.cpp after an evaluation with a slope or without one.
template <class D>
ZUL_INLINE void TakeStep(const PlannedShapes& shapes, bool maySkip, const PointOf<D>& at,
                         const BetaResidual<D>& r, MarksOf<D> left, BetaSearches& searches, std::size_t i) {
    const D logit = elementary::Load<D>(searches.logit + i);
    const auto below = r.excess < 0.0;
    const D low = Select(below, logit, elementary::Load<D>(searches.low + i));
    const D high = Select(below, elementary::Load<D>(searches.high + i), logit);
    const auto sloping = r.slope > kLeastSlope;
    const D slope = Select(sloping, r.slope, elementary::Splat<D>(1));
    const D aimed = Select(sloping, logit + StepOf(shapes.P(), shapes.Q(), at, r.excess, slope), low);
    const auto inside = (aimed > low) & (aimed < high);
    const D next = Select(inside, aimed, low + (high - low) / 2.0);
    MarksOf<D> ended = (MarksOf<D>)(elementary::Absolute(r.excess) <= kCloseToTarget);
    left |= ~ended & ((MarksOf<D>)(next == low) | (MarksOf<D>)(next == high));
    if (maySkip) {
        const D target = elementary::Load<D>(searches.target + i);
        const MarksOf<D> candidates = ~ended & (MarksOf<D>)inside & (MarksOf<D>)sloping;
        const MarksOf<D> close =
            NeedNoEvaluation(shapes, {r.excess, slope, r.steadiness, r.terms}, candidates, target);
        if (elementary::AnyTopBit(close)) {
            const PointOf<D> nextAt = AtLogit(next);
            const MarksOf<D> sure = close & AreAlike(shapes, at, nextAt, target);
            elementary::Store(searches.y + i, Select(sure, nextAt.y, at.y));
            elementary::Store(searches.rest + i, Select(sure, nextAt.rest, at.rest));
            ended |= sure;
        }
    }
    elementary::Store(searches.logit + i, next);
    elementary::Store(searches.low + i, low);
    elementary::Store(searches.high + i, high);
    SetFates<D>(searches.fates + i, ended, left);
}

template <class D>
ZUL_INLINE void TakeEvaluations(const PlannedShapes& shapes, bool maySkip, BetaSearches& searches,
                                std::size_t i) {
    const D target = elementary::Load<D>(searches.target + i);
    const PointOf<D> at{elementary::Load<D>(searches.y + i), elementary::Load<D>(searches.rest + i)};
    const D found = elementary::Load<D>(searches.tails + i);
    const MarksOf<D> left = (MarksOf<D>)(found <= 0.0) | (MarksOf<D>)(found > 2.0);  // NA
    const D one = elementary::Splat<D>(1);
    const D tail = Select(left, target, found);
    const D density = Select(left, one, elementary::Load<D>(searches.densities + i));
    const BetaResidual<D> residual{ExcessOf(tail, target, elementary::Load<D>(searches.logTarget + i)),
                                   density * at.y * at.rest / tail,
                                   density * Select(at.rest < at.y, at.rest, at.y),
                                   Select(left, one, elementary::Load<D>(searches.terms + i))};
    TakeStep(shapes, maySkip, at, residual, left, searches, i);
}

// Quantiles of a block by its elements.
struct BetaQuantiles {
    double* y;
    double* rest;
};

// Of the targets and elements that the searches hold. The result is NA where it is left.
template <class D>
void FindBetaQuantiles(const BetaQuantilePlan& plan, bool mirrored, BetaSearches& searches,
                       const BetaQuantiles& out) {
    const PlannedShapes shapes(plan, mirrored);
    if (searches.count == 0) return;
    const auto handOver = [&](std::size_t i, bool isKnown) ZUL_INLINED {
        out.y[searches.element[i]] = isKnown ? searches.y[i] : frame::kNA;
        out.rest[searches.element[i]] = isKnown ? searches.rest[i] : frame::kNA;
    };
    RepeatLast(searches.target, searches.count);
    for (std::size_t i = 0; i < searches.count; i += elementary::kLanesOf<D>)
        StartSearches<D>(shapes, searches, i);
    CloseRanks(searches, handOver);
    const BetaEvaluations evaluations{mirrored, searches.tails, searches.densities, searches.terms};
    for (int k = 1; k <= kPatience && searches.count > 0; ++k) {
        RepeatLastOne(searches);
        const auto pointsFrom = [&](std::size_t i) {
            const PointOf<D> at = AtLogit(elementary::Load<D>(searches.logit + i));
            elementary::Store(searches.y + i, at.y);
            elementary::Store(searches.rest + i, at.rest);
            return mirrored ? UnitLanes<D>{at.rest, at.y} : UnitLanes<D>{at.y, at.rest};
        };
        FillBetaPoints<D>(plan.pair, pointsFrom, searches.count, evaluations);
        for (double* const values : {searches.tails, searches.densities, searches.terms})
            RepeatLast(values, searches.count);
        for (std::size_t i = 0; i < searches.count; i += elementary::kLanesOf<D>)
            TakeEvaluations<D>(shapes, k < kPatience, searches, i);
        CloseRanks(searches, handOver);
    }
}

}  // namespace
}  // namespace zul::numerics
