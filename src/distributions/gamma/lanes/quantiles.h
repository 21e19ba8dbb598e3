// The quantiles of the gamma and the chi-square family: searched for, and verified, in lanes.
#pragma once

#include <cstddef>

#include "distributions/either_tail.h"
#include "distributions/gamma/chi_square.h"
#include "distributions/gamma/gamma.h"
#include "distributions/gamma/lanes/gamma.h"
#include "distributions/inversion.h"
#include "distributions/lanes/text.h"
#include "frame/missing_value.h"
#include "numerics/gamma/gamma_quantiles.h"
#include "numerics/gamma/lanes/fill_tails.h"
#include "numerics/gamma/lanes/search.h"

namespace zul::kernels {
namespace {

struct GammaQuantileText : GammaTailText {
    const numerics::GammaShape& shape;
    bool byUpperTail;

    template <class D>
    ZUL_INLINE bool FillBlock(double* out, const double* in, std::size_t n) const {
        double targets[numerics::gamma_lanes::kPairBlock];
        double z[numerics::gamma_lanes::kPairBlock];
        FindTargets(byUpperTail, targets, in, n);
        numerics::gamma_lanes::Search<D>(shape, targets, n, z);
        numerics::FinishSearches(shape, targets, n, z);
        if (!byUpperTail) return Verify<D>(out, in, z, n);
        const bool all = FillByUpperTail<D>(out, targets, z, n);
        return LeaveLastByLowerTail(out, targets, n) && all;
    }

private:
    // out: the quantiles at the lower tails p of which this is surely the verified one.
    template <class D>
    ZUL_INLINE bool Verify(double* out, const double* p, const double* z, std::size_t n) const {
        double tails[numerics::gamma_lanes::kPairBlock];
        const auto itself = [](D x) __attribute__((always_inline)) {
            return x;
        };
        numerics::gamma_lanes::FillTails<D>(at.shape, false, tails, z, n, itself);
        bool all = true;
        for (std::size_t i = 0; i < n; ++i) {
            const bool isVerified = tails[i] != frame::kNA && IsClose(tails[i], p[i]);
            out[i] = isVerified ? z[i] * at.scale + at.threshold : frame::kNA;
            all &= isVerified;
        }
        return all;
    }

    // Those by the upper tail itself are not verified.
    template <class D>
    ZUL_INLINE bool FillByUpperTail(double* out, const double* targets, const double* z,
                                    std::size_t n) const {
        double p[numerics::gamma_lanes::kPairBlock];
        double ofLower[numerics::gamma_lanes::kPairBlock];
        double verified[numerics::gamma_lanes::kPairBlock];
        std::size_t count = 0;
        for (std::size_t i = 0; i < n; ++i) {
            p[count] = targets[i];
            ofLower[count] = z[i];
            count += targets[i] > 0;
        }
        Verify<D>(verified, p, ofLower, count);
        count = 0;
        bool all = true;
        for (std::size_t i = 0; i < n; ++i) {
            if (targets[i] > 0)
                out[i] = verified[count++];
            else
                out[i] = targets[i] < 0 && z[i] != frame::kNA && z[i] > 0 ? z[i] * at.scale + at.threshold
                                                                          : frame::kNA;
            all &= out[i] != frame::kNA;
        }
        return all;
    }

    // A quantile by the upper tail itself sets but the level and the routine of the error state. Its branch and its count
    // remain those of the last one before that is verified: wherever the state may be seen, that one is left as well.
    static ZUL_INLINE bool LeaveLastByLowerTail(double* out, const double* targets, std::size_t n) {
        bool all = true;
        bool isSeen = true;
        for (std::size_t i = n; i-- > 0;) {
            if (out[i] == frame::kNA) {
                isSeen = true;
            } else if (isSeen && targets[i] > 0) {
                out[i] = frame::kNA;
                isSeen = false;
                all = false;
            }
        }
        return all;
    }

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
