// The log-logistic family in lanes.
#pragma once

#include "distributions/closed_forms/lanes/logistic.h"
#include "distributions/closed_forms/log_logistic.h"
#include "distributions/lanes/text.h"
#include "frame/missing_value.h"

namespace zul::kernels {
namespace {

// log(x - threshold), 0 where that is not positive.
template <class D>
ZUL_INLINE D LogDistance(D x, double threshold, Left<D>* left) {
    return Log(Select(x > threshold, x - threshold, Splat<D>(1)), left);
}

struct LogLogisticPdfText : OfNumbers, LocationScaleThreshold {
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const auto above = x > threshold;
        const D density = LogisticDensity((LogDistance(x, threshold, left) - location) / scale, scale, left);
        left->Where(density >= frame::kNA);
        return Select(above, density / Select(above, x - threshold, Splat<D>(1)), D{});
    }
};

ZUL_INLINE LogLogisticPdfText TextOf(const LogLogisticPdfKernel& at) {
    return {{}, {at.location, at.scale, at.threshold}};
}

struct LogLogisticCdfText : OfNumbers, LocationScaleThreshold {
    bool upper;
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const D tail = LogisticTail((LogDistance(x, threshold, left) - location) / scale, upper, left);
        return Select(x > threshold, tail, Splat<D>(upper ? 1 : 0));
    }
};

ZUL_INLINE LogLogisticCdfText TextOf(const LogLogisticCdfKernel& at) {
    return {{}, {at.location, at.scale, at.threshold}, at.upper};
}

struct LogLogisticInvCdfText {
    LogisticInvCdfText logistic;
    double threshold;
    bool Takes() const { return logistic.Takes() && IsOrdinary(threshold); }
    template <class D>
    ZUL_INLINE D AtLowerTail(D p, Left<D>* left) const {
        return Exp(logistic.AtLowerTail(p, left), left) + threshold;
    }
    template <class D>
    ZUL_INLINE D AtUpperTail(D q, Left<D>* left) const {
        return Exp(logistic.AtUpperTail(q, left), left) + threshold;
    }
};

ZUL_INLINE LogLogisticInvCdfText TextOf(const LogLogisticInvCdfKernel& at) {
    return {{{at.location, at.scale}}, at.threshold};
}

}  // namespace
}  // namespace zul::kernels
