// The chi-square family in lanes.
#pragma once

#include "distributions/gamma/chi_square.h"
#include "distributions/gamma/lanes/gamma.h"
#include "distributions/lanes/text.h"
#include "frame/guarded.h"
#include "numerics/gamma/fast_logarithms.h"
#include "numerics/limits.h"

namespace zul::kernels {
namespace {

struct ChiSqPdfText : OfNumbers {
    GammaDensityInLanes at;
    bool Takes() const { return at.ordinary; }
    template <class D>
    ZUL_INLINE D Evaluate(D argument, Left<D>* left) const {
        const auto outside = argument <= 0.0;
        const D x = Select(outside, Splat<D>(1), argument);
        const bool large = at.shape > numerics::kFastLimit;
        const D log = large ? OfLarge(x, left) : (at.shape - 1) * Log(x, left) - at.logNorm - x / 2.0;
        const auto vanishes = outside | (log < -frame::kExpOverflowLimit);
        const D density = Exp(Select(vanishes, D{}, log), left);
        return Select(vanishes, D{}, large ? density / 2.0 : density);
    }

private:
    template <class D>
    ZUL_INLINE D OfLarge(D x, Left<D>* left) const {
        left->Where(x < numerics::kTinyArgument);
        return LogDensityOfLarge(at, Select(x < numerics::kTinyArgument, Splat<D>(1), x) / 2.0);
    }
};

ZUL_INLINE ChiSqPdfText TextOf(ChiSqPdfKernel& at) {
    return {{}, at.InLanes()};
}

ZUL_INLINE GammaTailText TextOf(const ChiSqCdfKernel& at) {
    return {{}, at.InLanes()};
}

}  // namespace
}  // namespace zul::kernels
