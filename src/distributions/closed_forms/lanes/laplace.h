// Laplace's family in lanes.
#pragma once

#include "distributions/closed_forms/lanes/symmetric.h"
#include "distributions/closed_forms/laplace.h"
#include "distributions/lanes/text.h"

namespace zul::kernels {
namespace {

struct LaplacePdfText : OfNumbers, LocationScale {
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        return Exp(-(Absolute(x - location) / scale), left) / (2 * scale);
    }
};

ZUL_INLINE LaplacePdfText TextOf(const LaplacePdfKernel& at) {
    return {{}, {at.location, at.scale}};
}

struct LaplaceCdfText : OfNumbers, LocationScale {
    bool upper;
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const D distance = (x - location) / scale;
        const D z = upper ? -distance : distance;
        const D e = Exp(-Absolute(z), left);
        left->Where(e > StandardExponentialTail::kCancels);
        return Select(z >= 0.0, 0.5 + 0.5 * (1.0 - e), 0.5 * e);
    }
};

ZUL_INLINE LaplaceCdfText TextOf(const LaplaceCdfKernel& at) {
    return {{}, {at.location, at.scale}, at.upper};
}

struct LaplaceInvCdfText : LocationScale {
    static constexpr bool kTakesEveryTail = true;
    template <class D>
    ZUL_INLINE D AtLowerTail(D p, Left<D>* left) const {
        LeaveHalf(p, left);
        const auto above = p > 0.5;
        const D log = Log(Select(above, 2.0 - 2.0 * p, 2.0 * p), left);
        return location + Select(above, -log, log) * scale;
    }
    template <class D>
    ZUL_INLINE D AtUpperTail(D q, Left<D>* left) const {
        return Symmetric(q, location, scale, Log(2.0 * SmallerTail(q, left), left));
    }
};

ZUL_INLINE LaplaceInvCdfText TextOf(const LaplaceInvCdfKernel& at) {
    return {{at.location, at.scale}};
}

}  // namespace
}  // namespace zul::kernels
