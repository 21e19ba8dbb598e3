// Quantiles of Student's t distribution in lanes: all searches of a block take a step in each round, by the operations of
// student_t.cpp. What is far out or needs more steps than most is left to the scalar routine: there the result is the
// bits of frame::kNA.
//
// All is in an unnamed namespace: see elementary/core/value.h.
#pragma once

#include <cstdint>

#include "elementary/core/power.h"
#include "elementary/core/value.h"
#include "frame/calls/in_blocks.h"
#include "frame/missing_value.h"
#include "numerics/beta/beta_fraction.h"
#include "numerics/beta/lanes/plan.h"
#include "numerics/beta/lanes/search.h"
#include "numerics/beta/t_quantile_steps.h"

namespace zul::numerics {
namespace {

// Fractions in flight: more do not stay in registers.
inline constexpr std::size_t kFractions = 2;

template <class D>
using Fractions = D[kFractions];

// Searches for quantiles t > 0.
struct TSearches {
    static constexpr std::size_t kCopies = kFractions * 8;
    static constexpr std::size_t kSpace = frame::kBlock + kCopies;
    std::size_t count = 0;
    double q[kSpace];
    double t[kSpace];
    double low[kSpace];
    double high[kSpace];
    unsigned short element[kSpace];
    std::uint64_t fates[kSpace];

