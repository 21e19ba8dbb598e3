#include "numerics/beta/beta_quantiles.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <numbers>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/trigonometric.h"
#include "frame/error_state.h"
#include "numerics/beta/incomplete_beta.h"
#include "numerics/beta/quantile_steps.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "numerics/limits.h"
#include "numerics/roots/newton_refinement.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;
using frame::operator""_routine;

using Point = PointOf<double>;

// The lower tail beside its target: excess = log(tail / target), slope its derivative with respect to the
// logit; a slope of 0 says that only the sign of the excess is known.
struct Residual {
    double excess = 0;
    double slope = 0;
    bool known = true;
    bool steady = false;  // by the pair, far from an underflow
};

constexpr Residual kFarAbove{DBL_MAX, 0, true};
constexpr Residual kUnknown{0, 0, false};

// For a tail that the pair may take for an exact 0: from its logarithm.
Residual SmallTail(const BetaOrientation& shapes, const Point& at, double logTarget) {
    double factor = 0;
    double logPower = 0;
    if (at.y <= at.rest) {
        if (at.y > shapes.MedianSplit()) return kFarAbove;
        if (beta_Iabx(shapes, at.y, &factor) != kConverged) return kUnknown;
        logPower = BetaLogDensity(shapes, at.y);
    } else {
        const BetaOrientation mirrored = shapes.Mirrored();
        if (at.rest <= mirrored.MedianSplit()) return kFarAbove;
        if (beta_Jabx(mirrored, at.rest, &factor) != kConverged) return kUnknown;
        factor *= at.y / shapes.P();
        logPower = BetaLogDensity(mirrored, at.rest);
    }
    if (!(factor > 0)) return kUnknown;
    return {logPower + elementary::Log(factor) - logTarget, at.y * at.rest / factor, true};
}

Residual Evaluate(const BetaOrientation& shapes, const Point& at, double target, double logTarget) {
    if (target < kSmallTarget) return SmallTail(shapes, at, logTarget);
    double tail = 0;
    double other = 0;
    double density = 0;
    if (shapes.IsMirrored()) {
        beta_df(at.rest, at.y, shapes.Shapes(), &other, &tail, &density);
    } else {
        beta_df(at.y, at.rest, shapes.Shapes(), &tail, &other, &density);
    }
    if (ErrorState().Failed()) return kUnknown;
    if (!(tail > 0)) return SmallTail(shapes, at, logTarget);
    const double slope = density > 0 ? density * at.y * at.rest / tail : 0;
    const bool steady = target > kSteady && density * std::min(at.y, at.rest) > kSteady;
    return {ExcessOf(tail, target, logTarget), slope, true, steady};
}

// The quantiles in closed form: the first term is the whole tail, or the other one, and the arc sine
// distribution.
bool InClosedForm(const BetaOrientation& shapes, double target, Point* result) {
    const double p = shapes.P();
    const double q = shapes.Q();
    if (q == 1) {
        const double logY = LogOfRoot(elementary::Log(target), p);
        *result = {elementary::Exp(logY), -elementary::Expm1(logY)};
    } else if (p == 1) {
        const double logRest = LogOfRoot(elementary::Log1p(-target), q);
        *result = {-elementary::Expm1(logRest), elementary::Exp(logRest)};
    } else if (p == 0.5 && q == 0.5) {
        const double sine = elementary::Sin(std::numbers::pi / 2 * target);
        const double cosine = elementary::Cos(std::numbers::pi / 2 * target);
        *result = {sine * sine, cosine * cosine};
    } else {
        return false;
    }
    return true;
}

// The lower tail to be met, and whether evaluations that change nothing are left out.
struct Target {
    double tail;
    double log;
    bool briefly;
};

// Whether the pair at the next point, a step from the last one, is surely within kCloseToTarget of the target, and
// leaves the error state as it is, so that evaluating it would change nothing.
//
// Let f be the logarithm of the tail as a function of the logit, s = f', K = p + q + 1 and u = K |e / s| for the excess
// e. Then s <= p, and the curvature, third and fourth derivatives over s are at most 2 K, 6.25 K^2 and 30 K^3 (they are
// polynomials in p, q, s, y and 1 - y). The step is the inverse of the Taylor series up to the third order, so that it
// leaves an excess of at most (5 + 5 + 1.25) u^3 |e|, and a little of higher order: below 2e-11 by LeavesNothing.
//
// Of the n terms of the series, in number and kind the same at both points by RepeatsBetaTerms, what is left out is at
// most 2e-9 of their sum: no earlier ratio is below the last one. Relative to the sum it changes by no more than 4 n
// times the step, and counts for a tail that is the complement of the computed one at most four times: 4 * 2e-9 * 4 u =
// 1.3e-10, with n counted to K. The slope, which is as good as the tail, adds 1e-9 |e|, roundings add 1e-11 up to
// kLargestSureSum. Altogether that is below kCloseToTarget.
bool NeedsNoEvaluation(const BetaOrientation& shapes, double target, const Point& at, const Residual& r,
                       double nextLogit) {
    const double sum = shapes.P() + shapes.Q();
    if (!(r.steady && sum <= kLargestSureSum)) return false;
    if (!LeavesNothing(sum, static_cast<double>(ErrorState().count), std::abs(r.excess), r.slope))
        return false;
    const bool isComplement = (at.rest < at.y) == (ErrorState().method == BetaLower);
    if (isComplement && target < kLeastSureComplement) return false;
    const Point next = AtLogit(nextLogit);
    if ((at.rest < at.y) != (next.rest < next.y)) return false;
    return shapes.IsMirrored() ? RepeatsBetaTerms(next.rest, next.y, shapes.Shapes())
                               : RepeatsBetaTerms(next.y, next.rest, shapes.Shapes());
}

