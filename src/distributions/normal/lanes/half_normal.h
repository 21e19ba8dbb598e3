// The half-normal family in lanes.
#pragma once

#include "distributions/lanes/text.h"
#include "distributions/normal/half_normal.h"
#include "distributions/normal/lanes/normal.h"

namespace zul::kernels {
namespace {

struct HalfNormalPdfText : OfNumbers, ScaleThreshold {
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const auto below = x < threshold;
        const D density = NormalDensity(Select(below, Splat<D>(threshold), x), threshold, scale, left);
        return Select(below, D{}, 2.0 * density);
    }
};

ZUL_INLINE HalfNormalPdfText TextOf(const HalfNormalPdfKernel& at) {
    return {{}, {at.scale, at.threshold}};
}

struct HalfNormalCdfText : OfTails, ScaleThreshold {
    template <class D>
    ZUL_INLINE D DeviateOf(D x, Left<D>* left) const {
        left->Where(x < threshold);
        return (x - threshold) / scale;
    }
    template <class D>
    ZUL_INLINE D Of(D tail) const {
        return upper ? 2.0 * tail : 2.0 * tail - 1.0;
    }
};

ZUL_INLINE HalfNormalCdfText TextOf(const HalfNormalCdfKernel& at) {
    return {{{}, at.upper}, {at.scale, at.threshold}};
}

struct HalfNormalInvCdfText : OfDeviates, ScaleThreshold {
    // The deviates are not negative.
    template <class D>
    ZUL_INLINE D TailOf(D p, BitsOf<D>*) const {
        if (!byUpperTail) return 1.0 - (p + 1.0) / 2.0;
        return Select(p < 0.5, p / 2.0, 1.0 - ((1.0 - p) + 1.0) / 2.0);
    }
    template <class D>
    ZUL_INLINE D Of(D deviate, Left<D>*) const {
        return deviate * scale + threshold;
    }
};

ZUL_INLINE HalfNormalInvCdfText TextOf(const HalfNormalInvCdfKernel& at) {
    return {{{}, false}, {at.scale, at.threshold}};
}

}  // namespace
}  // namespace zul::kernels
