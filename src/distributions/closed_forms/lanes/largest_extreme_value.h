// The extreme value family of maxima in lanes.
#pragma once

#include "distributions/closed_forms/lanes/exponential.h"
#include "distributions/closed_forms/largest_extreme_value.h"
#include "distributions/lanes/text.h"

namespace zul::kernels {
namespace {

struct LargestExtremeValuePdfText : OfNumbers, LocationScale {
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const D e = Exp(-((x - location) / scale), left);
        return e * Exp(-e, left) / scale;
    }
};

ZUL_INLINE LargestExtremeValuePdfText TextOf(const LargestExtremeValuePdfKernel& at) {
    return {{}, {at.location, at.scale}};
}

struct LargestExtremeValueCdfText : OfNumbers, LocationScale {
    bool upper;
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        return StandardTail(Exp(-((x - location) / scale), left), !upper, left);
    }
};

ZUL_INLINE LargestExtremeValueCdfText TextOf(const LargestExtremeValueCdfKernel& at) {
    return {{}, {at.location, at.scale}, at.upper};
}

struct LargestExtremeValueInvCdfText : LocationScale {
    template <class D>
    ZUL_INLINE D AtLogarithm(D logP, Left<D>* left) const {
        return location - scale * Log(-logP, left);
    }
    template <class D>
    ZUL_INLINE D AtLowerTail(D p, Left<D>* left) const {
        return AtLogarithm(Log(p, left), left);
    }
    template <class D>
    ZUL_INLINE D AtUpperTail(D q, Left<D>* left) const {
        return AtLogarithm(LogOfRest(q), left);
    }
};

ZUL_INLINE LargestExtremeValueInvCdfText TextOf(const LargestExtremeValueInvCdfKernel& at) {
    return {{at.location, at.scale}};
}

}  // namespace
}  // namespace zul::kernels
