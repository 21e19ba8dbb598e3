// The normal quantiles in lanes: numerics/normal.h.
#pragma once

#include <cstddef>
#include <type_traits>

#include "distributions/lanes/text.h"
#include "distributions/normal/lanes/cells.h"
#include "distributions/normal/lanes/pair.h"

namespace zul::kernels {
namespace {

// The vectors of a group.
inline constexpr int kNewtonWidth = 2;

// As StartingDeviate, but for its sign, of 1e-100 <= q <= 0.5.
template <class D>
ZUL_INLINE D StartingSize(D q) {
    constexpr double kCentre = 0.42;
    const D r = q - 0.5;
    const D s = r * r;
    const D near =
        r * (((-25.44106049637 * s + 41.39119773534) * s - 18.61500062529) * s + 2.50662823884) /
        ((((3.13082909833 * s - 21.06224101826) * s + 23.08336743743) * s - 8.4735109309) * s + 1.0);
    const auto isFar = Absolute(r) > kCentre;
    if (!AnyTopBit((BitsOf<D>)isFar)) return near;
    const D t = Sqrt(-elementary::CoreLog(q));
    const D far = (((2.32121276858 * t + 4.85014127135) * t - 2.29796479134) * t - 2.78718931138) /
                  ((1.63706781897 * t + 3.54388924762) * t + 1.0);
    return Select(isFar, far, near);
}

// Targets are negative where they are those of the lower tail.
template <class D>
ZUL_INLINE void Start(D q, Left<D>* left, D* x, D* target) {
    constexpr double kSmallestProbability = 1e-100;
    constexpr double kCentre = 1e-5;
    left->Where(q < kSmallestProbability);
    left->Where(1.0 - 2.0 * q <= kCentre);
    const D ordinary = Select(left->Are(), Splat<D>(0.25), q);
    const D size = StartingSize(ordinary);
    const D argument = size * size * 0.5;
    const auto isUpper = ordinary <= 0.25;
    *target = Select(isUpper, 2.0 * ordinary, -(1.0 - 2.0 * ordinary));
    // The lower side has lower targets, and the fraction upper ones.
    left->Where(isUpper & (argument <= kOneHalfTable.medianSplit));
    left->Where((ordinary > 0.25) & (argument >= 1.0));
    *x = Select(left->Are(), D{}, argument);
}

// One evaluation of the pair.
template <Branch kBranch, class D, int W>
ZUL_INLINE void EvaluatePair(const Group<D, W>& x, int first, int last, Tails<D, W>* tails) {
    if constexpr (kBranch == OnLowerSide) {
        const int most = kOneHalfTable.mostTerms[last] + 1;
        LowerTails<true>(x, first > 0 ? first - 1 : 0, most < 12 ? most : 12, tails);
    } else if constexpr (kBranch == OnSmallUpperSide) {
        const int sure = first - OneHalfTable::kFirstSmall - 1;
        SmallUpperTails<true>(x, sure > 1 ? sure : 1, tails);
    } else {
        const int from = first - OneHalfTable::kFirstFraction - 1;
        FractionTails<true>(x, from > 1 ? from : 1, tails);
    }
}

// Where x has its branch and, within one, the terms that are known of the argument that it comes from.
template <Branch kBranch, class D>
ZUL_INLINE auto StaysBy(D x, D start) {
    constexpr double kStay = 0.003;
    const auto stays = Absolute(x - start) <= kStay * start;
    if constexpr (kBranch == OnLowerSide)
        return stays & (x <= kOneHalfTable.medianSplit);
    else if constexpr (kBranch == OnSmallUpperSide)
        return stays & (x > kOneHalfTable.medianSplit) & (x < 1.0);
    else
        return stays & (x > 1.0);
}

template <class D, int W>
struct NewtonGroup {
    Group<D, W> x;
    Group<D, W> step;
    Group<BitsOf<D>, W> isDone;  // all bits, or none
    Group<BitsOf<D>, W> isLeft;
};

// What comes after an evaluation of the w-th vector: a step within the tolerance is not applied, a sure one is the last.
template <Branch kBranch, class D, int W>
ZUL_INLINE void TakeStep(const Tails<D, W>& tails, D start, D target, int w, NewtonGroup<D, W>* newton) {
    constexpr double kLargestSure = 30;
    const D x = newton->x.of[w];
    const D density = tails.density.of[w];
    D tail = tails.tail.of[w];
    newton->isLeft.of[w] |= (BitsOf<D>)(tail == frame::kNA) & ~newton->isDone.of[w];
    D beyond = kBranch == OnLowerSide ? -target - tail : tail - target;
    if constexpr (kBranch == OnSmallUpperSide) {
        const auto isLower = target < 0.0;
        tail = Select(isLower, 1.0 - tail, tail);
        beyond = Select(isLower, -target - tail, tail - target);
    }
    const D step = beyond / density;
    const D scale = Select(x < tail, tail, x);
    const D size = Absolute(step);
    const D next = x + step;
    const auto isSmall = size < scale * kSeriesTolerance;
    const auto isSure = (size <= kSureStep * x) & (x < kLargestSure) & StaysBy<kBranch>(next, start);
    const BitsOf<D> sure = (BitsOf<D>)isSure & ~(0 - (tails.unsure.of[w] >> 63));
    const BitsOf<D> live = ~newton->isDone.of[w];
    const BitsOf<D> moves = live & ~(BitsOf<D>)isSmall;
    newton->x.of[w] = Select((moves >> 63) != 0, next, x);
    const BitsOf<D> strays = moves & ~(BitsOf<D>)StaysBy<kBranch>(newton->x.of[w], start);
    newton->isLeft.of[w] |= strays;
    newton->x.of[w] = Select((strays >> 63) != 0, start, newton->x.of[w]);
    newton->isDone.of[w] |= (BitsOf<D>)isSmall | sure | strays;
}

// The deviates of a group from a place on, in place of its arguments; NA are those that are left.
template <Branch kBranch, class D, int W>
ZUL_INLINE void InvertGroup(Order<2>* order, std::size_t place) {
    constexpr int kEvaluations = 5;
    double* const x = order->columns[0] + place;
    const int first = RankOf(x[0]);
    const int last = RankOf(x[kPoints<D, W> - 1]);
    const Group<D, W> start = LoadGroup<D, W>(x);
    const Group<D, W> target = LoadGroup<D, W>(order->columns[1] + place);
    NewtonGroup<D, W> newton{start, {}, {}, {}};
    for (int k = 0; k < kEvaluations; ++k) {
        Tails<D, W> tails;
        EvaluatePair<kBranch>(newton.x, first, last, &tails);
        BitsOf<D> any{};
        ZUL_UNROLLED for (int w = 0; w < W; ++w) {
            TakeStep<kBranch>(tails, start.of[w], target.of[w], w, &newton);
            any |= ~newton.isDone.of[w];
        }
        if (!AnyTopBit(any)) break;
    }
    ZUL_UNROLLED for (int w = 0; w < W; ++w) {
        const D found = newton.x.of[w];
        const BitsOf<D> left = newton.isLeft.of[w] | ~newton.isDone.of[w];
        elementary::Store(x + w * kLanesOf<D>,
                          Select((left >> 63) != 0, Splat<D>(frame::kNA), Sqrt(found + found)));
    }
}

template <Branch kBranch, class D, int W>
ZUL_INLINE void InvertBranch(Order<2>* order) {
    for (std::size_t k = order->begin[kBranch]; k < order->end[kBranch]; k += W * kLanesOf<D>)
        InvertGroup<kBranch, D, W>(order, k);
}

// Of n arguments and targets. One function for all texts.
template <class D>
void ComputeSizes(Order<2>* order, std::size_t n) {
    Sort<D>(order, n);
    InvertBranch<OnLowerSide, D, kNewtonWidth>(order);
    InvertBranch<OnSmallUpperSide, D, kNewtonWidth>(order);
    InvertBranch<OnFractionSide, D, kNewtonWidth>(order);
}

// A text of the quantiles: TailOf gives the smaller tail of the normal distribution of a probability, and by the top bit
// where that is its lower one; Of what becomes of the deviates.
struct OfDeviates : OfNumbers {
    bool byUpperTail;
    template <class D>
    static ZUL_INLINE BitsOf<D> GateOf(D p) {
        return NotInside01(p);
    }
};

template <class D, class Text>
ZUL_INLINE void PrepareQuantiles(const Text& text, const double* in, std::size_t n, Work<2>* work) {
    for (std::size_t i = 0; i < n; i += kLanesOf<D>) {
        const D p = LoadFirst<D>(in + i, n - i);
        Left<D> left{Text::GateOf(p)};
        BitsOf<D> sign{};
        const D q = text.TailOf(Select(left.Are(), Splat<D>(0.5), p), &sign);
        D argument;
        D target;
        Start(q, &left, &argument, &target);
        elementary::Store(work->deviates + i, FromBits<D>(sign & elementary::kSignBit));
        elementary::Store(work->order.elements[0] + i, argument);
        elementary::Store(work->order.elements[1] + i, target);
    }
}

template <class D, class Text>
requires std::is_base_of_v<OfDeviates, Text> ZUL_INLINE bool FillVectors(const Text& text, double* out,
                                                                         const double* in, std::size_t n) {
    Work<2> work;
    PrepareQuantiles<D>(text, in, n, &work);
    ComputeSizes<D>(&work.order, n);
    BitsOf<D> any{};
    for (std::size_t i = 0; i < n; i += kLanesOf<D>) {
        const D size = work.order.template ResultsAt<D>(i);
        Left<D> left{};
        left.Where(size == frame::kNA);
        const D deviate =
            elementary::WithSignOf(Select(left.Are(), D{}, size), elementary::Load<D>(work.deviates + i));
        const D result = text.Of(deviate, &left);
        any |= left.marks;
        StoreFirst(out + i, n - i, Select(left.Are(), Splat<D>(frame::kNA), result));
    }
    return !AnyTopBit(any);
}

}  // namespace
}  // namespace zul::kernels
