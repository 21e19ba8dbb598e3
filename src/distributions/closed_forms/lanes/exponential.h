// The exponential family in lanes.
#pragma once

#include "distributions/closed_forms/exponential.h"
#include "distributions/lanes/text.h"

namespace zul::kernels {
namespace {

// The tail of the standard family, of t > 0.
template <class D>
ZUL_INLINE D StandardTail(D t, bool upper, Left<D>* left) {
    const D e = Exp(-t, left);
    if (upper) return e;
    left->Where(e > StandardExponentialTail::kCancels);
    return 1.0 - e;
}

struct ExponentialPdfText : OfNumbers, ScaleThreshold {
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const auto below = x < threshold;
        return Select(below, D{}, Exp(Select(below, D{}, -((x - threshold) / scale)), left) / scale);
    }
};

ZUL_INLINE ExponentialPdfText TextOf(const ExponentialPdfKernel& at) {
    return {{}, {at.scale, at.threshold}};
}

struct ExponentialCdfText : OfNumbers, ScaleThreshold {
    bool upper;
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const auto outside = x <= threshold;
        const D t = Select(outside, Splat<D>(1), (x - threshold) / scale);
        return Select(outside, Splat<D>(upper ? 1 : 0), StandardTail(t, upper, left));
    }
};

ZUL_INLINE ExponentialCdfText TextOf(const ExponentialCdfKernel& at) {
    return {{}, {at.scale, at.threshold}, at.upper};
}

struct ExponentialInvCdfText : ScaleThreshold {
    template <class D>
    ZUL_INLINE D AtLowerTail(D p, Left<D>*) const {
        return threshold - LogOfRest(p) * scale;
    }
    template <class D>
    ZUL_INLINE D AtUpperTail(D q, Left<D>* left) const {
        return threshold - Log(q, left) * scale;
    }
};

ZUL_INLINE ExponentialInvCdfText TextOf(const ExponentialInvCdfKernel& at) {
    return {{at.scale, at.threshold}};
}

}  // namespace
}  // namespace zul::kernels
