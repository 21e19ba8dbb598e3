// The tails of the families that rest on the incomplete beta pair, in lanes.
#pragma once

#include <cstddef>

#include "distributions/beta/beta.h"
#include "distributions/beta/f.h"
#include "distributions/beta/student_t.h"
#include "distributions/lanes/text.h"
#include "numerics/beta/lanes/pair.h"

namespace zul::kernels {
namespace {

using numerics::BetaPlan;
using numerics::UnitLanes;

// The arguments, whatever they are, that do not lie in [least, most], which are positive.
template <class D>
ZUL_INLINE BitsOf<D> OutsideOf(D x, double least, double most) {
    const BitsOf<D> topBits = (Bits(x) - Bits(least)) | (Bits(most) - Bits(x));
    return (BitsOf<D>)(topBits >= elementary::kSignBit);
}

// Of each family the arguments that are left to the kernel, the point of the pair that belongs to an argument, and the
// tail, from that of the pair.
struct BetaPoints {
    template <class D>
    static ZUL_INLINE BitsOf<D> Outside(D x) {
        constexpr double kLast = 0x1.fffffffffffffp-1;
        return OutsideOf(x, numerics::kLeastLanePoint, kLast);
    }
    template <class D>
    static ZUL_INLINE UnitLanes<D> Point(const BetaPlan&, D x) {
        return {x, 1.0 - x};
    }
};

ZUL_INLINE BetaPoints PointsOf(const BetaCdfKernel&) {
    return {};
}

// As F_ncdf.
struct FPoints {
    template <class D>
    static ZUL_INLINE BitsOf<D> Outside(D f) {
        constexpr double kMost = 1e30;  // NA, which the kernel refuses, is above it
        return OutsideOf(f, 1 / kMost, kMost);
    }
    template <class D>
    static ZUL_INLINE UnitLanes<D> Point(const BetaPlan& plan, D f) {
        const double a = plan.sides[0].p;
        const double b = plan.sides[0].q;
        const auto below = f <= 1.0;
        const D first = Select(below, a * f, Splat<D>(a));
        const D second = Select(below, Splat<D>(b), b / f);
        const D total = first + second;
        return {first / total, second / total};
    }
};

ZUL_INLINE FPoints PointsOf(const FCdfKernel&) {
    return {};
}

// As t_df, from the upper tail of the pair.
struct TPoints {
    template <class D>
    static ZUL_INLINE BitsOf<D> Outside(D t) {
        constexpr double kMost = 1e30;
        return OutsideOf(Absolute(t), 1 / kMost, kMost);
    }
    template <class D>
    static ZUL_INLINE UnitLanes<D> Point(const BetaPlan& plan, D t) {
        const double df = 2 * plan.sides[0].q;
        const D square = t * t;
        return {square / (df + square), df / (df + square)};
    }
    template <class D>
    static ZUL_INLINE D Tail(bool upper, D t, D outside, Left<D>* left) {
        left->Where(outside > 1.0);  // NA
        const D far = Select(outside < numerics::kTinyArgument, D{}, outside / 2.0);
        return Select(upper ? t > 0.0 : t <= 0.0, far, 1.0 - far);
    }
};

ZUL_INLINE TPoints PointsOf(const TCdfKernel&) {
    return {};
}

template <class Kernel>
concept RestsOnBetaPair = requires(const Kernel& kernel) {
    PointsOf(kernel);
};

// The tail of the pair at count arguments, up to kBetaPoints. Whether none is left.
template <class D, class Points>
ZUL_INLINE bool FillPairBlock(const BetaPlan& plan, bool upper, double* out, const double* in,
                              std::size_t count) {
    const auto pointsFrom = [&](std::size_t i) {
        const D x = LoadFirst<D>(in + i, count - i);
        const BitsOf<D> outside = Points::Outside(x);
        const UnitLanes<D> at = Points::Point(plan, Select(outside, Splat<D>(0.5), x));
        return UnitLanes<D>{Select(outside, D{}, at.x), Select(outside, Splat<D>(1), at.complement)};
    };
    return numerics::FillBetaPoints<D>(plan, pointsFrom, count, numerics::BetaTailsOnly{upper, out});
}

template <class D, class Points>
bool FillTailBlock(const numerics::BetaTailPlan& plan, double* out, const double* in, std::size_t count) {
    if constexpr (requires(D x, Left<D> * left) { Points::Tail(true, x, x, left); }) {
        bool all = FillPairBlock<D, Points>(plan.pair, true, out, in, count);
        for (std::size_t i = 0; i < count; i += kLanesOf<D>) {
            const D x = LoadFirst<D>(in + i, count - i);
            Left<D> left{Points::Outside(x)};
            const D inside = Select(left.marks, D{}, x);
            const D tail = Points::Tail(plan.upper, inside, LoadFirst<D>(out + i, count - i), &left);
            const D result = Select(left.marks, Splat<D>(frame::kNA), tail);
            all &= !AnyTopBit(left.marks);
            StoreFirst(out + i, count - i, result);
        }
        return all;
    } else {
        return FillPairBlock<D, Points>(plan.pair, plan.upper, out, in, count);
    }
}

template <class D, class Kernel>
bool FillByBetaPair(Kernel& kernel, double* out, const double* in, std::size_t n) {
    using Points = decltype(PointsOf(kernel));
    const numerics::BetaTailPlan plan = kernel.Plan();
    if (!plan.pair.ordinary) {
        for (std::size_t i = 0; i < n; ++i)
            out[i] = frame::kNA;
        return false;
    }
    bool all = true;
    for (std::size_t done = 0; done < n; done += numerics::kBetaPoints) {
        const std::size_t left = n - done;
        const std::size_t count = left < numerics::kBetaPoints ? left : numerics::kBetaPoints;
        all &= FillTailBlock<D, Points>(plan, out + done, in + done, count);
    }
    return all;
}

}  // namespace
}  // namespace zul::kernels
