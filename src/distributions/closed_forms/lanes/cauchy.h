// Cauchy's family in lanes.
#pragma once

#include <numbers>

#include "distributions/closed_forms/cauchy.h"
#include "distributions/closed_forms/lanes/symmetric.h"
#include "distributions/lanes/text.h"

namespace zul::kernels {
namespace {

using std::numbers::pi;

struct CauchyPdfText : OfNumbers, LocationScale {
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const D distance = x - location;
        const auto far = Absolute(distance) * kOneOverFarZ > scale;
        left->Where(far);
        const D z = Select(far, D{}, distance / scale);
        return 1.0 / ((z * z + 1.0) * (scale * pi));
    }
};

ZUL_INLINE CauchyPdfText TextOf(const CauchyPdfKernel& at) {
    return {{}, {at.location, at.scale}};
}

struct CauchyCdfText : OfNumbers, LocationScale {
    bool upper;
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const D distance = (x - location) / scale;
        const D z = upper ? -distance : distance;
        const auto small = z < -1.0;
        const D tangent = Select(small, -1.0 / Select(small, z, Splat<D>(-1)), z);
        left->ByTopBit(elementary::OutsideAtan(tangent));
        const D share = elementary::CoreAtan(tangent) / pi;
        return Select(small, share, 0.5 + share);
    }
};

ZUL_INLINE CauchyCdfText TextOf(const CauchyCdfKernel& at) {
    return {{}, {at.location, at.scale}, at.upper};
}

struct CauchyInvCdfText : LocationScale {
    static constexpr bool kTakesEveryTail = true;
    // By the distance from the nearer end, or from the middle.
    template <class D>
    ZUL_INLINE D Standard(D p, Left<D>* left) const {
        const auto low = p < 0.25;
        const auto high = p > 0.75;
        const auto near = low | high;
        const D tangent = Tan(pi * Select(low, p, Select(high, 1.0 - p, p - 0.5)), left);
        const D inverse = Select(low, Splat<D>(-1), Splat<D>(1)) / Select(near, tangent, Splat<D>(1));
        return Select(near, inverse, tangent);
    }
    template <class D>
    ZUL_INLINE D AtLowerTail(D p, Left<D>* left) const {
        LeaveHalf(p, left);
        return location + scale * Standard(p, left);
    }
    template <class D>
    ZUL_INLINE D AtUpperTail(D q, Left<D>* left) const {
        return Symmetric(q, location, scale, Standard(SmallerTail(q, left), left));
    }
};

ZUL_INLINE CauchyInvCdfText TextOf(const CauchyInvCdfKernel& at) {
    return {{at.location, at.scale}};
}

}  // namespace
}  // namespace zul::kernels
