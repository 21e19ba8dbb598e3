// The normal tails in lanes.
#pragma once

#include <cstddef>
#include <numbers>
#include <type_traits>

#include "distributions/lanes/text.h"
#include "distributions/normal/lanes/cells.h"
#include "distributions/normal/lanes/pair.h"

namespace zul::kernels {
namespace {

// The vectors of a group: as many as hide the waiting and have room in the registers.
template <class D>
inline constexpr int kSeriesWidth = kLanesOf<D> == 2 ? 2 : 4;
template <class D>
inline constexpr int kFractionWidth = kLanesOf<D> == 8 ? 4 : 2;

// Half of the upper tails of a group from a place on, in place of its arguments; NA are those that are left.
template <Branch kBranch, class D, int W>
ZUL_INLINE void HalveGroup(double* at) {
    const Group<D, W> x = LoadGroup<D, W>(at);
    const int first = RankOf(at[0]);
    Tails<D, W> tails;
    if constexpr (kBranch == OnLowerSide) {
        const int last = RankOf(at[kPoints<D, W> - 1]);
        LowerTails<false>(x, first, kOneHalfTable.mostTerms[last], &tails);
        ZUL_UNROLLED for (int w = 0; w < W; ++w) tails.tail.of[w] = 1.0 - tails.tail.of[w];
    } else if constexpr (kBranch == OnSmallUpperSide) {
        SmallUpperTails<false>(x, first - OneHalfTable::kFirstSmall, &tails);
    } else {
        FractionTails<false>(x, first - OneHalfTable::kFirstFraction, &tails);
    }
    ZUL_UNROLLED for (int w = 0; w < W; ++w) {
        const D tail = tails.tail.of[w];
        const D half = kBranch == OnFractionSide ? Select(tail == frame::kNA, tail, tail / 2.0) : tail / 2.0;
        elementary::Store(at + w * kLanesOf<D>, half);
    }
}

template <Branch kBranch, class D, int W>
ZUL_INLINE void HalveBranch(Order<1>* order) {
    for (std::size_t k = order->begin[kBranch]; k < order->end[kBranch]; k += W * kLanesOf<D>)
        HalveGroup<kBranch, D, W>(order->columns[0] + k);
}

// Of n arguments. One function for all texts.
template <class D>
void ComputeHalves(Order<1>* order, std::size_t n) {
    Sort<D>(order, n);
    HalveBranch<OnLowerSide, D, kSeriesWidth<D>>(order);
    HalveBranch<OnSmallUpperSide, D, kSeriesWidth<D>>(order);
    HalveBranch<OnFractionSide, D, kFractionWidth<D>>(order);
}

// A text of the tails: DeviateOf gives the standard deviates, Of what becomes of their lower or upper tails.
struct OfTails : OfNumbers {
    bool upper;
};

template <class D, class Text>
ZUL_INLINE void PrepareTails(const Text& text, const double* in, std::size_t n, Work<1>* work) {
    constexpr double kFarthest = 24;  // the square of its half is below kMost
    for (std::size_t i = 0; i < n; i += kLanesOf<D>) {
        const D at = LoadFirst<D>(in + i, n - i);
        Left<D> left{Text::GateOf(at)};
        const D deviate = text.DeviateOf(FromBits<D>(Bits(at) & left.Others()), &left);
        const D t = Absolute(deviate / std::numbers::sqrt2);
        left.ByTopBit(NotBelow(Bits(t), Bits(kFarthest)));
        const D near = FromBits<D>(Bits(t) & left.Others());
        elementary::Store(work->deviates + i, deviate);
        elementary::Store(work->order.elements[0] + i, near * near);
    }
}

template <class D, class Text>
requires std::is_base_of_v<OfTails, Text> ZUL_INLINE bool FillVectors(const Text& text, double* out,
                                                                      const double* in, std::size_t n) {
    Work<1> work;
    PrepareTails<D>(text, in, n, &work);
    ComputeHalves<D>(&work.order, n);
    Left<D> left{};
    for (std::size_t i = 0; i < n; i += kLanesOf<D>) {
        const D far = work.order.template ResultsAt<D>(i);
        const auto isLeft = far == frame::kNA;
        left.Where(isLeft);
        // The tail away from the centre is the far one.
        const BitsOf<D> isFar =
            Bits(elementary::Load<D>(work.deviates + i)) ^ (text.upper ? elementary::kSignBit : 0);
        const D tail = Select((isFar >> 63) != 0, far, 1.0 - far);
        StoreFirst(out + i, n - i, Select(isLeft, Splat<D>(frame::kNA), text.Of(tail)));
    }
    return !AnyTopBit(left.marks);
}

}  // namespace
}  // namespace zul::kernels