    struct Columns {
        double* columns[4];
    };
    ZUL_INLINE Columns Kept() { return {{q, t, low, high}}; }
};

template <class D>
ZUL_INLINE void StartTSearches(const HillConstants& constants, TSearches& searches, std::size_t i) {
    constexpr double kLargest = 0x1.fffffffffffffp1023;
    const D q = elementary::Load<D>(searches.q + i);
    const D start = constants.d * 2 * q;
    const elementary::TwoDoubles<D> log =
        elementary::LogOfPower(elementary::Bits(start), elementary::Splat<D>(1 / constants.n));
    const D power = elementary::CoreExpOfTwo(log.high, log.low);
    const auto tiny = power < kTinyPower;
    const D one = elementary::Splat<D>(1);
    elementary::Store(searches.t + i, HillQuantile(constants, q, elementary::Select(tiny, one, power)));
    elementary::Store(searches.low + i, D{});
    elementary::Store(searches.high + i, elementary::Splat<D>(kLargest));
    SetFates<D>(searches.fates + i, BitsOf<D>{}, (BitsOf<D>)tiny);
}

// Two vectors of points, and what their fractions are to be taken of.
template <class D>
struct TFlight {
    Fractions<D> t;
    Fractions<D> x;
    Fractions<D> complement;
    Fractions<D> slope;
    Fractions<ConditionOf<D>> isOutside;
    Fractions<BitsOf<D>> left;
    Fractions<D> a;
    Fractions<D> b;
    Fractions<D> ofX;
    Fractions<D> ofComplement;
    Fractions<D> limit;
};

// What does not converge soon is left.
template <class D>
ZUL_INLINE void TakeFractionLimits(TFlight<D>& at) {
    constexpr int kMost = 200;
    BetaFractionOf<D> fractions[] = {{at.a[0], at.b[0], at.ofX[0], at.ofComplement[0]},
                                     {at.a[1], at.b[1], at.ofX[1], at.ofComplement[1]}};
    static_assert(sizeof fractions == kFractions * sizeof *fractions);
    Fractions<BitsOf<D>> live = {~BitsOf<D>{}, ~BitsOf<D>{}};
    Fractions<D> numerator = {};
    Fractions<D> denominator = {};
    for (int n = 1; n <= kMost && elementary::AnyTopBit(live[0] | live[1]); ++n) {
        for (std::size_t w = 0; w < kFractions; ++w) {
            fractions[w].Advance(n);
            numerator[w] = elementary::Select(live[w], fractions[w].Numerator(), numerator[w]);
            denominator[w] = elementary::Select(live[w], fractions[w].Denominator(), denominator[w]);
            live[w] &= ~(BitsOf<D>)fractions[w].Converged();
        }
    }
    for (std::size_t w = 0; w < kFractions; ++w) {
        at.left[w] |= live[w] | (BitsOf<D>)(denominator[w] == 0.0);
        const D divisor = elementary::Select(at.left[w], elementary::Splat<D>(1), denominator[w]);
        at.limit[w] = at.a[w] * (numerator[w] / divisor);
    }
}

// The step of one vector applied, as in SolveQuantile.
template <class D>
ZUL_INLINE void ApplyStep(const StepOfT<D>& step, D t, BitsOf<D> left, TSearches& searches, std::size_t i) {
    const BitsOf<D> ended = (BitsOf<D>)step.known & (BitsOf<D>)(elementary::Absolute(step.first) < kLastStep);
    left |= ~(BitsOf<D>)step.known;
    const auto up = step.second > 0.0;
    const D low = elementary::Select(up, t, elementary::Load<D>(searches.low + i));
    const D high = elementary::Select(up, elementary::Load<D>(searches.high + i), t);
    const D last = t + t * elementary::CoreExpm1(elementary::Select(ended, step.second, D{}));
    const D next = t * elementary::CoreExp(Bounded(step.second, -kLargeStep, kLargeStep));
    left |= ~ended & ~((BitsOf<D>)(next > low) & (BitsOf<D>)(next < high));
    elementary::Store(searches.t + i, elementary::Select(ended, last, next));
    elementary::Store(searches.low + i, low);
    elementary::Store(searches.high + i, high);
    SetFates<D>(searches.fates + i, ended, left);
}

template <class D>
ZUL_INLINE void TakePoints(const TQuantilePlan& plan, std::size_t w, D given, TFlight<D>& at) {
    constexpr double kMost = 1e100;
    constexpr double kLeastLog = -500;  // of the slope
    const double b = plan.df / 2;
    const D one = elementary::Splat<D>(1);
    const D half = elementary::Splat<D>(0.5);
    BitsOf<D> left = (BitsOf<D>)(given >= kMost) | (BitsOf<D>)(given <= 1 / kMost);
    const D t = elementary::Select(left, one, given);
    const D square = t * t;
    const D x = square / (plan.df + square);
    const D complement = plan.df / (plan.df + square);
    const D log = Either<D>(
        x < 0.5, [&]() ZUL_INLINED { return elementary::CoreLog1p(-x); },
        [&]() ZUL_INLINED { return elementary::CoreLog(complement); });
    left |= (BitsOf<D>)(b * log < kLeastLog);
    ConditionOf<D> isOutside = t > 3.0;
    if (plan.df < 2) isOutside = isOutside | (square > plan.df);
    at.t[w] = t;
    at.x[w] = x;
    at.complement[w] = complement;
    at.slope[w] = SlopeOf(TSquare<D>{x, complement, b, plan.gammaRatio}, elementary::Select(left, D{}, log));
    at.isOutside[w] = isOutside;
    at.left[w] = left;
    at.a[w] = elementary::Select(isOutside, elementary::Splat<D>(b), half);
    at.b[w] = elementary::Select(isOutside, half, elementary::Splat<D>(b));
    at.ofX[w] = elementary::Select(isOutside, complement, x);
    at.ofComplement[w] = elementary::Select(isOutside, x, complement);
}

// As NextStep.
template <class D>
ZUL_INLINE void TakeSteps(const TQuantilePlan& plan, TSearches& searches, std::size_t first) {
    TFlight<D> at;
    for (std::size_t w = 0; w < kFractions; ++w)
        TakePoints(plan, w, elementary::Load<D>(searches.t + first + w * elementary::kLanesOf<D>), at);
    TakeFractionLimits(at);
    for (std::size_t w = 0; w < kFractions; ++w) {
        const std::size_t i = first + w * elementary::kLanesOf<D>;
        const TSquare<D> square{at.x[w], at.complement[w], plan.df / 2, plan.gammaRatio};
        const D share = elementary::Select(at.isOutside[w], at.limit[w] / plan.df, at.limit[w]);
        const D q = elementary::Load<D>(searches.q + i);
        const StepOfT<D> step = FindStepOfT(q, square, at.slope[w], at.slope[w] * share, at.isOutside[w]);
        ApplyStep(step, at.t[w], at.left[w], searches, i);
    }
}

// Of the upper tails and elements that the searches hold, by the sign. The result is NA where it is left.
template <class D>
void FindTQuantiles(const TQuantilePlan& plan, double sign, TSearches& searches, double* out) {
    constexpr int kRounds = 10;
    if (searches.count == 0) return;
    const auto handOver = [&](std::size_t i, bool isKnown) ZUL_INLINED {
        out[searches.element[i]] = isKnown ? sign * searches.t[i] : frame::kNA;
    };
    const HillConstants constants(plan.df);
    RepeatLast<TSearches::kCopies>(searches.q, searches.count);
    for (std::size_t i = 0; i < searches.count; i += elementary::kLanesOf<D>)
        StartTSearches<D>(constants, searches, i);
    CloseRanks(searches, handOver);
    for (int k = 0; k < kRounds && searches.count > 0; ++k) {
        RepeatLastOne(searches);
        for (std::size_t i = 0; i < searches.count; i += kFractions * elementary::kLanesOf<D>)
            TakeSteps<D>(plan, searches, i);
        CloseRanks(searches, handOver);
    }
}

}  // namespace
}  // namespace zul::numerics
