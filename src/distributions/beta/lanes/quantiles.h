// The quantiles of the beta, the F and the t family, in lanes.
#pragma once

#include <cstddef>

#include "distributions/beta/beta.h"
#include "distributions/beta/f.h"
#include "distributions/beta/student_t.h"
#include "distributions/lanes/text.h"
#include "frame/calls/in_blocks.h"
#include "numerics/beta/lanes/quantiles.h"
#include "numerics/beta/lanes/t_quantiles.h"

namespace zul::kernels {
namespace {

using numerics::BetaPlan;
using numerics::BetaQuantilePlan;

// The targets of a block, lower and upper tails, each the smaller one of its element.
struct TailTargets {
    double targets[2][frame::kBlock];
    unsigned short elements[2][frame::kBlock];
    std::size_t counts[2] = {};
};

// Those that are at least the least one, and below the end.
ZUL_INLINE void CollectTargets(bool byUpperTail, double least, double end, const double* in, std::size_t n,
                               TailTargets& targets) {
    for (std::size_t i = 0; i < n; ++i) {
        const double p = in[i];
        if (NotInside01(p) >> 63) continue;
        const bool upper = byUpperTail ? p < 0.5 : p > 0.5;
        const double target = upper == byUpperTail ? p : 1 - p;
        if (target < least || target >= end) continue;
        const std::size_t place = targets.counts[upper]++;
        targets.targets[upper][place] = target;
        targets.elements[upper][place] = static_cast<unsigned short>(i);
    }
}

// The quantiles of the beta distribution, with their complements.
template <class D>
ZUL_INLINE void FindQuantiles(const BetaQuantilePlan& plan, const TailTargets& targets, bool upper, double* x,
                              double* complement) {
    numerics::BetaSearches searches;
    const std::size_t all = targets.counts[upper];
    for (std::size_t done = 0; done < all; done += numerics::kBetaPoints) {
        const std::size_t rest = all - done;
        searches.count = rest < numerics::kBetaPoints ? rest : numerics::kBetaPoints;
        for (std::size_t k = 0; k < searches.count; ++k) {
            searches.target[k] = targets.targets[upper][done + k];
            searches.element[k] = targets.elements[upper][done + k];
        }
        numerics::FindBetaQuantiles<D>(
            plan, upper, searches,
            upper ? numerics::BetaQuantiles{complement, x} : numerics::BetaQuantiles{x, complement});
    }
}

// Of each family the quantile that belongs to one of the beta distribution.
struct OfBeta {
    template <class D>
    static ZUL_INLINE D Quantile(const BetaPlan&, D x, D, Left<D>*) {
        return x;
    }
};

// As SetFQuantile.
struct OfF {
    template <class D>
    static ZUL_INLINE D Quantile(const BetaPlan& plan, D x, D complement, Left<D>* left) {
        constexpr double kLargest = 0x1.fffffffffffffp1023;
        const D above = x * plan.sides[0].q;
        const D below = complement * plan.sides[0].p;
        const auto small = below < 1.0;
        const auto over = small & (above >= kLargest * Select(small, below, Splat<D>(1)));
        left->Where(over);
        return above / Select(over, Splat<D>(1), below);
    }
};

template <class Family>
struct BetaQuantileText : OfNumbers {
    BetaQuantilePlan plan;
    bool byUpperTail;

    bool Takes() const { return plan.pair.ordinary; }
    template <class D>
    ZUL_INLINE bool FillBlock(double* out, const double* in, std::size_t n) const {
        double x[frame::kBlock];
        double complement[frame::kBlock];
        for (std::size_t i = 0; i < frame::kBlock; ++i)
            x[i] = complement[i] = frame::kNA;
        TailTargets targets;
        CollectTargets(byUpperTail, numerics::kSmallTarget, 1, in, n, targets);
        for (const bool upper : {false, true})
            FindQuantiles<D>(plan, targets, upper, x, complement);
        bool all = true;
        for (std::size_t i = 0; i < n; i += kLanesOf<D>) {
            const D known = elementary::Load<D>(x + i);
            Left<D> left;
            left.Where(known > 1.0);
            const D inside = Select(left.Are(), Splat<D>(0.5), known);
            const D rest = Select(left.Are(), Splat<D>(0.5), elementary::Load<D>(complement + i));
            const D result = Family::Quantile(plan.pair, inside, rest, &left);
            elementary::Store(x + i, Select(left.Are(), Splat<D>(frame::kNA), result));
        }
        for (std::size_t i = 0; i < n; ++i) {
            out[i] = x[i];
            all &= !frame::IsNA(x[i]);
        }
        return all;
    }
};

struct TQuantileText : OfNumbers {
    numerics::TQuantilePlan plan;
    bool byUpperTail;

    bool Takes() const { return plan.ordinary; }
    template <class D>
    ZUL_INLINE bool FillBlock(double* out, const double* in, std::size_t n) const {
        for (std::size_t i = 0; i < n; ++i)
            out[i] = frame::kNA;
        TailTargets targets;
        CollectTargets(byUpperTail, numerics::kSmallestTail, 0.5, in, n, targets);
        numerics::TSearches searches;
        for (const bool upper : {false, true}) {
            searches.count = targets.counts[upper];
            for (std::size_t k = 0; k < searches.count; ++k) {
                searches.q[k] = targets.targets[upper][k];
                searches.element[k] = targets.elements[upper][k];
            }
            numerics::FindTQuantiles<D>(plan, upper ? 1 : -1, searches, out);
        }
        bool all = true;
        for (std::size_t i = 0; i < n; ++i)
            all &= !frame::IsNA(out[i]);
        return all;
    }
};

template <class Kernel>
inline constexpr bool kSearchesForBetaQuantile = false;
template <>
inline constexpr bool kSearchesForBetaQuantile<BetaInvCdfKernel> = true;
template <>
inline constexpr bool kSearchesForBetaQuantile<FInvCdfKernel> = true;
template <>
inline constexpr bool kSearchesForBetaQuantile<TInvCdfKernel> = true;
template <class Kernel>
inline constexpr bool kSearchesForBetaQuantile<EitherTail<Kernel>> = kSearchesForBetaQuantile<Kernel>;

ZUL_INLINE BetaQuantileText<OfBeta> TextOf(const BetaInvCdfKernel& at) {
    return {{}, at.Plan(), false};
}

ZUL_INLINE BetaQuantileText<OfF> TextOf(const FInvCdfKernel& at) {
    return {{}, at.Plan(), false};
}

ZUL_INLINE TQuantileText TextOf(const TInvCdfKernel& at) {
    return {{}, at.Plan(), false};
}

}  // namespace
}  // namespace zul::kernels
