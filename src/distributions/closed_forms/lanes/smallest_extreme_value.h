// The extreme value family of minima in lanes.
#pragma once

#include "distributions/closed_forms/lanes/largest_extreme_value.h"
#include "distributions/closed_forms/smallest_extreme_value.h"
#include "distributions/lanes/text.h"
#include "frame/missing_value.h"

namespace zul::kernels {
namespace {

struct SmallestExtremeValuePdfText : OfNumbers {
    LargestExtremeValuePdfText mirrored;
    bool Takes() const { return mirrored.Takes(); }
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        return mirrored.Evaluate(-x, left);
    }
};

ZUL_INLINE SmallestExtremeValuePdfText TextOf(const SmallestExtremeValuePdfKernel& at) {
    return {{}, {{}, {-at.location, at.scale}}};
}

struct SmallestExtremeValueCdfText : OfNumbers {
    LargestExtremeValueCdfText mirrored;
    bool Takes() const { return mirrored.Takes(); }
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        return mirrored.Evaluate(-x, left);
    }
};

ZUL_INLINE SmallestExtremeValueCdfText TextOf(const SmallestExtremeValueCdfKernel& at) {
    return {{}, {{}, {-at.location, at.scale}, !at.upper}};
}

struct SmallestExtremeValueInvCdfText {
    LargestExtremeValueInvCdfText mirrored;
    bool Takes() const { return mirrored.Takes(); }
    template <class D>
    ZUL_INLINE D AtLowerTail(D p, Left<D>* left) const {
        return Mirrored(LogOfRest(p), left);
    }
    template <class D>
    ZUL_INLINE D AtUpperTail(D q, Left<D>* left) const {
        return Mirrored(Log(q, left), left);
    }

private:
    template <class D>
    ZUL_INLINE D Mirrored(D logUpper, Left<D>* left) const {
        const D x = mirrored.AtLogarithm(logUpper, left);
        left->Where(x >= frame::kNA);
        return -x;
    }
};

ZUL_INLINE SmallestExtremeValueInvCdfText TextOf(const SmallestExtremeValueInvCdfKernel& at) {
    return {{{-at.location, at.scale}}};
}

}  // namespace
}  // namespace zul::kernels
