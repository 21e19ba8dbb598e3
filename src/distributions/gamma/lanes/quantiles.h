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

// Quantiles by the upper tail, which are not verified, do not set the whole error state: they are left.
struct GammaQuantileText : GammaTailText {
    const numerics::GammaShape& shape;
    bool byUpperTail;

    bool Takes() const { return !byUpperTail && GammaTailText::Takes(); }
    template <class D>
    ZUL_INLINE bool FillBlock(double* out, const double* in, std::size_t n) const {
        double z[numerics::gamma_lanes::kPairBlock];
        double tails[numerics::gamma_lanes::kPairBlock];
        FindStandardQuantiles(shape, z, in, n);
        const auto itself = [](D x) __attribute__((always_inline)) {
            return x;
        };
        numerics::gamma_lanes::FillTails<D>(at.shape, false, tails, z, n, itself);
        bool all = true;
        for (std::size_t i = 0; i < n; ++i) {
            const bool isVerified = tails[i] != frame::kNA && IsClose(tails[i], in[i]);
            out[i] = isVerified ? z[i] * at.scale + at.threshold : frame::kNA;
            all &= isVerified;
        }
        return all;
    }

private:
    static bool IsClose(double tail, double p) {
        return (tail > p ? tail - p : p - tail) <= p * kGoodQuantile;
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
