// The quantiles of the gamma and the chi-square family: searched for one by one, verified in lanes.
#pragma once

#include <cstddef>

#include "distributions/either_tail.h"
#include "distributions/gamma/chi_square.h"
#include "distributions/gamma/gamma.h"
#include "distributions/gamma/lanes/gamma.h"
#include "distributions/inversion.h"
#include "distributions/lanes/text.h"
#include "frame/missing_value.h"
#include "numerics/gamma/lanes/fill_tails.h"

namespace zul::kernels {
namespace {

struct GammaQuantileText : GammaTailText {
    const numerics::GammaShape& shape;
    bool byUpperTail;

    template <class D>
    ZUL_INLINE bool FillBlock(double* out, const double* in, std::size_t n) const {
        double p[numerics::kPairBlock];
        double z[numerics::kPairBlock];
        double tails[numerics::kPairBlock];
        for (std::size_t i = 0; i < n; ++i)
            p[i] = in[i];
        FindStandardQuantiles(shape, byUpperTail, p, z, n);
        numerics::FillGammaTails<D>(
            at.shape, false, tails, z, n, [](D x) __attribute__((always_inline)) { return x; });
        bool all = true;
        for (std::size_t i = 0; i < n; ++i) {
            const double distance = tails[i] > p[i] ? tails[i] - p[i] : p[i] - tails[i];
            const bool isVerified =
                (tails[i] != frame::kNA) & ((p[i] < 0) | (distance <= p[i] * kGoodQuantile));
            out[i] = isVerified ? z[i] * at.scale + at.threshold : frame::kNA;
            all &= isVerified;
        }
        return all;
    }
};

ZUL_INLINE GammaQuantileText TextOf(const GammaInvCdfKernel& at) {
    return {{{}, at.InLanes()}, at.Shape(), false};
}

ZUL_INLINE GammaQuantileText TextOf(const ChiSqInvCdfKernel& at) {
    return {{{}, at.InLanes()}, at.Shape(), false};
}

}  // namespace
}  // namespace zul::kernels
