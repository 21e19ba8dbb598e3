// The densities of the families that rest on the beta function, in lanes.
#pragma once

#include "distributions/beta/beta.h"
#include "distributions/beta/f.h"
#include "distributions/beta/student_t.h"
#include "distributions/lanes/text.h"
#include "frame/guarded.h"
#include "numerics/beta/beta_limits.h"
#include "numerics/beta/lanes/terms.h"

namespace zul::kernels {
namespace {

// As numerics::FastLog1p, for t > -1.
template <class D>
ZUL_INLINE D FastLog1p(D t) {
    const D sum = 1.0 + t;
    return elementary::CoreLog(sum) + (t - (sum - 1.0)) / sum;
}

// As frame::SafeExp.
template <class D>
ZUL_INLINE D SafeExp(D x, Left<D>* left) {
    const auto gone = x < -frame::kExpOverflowLimit;
    return Select(gone, D{}, Exp(Select(gone, D{}, x), left));
}

struct BetaPdfText : OfNumbers {
    BetaDensityPlan plan;
    bool Takes() const { return plan.ordinary; }
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const auto beyond = (x < numerics::kTinyArgument) | (x >= 1.0);
        left->Where(beyond);
        return SafeExp(LogDensity(Select(beyond, Splat<D>(0.5), x)), left);
    }
    template <class D>
    ZUL_INLINE D LogDensity(D x) const {
        const D logX = elementary::CoreLog(x);
        const double sum = plan.a + plan.b;
        if (plan.isFast) return (plan.a - 1) * logX + (plan.b - 1) * FastLog1p(-x) - plan.logBeta;
        const D logRest = elementary::CoreLog1p(-x);
        if (sum <= numerics::kBetaMediumSum)
            return (plan.a - 1) * logX + (plan.b - 1) * logRest + -plan.logBeta;
        return plan.densityConstant - numerics::LaneDeviance(plan.a, sum * x) -
               numerics::LaneDeviance(plan.b, sum * (1.0 - x)) - logX - logRest;
    }
};

ZUL_INLINE BetaPdfText TextOf(const BetaPdfKernel& kernel) {
    return {{}, kernel.Plan()};
}

struct FPdfText : OfNumbers {
    BetaDensityPlan plan;
    double ratio;  // of the degrees of freedom
    double logRatio;
    bool Takes() const { return plan.ordinary; }
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        constexpr double kLeast = 1e-150;
        const auto tiny = x < kLeast;
        left->Where(tiny);
        return SafeExp(LogDensity(Select(tiny, Splat<D>(0.5), x)), left);
    }
    template <class D>
    ZUL_INLINE D LogDensity(D x) const {
        const D logX = elementary::CoreLog(x);
        const D odds = x * ratio;
        const double sum = plan.a + plan.b;
        if (sum <= numerics::kBetaMediumSum) {
            return logX * (plan.a - 1) + logRatio * plan.a - plan.logBeta - FastLog1p(odds) * sum;
        }
        const D share = 1.0 / (1.0 + odds);
        const D deviance =
            numerics::LaneDeviance(plan.a, sum * odds * share) + numerics::LaneDeviance(plan.b, sum * share);
        return plan.densityConstant - deviance - logX;
    }
};

ZUL_INLINE FPdfText TextOf(const FPdfKernel& kernel) {
    const FDensityPlan plan = kernel.Plan();
    return {{}, plan.beta, plan.ratio, plan.logRatio};
}

struct TPdfText : OfNumbers {
    TDensityPlan plan;
    bool Takes() const { return plan.ordinary; }
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        constexpr double kMedium = 1e100;
        const auto large = Absolute(x) >= kMedium;
        left->Where(large);
        const D size = Select(large, D{}, Absolute(x));
        return SafeExp(plan.logScale - (plan.df + 1) / 2 * FastLog1p(size * size / plan.df), left);
    }
};

ZUL_INLINE TPdfText TextOf(const TPdfKernel& kernel) {
    return {{}, kernel.Plan()};
}

}  // namespace
}  // namespace zul::kernels
