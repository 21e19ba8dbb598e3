// Weibull's family in lanes.
#pragma once

#include "distributions/closed_forms/closed_forms.h"
#include "distributions/closed_forms/lanes/exponential.h"
#include "distributions/closed_forms/weibull.h"
#include "distributions/lanes/text.h"

namespace zul::kernels {
namespace {

// Exponents of which a power of an ordinary base is ordinary.
ZUL_INLINE bool IsOrdinaryExponent(double y) {
    return IsOrdinary(y) && FromBits<double>(AbsoluteBits(y)) < kOrdinaryExponent;
}

struct WeibullPdfText : OfNumbers, ScaleThreshold {
    double shape;
    bool Takes() const { return IsOrdinaryExponent(shape - 1) && ScaleThreshold::Takes(); }
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const auto below = x <= threshold;
        const D z = Select(below, Splat<D>(1), (x - threshold) / scale);
        const D power = Power(z, shape - 1, left);
        return Select(below, D{}, power * shape * Exp(-(power * z), left) / scale);
    }
};

ZUL_INLINE WeibullPdfText TextOf(const WeibullPdfKernel& at) {
    return {{}, {at.scale, at.threshold}, at.shape};
}

struct WeibullCdfText : OfNumbers, ScaleThreshold {
    double shape;
    bool upper;
    bool Takes() const { return IsOrdinaryExponent(shape) && ScaleThreshold::Takes(); }
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const auto below = x <= threshold;
        const D z = Select(below, Splat<D>(1), (x - threshold) / scale);
        return Select(below, Splat<D>(upper ? 1 : 0), StandardTail(Power(z, shape, left), upper, left));
    }
};

ZUL_INLINE WeibullCdfText TextOf(const WeibullCdfKernel& at) {
    return {{}, {at.scale, at.threshold}, at.shape, at.upper};
}

struct WeibullInvCdfText : ScaleThreshold {
    double shape;
    bool Takes() const {
        return shape > 1 / kOrdinaryExponent && IsOrdinary(shape) && ScaleThreshold::Takes();
    }
    template <class D>
    ZUL_INLINE D AtLogarithm(D logUpper, Left<D>* left) const {
        return Power(-logUpper, 1 / shape, left) * scale + threshold;
    }
    template <class D>
    ZUL_INLINE D AtLowerTail(D p, Left<D>* left) const {
        return AtLogarithm(LogOfRest(p), left);
    }
    template <class D>
    ZUL_INLINE D AtUpperTail(D q, Left<D>* left) const {
        return AtLogarithm(Log(q, left), left);
    }
};

ZUL_INLINE WeibullInvCdfText TextOf(const WeibullInvCdfKernel& at) {
    return {{at.scale, at.threshold}, at.shape};
}

}  // namespace
}  // namespace zul::kernels
