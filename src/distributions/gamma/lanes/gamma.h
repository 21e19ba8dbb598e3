// The gamma family in lanes.
#pragma once

#include <cstddef>

#include "distributions/gamma/gamma.h"
#include "distributions/lanes/text.h"
#include "numerics/gamma/fast_logarithms.h"
#include "numerics/gamma/lanes/fill_tails.h"
#include "numerics/gamma/lanes/group.h"
#include "numerics/limits.h"

namespace zul::kernels {
namespace {

// The logarithm of the density for a shape above kFastLimit, at z >= kTinyArgument.
template <class D>
ZUL_INLINE D LogDensityOfLarge(const GammaDensityInLanes& at, D z) {
    return numerics::LogDensityOf(at.larger, z, numerics::LogRatioOf(at.larger, z));
}

struct GammaPdfText : OfNumbers {
    GammaDensityInLanes at;
    bool Takes() const { return at.ordinary && IsOrdinaryScale(at.scale) && IsOrdinary(at.threshold); }
    template <class D>
    ZUL_INLINE D Evaluate(D x, Left<D>* left) const {
        const D distance = x - at.threshold;
        const D quotient = distance / at.scale;
        const auto outside = (distance <= 0.0) | (quotient > numerics::kArgumentLimit);
        const D z = Select(outside, Splat<D>(1), quotient);
        const D log = LogDensity(z, left);
        const auto vanishes = outside | (log < numerics::kLogUnderflow);
        return Select(vanishes, D{}, Exp(Select(vanishes, D{}, log), left) / at.scale);
    }

private:
    template <class D>
    ZUL_INLINE D LogDensity(D z, Left<D>* left) const {
        if (at.shape <= numerics::kFastLimit) return (at.shape - 1) * Log(z, left) - z - at.logNorm;
        left->Where(z < numerics::kTinyArgument);
        return LogDensityOfLarge(at, Select(z < numerics::kTinyArgument, Splat<D>(1), z));
    }
};

ZUL_INLINE GammaPdfText TextOf(GammaPdfKernel& at) {
    return {{}, at.InLanes()};
}

struct GammaTailText : OfNumbers {
    GammaTailInLanes at;
    bool Takes() const { return at.shape.ordinary && IsOrdinaryScale(at.scale) && IsOrdinary(at.threshold); }
    // What does not set the error state, below the threshold, is left with all other z that are not positive.
    template <class D>
    ZUL_INLINE bool FillBlock(double* out, const double* in, std::size_t n) const {
        const auto argument = [this](D x) __attribute__((always_inline)) {
            const auto ordinary = (NotOrdinary(x) >> 63) == 0;
            return (Select(ordinary, x, Splat<D>(at.threshold)) - at.threshold) / at.scale;
        };
        return numerics::FillGammaTails<D>(at.shape, at.upper, out, in, n, argument);
    }
};

ZUL_INLINE GammaTailText TextOf(const GammaCdfKernel& at) {
    return {{}, at.InLanes()};
}

}  // namespace
}  // namespace zul::kernels
