// The search for gamma quantiles of a block: with the operations of "gamma_lower_quant" and "gamma_upper_quant" from
// where it starts. In each round the points of all that are still searched for are evaluated, sorted by how.
#pragma once

#include <cstddef>
#include <cstdint>

#include "elementary/core/exponential.h"
#include "elementary/core/logarithm.h"
#include "elementary/core/root.h"
#include "numerics/gamma/gamma_quantiles.h"
#include "numerics/gamma/lanes/cells.h"
#include "numerics/gamma/lanes/fine_tails.h"
#include "numerics/lanes/sorted_block.h"
#include "numerics/limits.h"

namespace zul::numerics::gamma_lanes {
namespace {

// Where the searches are, what they look for, and between which ends; the branches are those of FineGammaTails.
enum SearchColumn { PointColumn, TailColumn, LowColumn, HighColumn };
enum FineBranch { FineLowerBranch, FineUpperBranch, FineOtherBranch };
using SortedSearches = SortedBlock<kPairBlock, 4, kCells, kCells, kCells>;

// What the cell of a point depends on.
class FineCells {
public:
    explicit ZUL_INLINE FineCells(const GammaSearchConstants& g)
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
        const BitsOf<D> first = Select(third, cell + kCells * FineOtherBranch,
                                       Select(upper, cell + kCells * FineUpperBranch, cell));
        return Select(out, cell * 0 + SortedSearches::kLeftOut, first);
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

// One round for the points of one branch: the next point of each, negative where that is its quantile, NA for those that
// are left.
template <class D, class Tails>
ZUL_INLINE void SearchBranch(const GammaSearchConstants& g, SortedSearches* searches, FineBranch branch,
                             Tails tails) {
    for (std::size_t i = searches->begin[branch]; i < searches->end[branch]; i += kVectors * kLanesOf<D>) {
        FineGroup<D> group;
        EachVector(ZUL_VECTOR {
            group.x[w] = elementary::Load<D>(searches->columns[PointColumn] + i + w * kLanesOf<D>);
        });
        tails(&group);
        EachVector(ZUL_VECTOR {
            const auto column = [&](SearchColumn k) __attribute__((always_inline)) {
                return searches->columns[k] + i + w * kLanesOf<D>;
            };
            const SearchStep<D> step = StepOf(g, group, w, elementary::Load<D>(column(TailColumn)));
            const D lo = Select(step.beyond, elementary::Load<D>(column(LowColumn)), group.x[w]);
            const D hi = Select(step.beyond, group.x[w], elementary::Load<D>(column(HighColumn)));
            const MaskOf<D> ends = step.error < kSearchTolerance;
            const MaskOf<D> left = step.bad | (~ends & ((step.next <= lo) | (step.next >= hi)));
            const D next = Select(ends, -step.next, step.next);
            elementary::Store(column(PointColumn), Select(left, Splat<D>(frame::kNA), next));
            elementary::Store(column(LowColumn), lo);
            elementary::Store(column(HighColumn), hi);
        });
    }
}

template <class D>
ZUL_INLINE void SearchRound(const GammaSearchConstants& g, const FineReciprocals& reciprocals,
                            std::size_t count, SortedSearches* searches) {
    const FineCells cells(g);
    double* const points = searches->elements[PointColumn];
    for (std::size_t i = count; i % SortedSearches::kMostLanes != 0; ++i)
        points[i] = points[count - 1];
    for (std::size_t i = 0; i < count; i += kLanesOf<D>)
        searches->template SetCells<D>(i, cells.Of(elementary::Load<D>(points + i)));
    searches->Sort(count);
    SearchBranch<D>(
        g, searches, FineLowerBranch, [&](FineGroup<D> * group) __attribute__((always_inline)) {
            FineLowerTails(g, reciprocals, group);
        });
    SearchBranch<D>(
        g, searches, FineUpperBranch, [&](FineGroup<D> * group) __attribute__((always_inline)) {
            FineUpperTails(g, reciprocals, group);
        });
    SearchBranch<D>(
        g, searches, FineOtherBranch, [&](FineGroup<D> * group) __attribute__((always_inline)) {
            if (g.a < 1)
                FineSmallTails(g, reciprocals, group);
            else
                FineUniformTails(g, reciprocals, group);
        });
}

// The searches that go on, by their number; those that have ended give their quantiles to z.
ZUL_INLINE std::size_t KeepSearching(std::size_t count, std::uint16_t* targets, SortedSearches* searches,
                                     double* z) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t place = searches->places[i];
        const double x = searches->columns[PointColumn][place];
        if (x < 0) z[targets[i]] = -x;
        if (x < 0 || x == frame::kNA) continue;
        for (int k = PointColumn; k <= HighColumn; ++k)
            searches->elements[k][kept] = searches->columns[k][place];
        targets[kept++] = targets[i];
    }
    return kept;
}

// z: of the targets of BeginSearches, the quantiles that are found.
template <class D>
void Search(const GammaShape& shape, const double* targets, std::size_t n, double* z) {
    // Nearly all take one or two.
    constexpr int kRounds = 8;
    const GammaSearchConstants g = SearchConstantsOf(shape);
    FineReciprocals reciprocals;
    SetReciprocals(g.a, &reciprocals);
    SortedSearches searches;
    std::uint16_t targetOf[kPairBlock];
    std::size_t count = BeginSearches(
        shape, targets, n, {searches.elements[PointColumn], searches.elements[TailColumn], targetOf}, z);
    for (std::size_t i = 0; i < count; ++i) {
        searches.elements[LowColumn][i] = 0;
        searches.elements[HighColumn][i] = kArgumentLimit;
    }
    for (int round = 0; round < kRounds && count > 0; ++round) {
        SearchRound<D>(g, reciprocals, count, &searches);
        count = KeepSearching(count, targetOf, &searches, z);
    }
}

}  // namespace
}  // namespace zul::numerics::gamma_lanes
