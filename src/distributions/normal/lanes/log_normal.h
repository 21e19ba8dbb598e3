// The lognormal family in lanes.
#pragma once

#include "distributions/lanes/text.h"
#include "distributions/normal/lanes/normal.h"
#include "distributions/normal/log_normal.h"

namespace zul::kernels {
namespace {

struct LogNormalPdfText : OfNumbers, LocationScaleThreshold {
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const auto below = x <= threshold;
        const D distance = Select(below, Splat<D>(1), x - threshold);
        const D density = NormalDensity(Log(distance, left), location, scale, left) / distance;
        return Select(below, D{}, density);
    }
};

ZUL_INLINE LogNormalPdfText TextOf(const LogNormalPdfKernel& at) {
    return {{}, {at.location, at.scale, at.threshold}};
}

struct LogNormalCdfText : OfTails, LocationScaleThreshold {
    template <class D>
    ZUL_INLINE D DeviateOf(D x, Left<D>* left) const {
        return (Log(x - threshold, left) - location) / scale;
    }
    template <class D>
    ZUL_INLINE D Of(D tail) const {
        return tail;
    }
};

ZUL_INLINE LogNormalCdfText TextOf(const LogNormalCdfKernel& at) {
    return {{{}, at.upper}, {at.location, at.scale, at.threshold}};
}

struct LogNormalInvCdfText : OfDeviates, LocationScaleThreshold {
    template <class D>
    ZUL_INLINE D TailOf(D p, BitsOf<D>* sign) const {
        return SmallerNormalTail(p, byUpperTail, sign);
    }
    template <class D>
    ZUL_INLINE D Of(D deviate, Left<D>* left) const {
        return Exp(deviate * scale + location, left) + threshold;
    }
};

ZUL_INLINE LogNormalInvCdfText TextOf(const LogNormalInvCdfKernel& at) {
    return {{{}, false}, {at.location, at.scale, at.threshold}};
}

}  // namespace
}  // namespace zul::kernels
