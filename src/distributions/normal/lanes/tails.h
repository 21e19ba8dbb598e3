// The normal tails in lanes.
#pragma once

#include <cstddef>
#include <numbers>
#include <type_traits>

#include "distributions/lanes/text.h"
#include "distributions/normal/lanes/order.h"
#include "distributions/normal/lanes/pair.h"

namespace zul::kernels {
namespace {

// The vectors of a group: as many as hide the waiting and have room in the registers.
template <class D>
inline constexpr int kSeriesWidth = kLanesOf<D> == 2 ? 2 : 4;
template <class D>
inline constexpr int kFractionWidth = kLanesOf<D> == 8 ? 4 : 2;

// Half of the upper tails of the arguments of a group from a place on; NA are those that are left.
template <Branch kBranch, class D, int W>
ZUL_INLINE void HalveGroup(const Order& order, std::size_t place, Results* results) {
    const Group<D, W> x = LoadGroup<D, W>(order.x + place);
    const int first = RankOf(order.x[place]);
    Tails<D, W> tails;
    if constexpr (kBranch == OnLowerSide) {
        const int last = RankOf(order.x[place + kPoints<D, W> - 1]);
        LowerTails<false>(x, first, kOneHalfTable.mostTerms[last], &tails);
        ZUL_UNROLLED for (int w = 0; w < W; ++w) tails.tail.of[w] = 1.0 - tails.tail.of[w];
    } else if constexpr (kBranch == OnSmallUpperSide) {
        SmallUpperTails<false>(x, first - OneHalfTable::kFirstSmall, &tails);
    } else {
        FractionTails<false>(x, first - OneHalfTable::kFirstFraction, &tails);
    }
    double* const halves = results->of + place;
    ZUL_UNROLLED for (int w = 0; w < W; ++w) {
        const D tail = tails.tail.of[w];
        const D half = kBranch == OnFractionSide ? Select(tail == frame::kNA, tail, tail / 2.0) : tail / 2.0;
        elementary::Store(halves + w * kLanesOf<D>, half);
    }
}

template <Branch kBranch, class D, int W>
ZUL_INLINE void HalveBranch(const Order& order, Results* results) {
    for (std::size_t k = order.begin[kBranch]; k < order.end[kBranch]; k += W * kLanesOf<D>)
        HalveGroup<kBranch, D, W>(order, k, results);
}

// Of n arguments; NA also stands where nothing is. One function for all texts.
template <class D>
void ComputeHalves(Work* work, std::size_t n) {
    Arrange<D>(work->x, nullptr, n, &work->order);
    HalveBranch<OnLowerSide, D, kSeriesWidth<D>>(work->order, &work->results);
    HalveBranch<OnSmallUpperSide, D, kSeriesWidth<D>>(work->order, &work->results);
    HalveBranch<OnFractionSide, D, kFractionWidth<D>>(work->order, &work->results);
    work->results.of[Order::kNowhere] = frame::kNA;
}

// A text of the tails: DeviateOf gives the standard deviates, Of what becomes of their lower or upper tails.
struct OfTails : OfNumbers {
    bool upper;
};

template <class D, class Text>
ZUL_INLINE void PrepareTails(const Text& text, const double* in, std::size_t n, Work* work) {
    constexpr double kFarthest = 24;  // the square of its half is below kMost
    for (std::size_t i = 0; i < n; i += kLanesOf<D>) {
        const D at = LoadUpTo<D>(in, i, n);
        Left<D> left{Text::GateOf(at)};
        const D deviate = text.DeviateOf(FromBits<D>(Bits(at) & left.Others()), &left);
        const D t = Absolute(deviate / std::numbers::sqrt2);
        left.ByTopBit(NotBelow(Bits(t), Bits(kFarthest)));
        const D near = FromBits<D>(Bits(t) & left.Others());
        elementary::Store(work->deviates.of + i, deviate);
        elementary::Store(work->x.of + i, near * near);
    }
}

template <class D, class Text>
requires std::is_base_of_v<OfTails, Text> ZUL_INLINE bool FillVectors(const Text& text, double* out,
                                                                      const double* in, std::size_t n) {
    Work work;
    PrepareTails<D>(text, in, n, &work);
    ComputeHalves<D>(&work, n);
    Left<D> left{};
    for (std::size_t i = 0; i < n; i += kLanesOf<D>) {
        const D far = ResultsOf<D>(work.results, work.order, i);
        const auto isLeft = far == frame::kNA;
        left.Where(isLeft);
        // The tail away from the centre is the far one.
        const BitsOf<D> isFar =
            Bits(elementary::Load<D>(work.deviates.of + i)) ^ (text.upper ? elementary::kSignBit : 0);
        const D tail = Select((isFar >> 63) != 0, far, 1.0 - far);
        StoreUpTo(out, i, n, Select(isLeft, Splat<D>(frame::kNA), text.Of(tail)));
    }
    return !AnyTopBit(left.marks);
}

}  // namespace
}  // namespace zul::kernels
