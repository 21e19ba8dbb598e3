// The search for gamma quantiles of a block: with the operations of "gamma_lower_quant" and "gamma_upper_quant" from
// where it starts. In each round the points of all that are still searched for are evaluated, sorted as the arguments
// of the pair are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"
#include "elementary/core/root.h"
#include "numerics/gamma/gamma_quantiles.h"
#include "numerics/gamma/lanes/fine_tails.h"
#include "numerics/gamma/lanes/sorted_arguments.h"
#include "numerics/limits.h"

namespace zul::numerics::gamma_lanes {
namespace {

// Where the way of an argument through FineGammaTails is found, and about how far it goes.
class FinePlaces {
public:
    explicit ZUL_INLINE FinePlaces(const GammaSearchConstants& g)
        : a_(g.a),
          least_(g.a < 1 ? 1e-100 : 1e-25),
          largest_(g.a < kStirlingShape ? 800 : 1e8),
          fractionStart_(g.a + 1 > kSmallFineArgument ? g.a + 1 : kSmallFineArgument),
          smallBelow_(g.a < 1 ? kSmallFineArgument : 0),
          width_(g.a >= kFineUniformShape ? kFineUniformWidth * g.a : -1) {}

    template <class D>
    ZUL_INLINE BitsOf<D> Of(D x) const {
        const MaskOf<D> out = (x < least_) | (x > largest_);
        const MaskOf<D> upper = x >= fractionStart_;
        const MaskOf<D> third = (x < smallBelow_) | (Absolute(x - a_) <= width_);
        const D along = Select(upper, fractionStart_ / x, x / fractionStart_);
        const BitsOf<D> cell = Whole(Select(out, D{}, along) * (kCells - 1.0));
        const BitsOf<D> first = Select(third, cell + 2 * kCells, Select(upper, cell + kCells, cell));
        return Select(out, cell * 0 + kLeftOut, first);
    }

private:
    double a_;
    double least_;
    double largest_;
    double fractionStart_;
    double smallBelow_;
    double width_;
};

// What an evaluation says of the next point.
template <class D>
struct SearchStep {
    D next;
    D error;
    MaskOf<D> beyond;
    MaskOf<D> bad;
};

template <class D>
ZUL_INLINE SearchStep<D> StepOf(const GammaSearchConstants& g, const FineGroup<D>& group, int w, D target) {
    constexpr double kLeastRatio = 1e-20;
    constexpr double kLeastTail = 1e-290;
    const MaskOf<D> isUpper = target < 0.0;
    const D wanted = Absolute(target);
    const D x = group.x[w];
    D tail = Select(isUpper, group.upper[w], group.lower[w]);
    SearchStep<D> step;
    step.beyond = (isUpper & (tail < wanted)) | (~isUpper & (tail > wanted));
    step.bad = group.bad[w] | (tail < kLeastTail);
    tail = Select(step.bad, wanted, tail);
    D r = Select(isUpper, Splat<D>(-g.a), Splat<D>(g.a)) * group.power[w] / tail;
    step.bad |= Absolute(r) < kLeastRatio;
    r = Select(step.bad, Splat<D>(1), r);
    const D difference = (tail - wanted) / wanted;
    const MaskOf<D> near = Absolute(difference) < 0.5;
    D logarithm = elementary::CoreLog1p(Select(near, difference, D{}));
    if (AnyOf<D>(~near)) logarithm = Select(near, logarithm, elementary::CoreLog(tail / wanted));
    const D newton = -logarithm / r;
    const D slope = g.a - x - r;
    const D c2 = slope / 2.0;
    const D c3 = (slope * (slope - r) - x) / 6.0;
    const D root = elementary::Sqrt(Absolute(c3));
    const D theta = Absolute(newton) * Select(Absolute(c2) < root, root, Absolute(c2));
    const MaskOf<D> far = theta > kSearchReach;
    const D series = newton * (1.0 - newton * (c2 - newton * (2.0 * c2 * c2 - c3)));
    const D steepness = Select(Absolute(r) > 1.0, Absolute(r), Splat<D>(1));
    step.error = Select(far, Splat<D>(1), 5.0 * Absolute(newton) * theta * theta * theta * steepness);
    D length = Select(far, newton, series);
    length = Select(length < -kLongestSearchStep, Splat<D>(-kLongestSearchStep), length);
    length = Select(length > kLongestSearchStep, Splat<D>(kLongestSearchStep), length);
    step.next = x + x * elementary::CoreExpm1(length);
    return step;
}

template <class D>
ZUL_INLINE D Gathered(const double* values, const std::uint16_t* index) {
    double gathered[kLanesOf<D>];
    for (int k = 0; k < kLanesOf<D>; ++k)
        gathered[k] = values[index[k]];
    return elementary::Load<D>(gathered);
}

// One round for the arguments of one way: the next point of each, negative where that is its quantile, and NA for those
// that are left.
template <class D, class Tails>
ZUL_INLINE void SearchBranch(const GammaSearchConstants& g, SortedArguments* sorted, int branch,
                             GammaSearches* searches, Tails tails) {
    const std::size_t begin = sorted->begin[branch];
    const std::size_t end = sorted->end[branch];
    if (begin == end) return;
    for (std::size_t i = end; i < end + SortedArguments::kRoom; ++i) {
        sorted->x[i] = sorted->x[end - 1];
        sorted->index[i] = sorted->index[end - 1];
    }
    for (std::size_t i = begin; i < end; i += kVectors * kLanesOf<D>) {
        FineGroup<D> group;
        EachVector(ZUL_VECTOR { group.x[w] = elementary::Load<D>(sorted->x + i + w * kLanesOf<D>); });
        tails(&group);
        EachVector(ZUL_VECTOR {
            const std::uint16_t* const index = sorted->index + i + w * kLanesOf<D>;
            const SearchStep<D> step = StepOf(g, group, w, Gathered<D>(searches->target, index));
            const D lo = Select(step.beyond, Gathered<D>(searches->lo, index), group.x[w]);
            const D hi = Select(step.beyond, group.x[w], Gathered<D>(searches->hi, index));
            const MaskOf<D> ends = step.error < kSearchTolerance;
            const MaskOf<D> left = step.bad | (~ends & ((step.next <= lo) | (step.next >= hi)));
            double results[3][kLanesOf<D>];
            elementary::Store(results[0],
                              Select(left, Splat<D>(frame::kNA), Select(ends, -step.next, step.next)));
            elementary::Store(results[1], lo);
            elementary::Store(results[2], hi);
            for (int k = 0; k < kLanesOf<D>; ++k) {
                searches->x[index[k]] = results[0][k];
                searches->lo[index[k]] = results[1][k];
                searches->hi[index[k]] = results[2][k];
            }
        });
    }
}

template <class D>
ZUL_INLINE void SearchRound(const GammaSearchConstants& g, const FineReciprocals& reciprocals,
                            GammaSearches* searches) {
    constexpr std::size_t kLanes = kLanesOf<D>;
    std::uint64_t places[kPairBlock + kLanes];
    const FinePlaces placing(g);
    for (std::size_t i = searches->count; i < searches->count + kLanes; ++i)
        searches->x[i] = searches->x[searches->count - 1];
    for (std::size_t i = 0; i < searches->count; i += kLanes) {
        const BitsOf<D> place = placing.Of(elementary::Load<D>(searches->x + i));
        std::memcpy(places + i, &place, sizeof place);
    }
    SortedArguments sorted;
    Sort(places, searches->x, searches->count, &sorted);
    const std::size_t leftOut = sorted.end[SortedArguments::kBranches - 1] + SortedArguments::kRoom;
    for (std::size_t i = leftOut; i < leftOut + sorted.leftOut; ++i)
        searches->x[sorted.index[i]] = frame::kNA;
    SearchBranch<D>(
        g, &sorted, 0, searches, [&](FineGroup<D> * group) __attribute__((always_inline)) {
            FineLowerTails(g, reciprocals, group);
        });
    SearchBranch<D>(
        g, &sorted, 1, searches, [&](FineGroup<D> * group) __attribute__((always_inline)) {
            FineUpperTails(g, reciprocals, group);
        });
    SearchBranch<D>(
        g, &sorted, 2, searches, [&](FineGroup<D> * group) __attribute__((always_inline)) {
            if (g.a < 1)
                FineSmallTails(g, reciprocals, group);
            else
                FineUniformTails(g, reciprocals, group);
        });
}

// Those that have ended go to their places in z, which stay as they are of those that are left.
ZUL_INLINE void KeepSearching(GammaSearches* searches, double* z) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < searches->count; ++i) {
        const double x = searches->x[i];
        if (x < 0) z[searches->place[i]] = -x;
        if (x < 0 || x == frame::kNA) continue;
        searches->x[count] = x;
        searches->lo[count] = searches->lo[i];
        searches->hi[count] = searches->hi[i];
        searches->target[count] = searches->target[i];
        searches->place[count] = searches->place[i];
        ++count;
    }
    searches->count = count;
}

// z: the quantiles that are found.
template <class D>
ZUL_INLINE void Search(const GammaSearchConstants& g, GammaSearches* searches, double* z) {
    // Nearly all take one or two.
    constexpr int kRounds = 8;
    FineReciprocals reciprocals;
    SetReciprocals(g.a, &reciprocals);
    for (int round = 0; round < kRounds && searches->count > 0; ++round) {
        SearchRound<D>(g, reciprocals, searches);
        KeepSearching(searches, z);
    }
}

}  // namespace
}  // namespace zul::numerics::gamma_lanes
