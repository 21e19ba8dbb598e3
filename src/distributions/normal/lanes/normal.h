// The normal family in lanes.
#pragma once

#include "distributions/lanes/text.h"
#include "distributions/normal/lanes/quantiles.h"
#include "distributions/normal/lanes/tails.h"
#include "distributions/normal/normal.h"

namespace zul::kernels {
namespace {

// The density of a normal distribution, for IsOrdinaryScale(sd).
template <class D>
ZUL_INLINE D NormalDensity(D x, double mean, double sd, Left<D>* left) {
    constexpr double kFarthest = 37;  // the exponential reaches to 37.1
    constexpr double kSqrtTwoPi = 2.5066282746310002;
    const D z = (x - mean) / sd;
    const auto beyond = Absolute(z) > kFarthest;
    left->Where(beyond);
    const D near = Select(beyond, D{}, z);
    return elementary::CoreExp(-0.5 * (near * near)) / (kSqrtTwoPi * sd);
}

struct NormalPdfText : OfNumbers, LocationScale {
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        return NormalDensity(x, location, scale, left);
    }
};

ZUL_INLINE NormalPdfText TextOf(const NormalPdfKernel& at) {
    return {{}, {at.mean, at.sd}};
}

struct NormalCdfText : OfTails, LocationScale {
    template <class D>
    ZUL_INLINE D DeviateOf(D x, Left<D>*) const {
        return (x - location) / scale;
    }
    template <class D>
    ZUL_INLINE D Of(D tail) const {
        return tail;
    }
};

ZUL_INLINE NormalCdfText TextOf(const NormalCdfKernel& at) {
    return {{{}, at.upper}, {at.mean, at.sd}};
}

// The smaller tail of a normal deviate with the tail p, which is the upper one or not.
template <class D>
ZUL_INLINE D SmallerNormalTail(D p, bool upper, BitsOf<D>* sign) {
    const D lessHalf = p - 0.5;
    *sign = upper ? ~Bits(lessHalf) : Bits(lessHalf);
    return Select(lessHalf < 0.0, p, 1.0 - p);
}

struct NormalInvCdfText : OfDeviates, LocationScale {
    template <class D>
    ZUL_INLINE D TailOf(D p, BitsOf<D>* sign) const {
        return SmallerNormalTail(p, byUpperTail, sign);
    }
    template <class D>
    ZUL_INLINE D Of(D deviate, Left<D>*) const {
        return deviate * scale + location;
    }
};

ZUL_INLINE NormalInvCdfText TextOf(const NormalInvCdfKernel& at) {
    return {{{}, false}, {at.mean, at.sd}};
}

}  // namespace
}  // namespace zul::kernels
