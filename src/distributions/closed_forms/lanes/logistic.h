// The logistic family in lanes.
#pragma once

#include "distributions/closed_forms/lanes/symmetric.h"
#include "distributions/closed_forms/logistic.h"
#include "distributions/lanes/text.h"

namespace zul::kernels {
namespace {

template <class D>
ZUL_INLINE D LogisticDensity(D z, double scale, Left<D>* left) {
    const D e = Exp(-Absolute(z), left);
    return e / ((1.0 + e) * (1.0 + e)) / scale;
}

template <class D>
ZUL_INLINE D LogisticTail(D z, bool upper, Left<D>* left) {
    const D e = Exp(-z, left);
    return (upper ? e : Splat<D>(1)) / (1.0 + e);
}

template <class D>
ZUL_INLINE D LogOdds(D p, Left<D>* left) {
    constexpr double kTiny = 1e-300;
    const auto tiny = p <= kTiny;
    left->Where(tiny);
    const D q = Select(tiny, Splat<D>(0.5), p);
    return Log((1.0 - q) / q, left);
}

struct LogisticPdfText : OfNumbers, LocationScale {
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        return LogisticDensity((x - location) / scale, scale, left);
    }
};

ZUL_INLINE LogisticPdfText TextOf(const LogisticPdfKernel& at) {
    return {{}, {at.location, at.scale}};
}

struct LogisticCdfText : OfNumbers, LocationScale {
    bool upper;
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        return LogisticTail((x - location) / scale, upper, left);
    }
};

ZUL_INLINE LogisticCdfText TextOf(const LogisticCdfKernel& at) {
    return {{}, {at.location, at.scale}, at.upper};
}

struct LogisticInvCdfText : LocationScale {
    static constexpr bool kTakesEveryTail = true;
    template <class D>
    ZUL_INLINE D AtLowerTail(D p, Left<D>* left) const {
        LeaveHalf(p, left);
        return location - LogOdds(p, left) * scale;
    }
    template <class D>
    ZUL_INLINE D AtUpperTail(D q, Left<D>* left) const {
        return Symmetric(q, location, scale, -LogOdds(SmallerTail(q, left), left));
    }
};

ZUL_INLINE LogisticInvCdfText TextOf(const LogisticInvCdfKernel& at) {
    return {{at.location, at.scale}};
}

}  // namespace
}  // namespace zul::kernels