// From a start to the point with the target, between bounds. False: no convergence.
bool Refine(const BetaOrientation& shapes, const Target& target, double logit, Point* result) {
    constexpr int kEvaluationLimit = 200;

    double lo = -kLogitLimit;
    double hi = HighestLogit(shapes);
    double least = DBL_MAX;
    logit = std::clamp(logit, lo, hi);
    for (int k = 1; k <= kEvaluationLimit; ++k) {
        const Point at = AtLogit(logit);
        const Residual r = Evaluate(shapes, at, target.tail, target.log);
        if (!r.known) return false;
        if (std::abs(r.excess) < least) {
            least = std::abs(r.excess);
            *result = at;
        }
        if (least <= (k <= kPatience ? kCloseToTarget : kSeriesTolerance)) return true;
        (r.excess < 0 ? lo : hi) = logit;
        // From the side where the tail is flat there may be no step at all.
        double next =
            r.slope > kLeastSlope ? logit + StepOf(shapes.P(), shapes.Q(), at, r.excess, r.slope) : lo;
        if (!(next > lo && next < hi)) {
            next = lo + (hi - lo) / 2;
        } else if (target.briefly && k < kPatience && NeedsNoEvaluation(shapes, target.tail, at, r, next)) {
            *result = AtLogit(next);
            return true;
        }
        if (next == lo || next == hi) break;
        logit = next;
    }
    return least <= kSeriesTolerance;
}

// The lower quantile for a target of at most 0.5.
bool LowerQuantile(const BetaOrientation& shapes, double target, bool briefly, Point* result) {
    if (target == 0) {
        *result = {0, 1};
        return true;
    }
    if (InClosedForm(shapes, target, result)) return true;
    const double logTarget = elementary::Log(target);
    double logit = 0;
    const StartAtEnd<double> near = FindStartAtEnd(shapes, logTarget);
    if (near.good) {
        *result = {near.y, 1 - near.y};
        if (near.exact) return true;
        logit = near.Logit();
    } else {
        StartAtEnd<double> far{};
        if (shapes.Q() < 1) far = FindStartAtEnd(shapes.Mirrored(), elementary::Log1p(-target));
        if (!far.good) {
            logit = StartInside(shapes, target, logTarget);
        } else if (far.exact) {
            *result = {1 - far.y, far.y};
            return true;
        } else {
            logit = -far.Logit();
        }
    }
    return Refine(shapes, {target, logTarget, briefly}, logit, result);
}

void Quantile(double target, const BetaShapes& shapes, bool upper, const frame::RoutineName& routine,
              double* x, double* complement, bool briefly = true) {
    const double a = shapes.A();
    const double b = shapes.B();
    ErrorState().Begin(routine);
    ErrorState().method = 0;
    ErrorState().count = 0;
    *x = *complement = -DBL_MAX;
    if (!(target >= 0 && target <= 1 && a > 0 && a <= kShapeLimit && b > 0 && b <= kShapeLimit)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    // The smaller tail: 1 - target is exact where it is the one.
    if (target > 0.5) {
        upper = !upper;
        target = 1 - target;
    }
    Point result{};
    if (!LowerQuantile(upper ? shapes.Mirrored() : shapes.Direct(), target, briefly, &result)) {
        ErrorState().Fail(frame::LevelNoConvergence, routine);
        return;
    }
    *x = upper ? result.rest : result.y;
    *complement = upper ? result.y : result.rest;
    ErrorState().Begin(routine);
    if (target > 0 && (*x == 0 || *complement == 0)) ErrorState().level = frame::LevelUnderflow;
}

// x b / (complement a), the F quantile, where it does not overflow.
void SetFQuantile(double x, double complement, const BetaShapes& halves, double* value) {
    const double above = x * halves.B();
    const double below = complement * halves.A();
    if (below < 1 && above >= DBL_MAX * below) {
        *value = DBL_MAX;
        ErrorState().level = frame::LevelUnderflow;
    } else {
        *value = above / below;
    }
}

void FQuantile(double target, const BetaShapes& halves, bool upper, const frame::RoutineName& routine,
               double* value) {
    double x = 0;
    double complement = 0;
    *value = -DBL_MAX;
    Quantile(target, halves, upper, routine, &x, &complement);
    if (target == (upper ? 0 : 1)) ErrorState().Fail(frame::LevelDomain, routine);
    if (!ErrorState().Failed()) SetFQuantile(x, complement, halves, value);
}

}  // namespace

void beta_lower_quant(double p, const BetaShapes& shapes, double* x, double* complement) {
    Quantile(p, shapes, false, "beta_lower_quant"_routine, x, complement);
}

void beta_upper_quant(double q, const BetaShapes& shapes, double* x, double* complement) {
    Quantile(q, shapes, true, "beta_upper_quant"_routine, x, complement);
}

void beta_quant_in_full(double target, const BetaShapes& shapes, Side side, double* x, double* complement) {
    if (side == Side::Lower)
        Quantile(target, shapes, false, "beta_lower_quant"_routine, x, complement, false);
    else
        Quantile(target, shapes, true, "beta_upper_quant"_routine, x, complement, false);
}

void F_lower_quant(double p, const BetaShapes& halves, double* value) {
    FQuantile(p, halves, false, "F_lower_quant"_routine, value);
}

void F_upper_quant(double q, const BetaShapes& halves, double* value) {
    FQuantile(q, halves, true, "F_upper_quant"_routine, value);
}

void beta_newton(double target, const BetaShapes& shapes, double* x, Side side) {
    const auto pair = [&shapes](double at, double* lower, double* upper, double* density) {
        beta_df(at, shapes, lower, upper, density);
    };
    RefineByNewton(target, pair, x, side, "beta_newton"_routine);
}

}  // namespace zul::numerics
