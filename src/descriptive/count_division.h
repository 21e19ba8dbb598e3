// The division of a running mean's loop, whose quotient the next value has to wait for.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

#include "frame/platform.h"

namespace zul::descriptive {

struct PlainDivision {
    static double Quotient(double a, double k) { return a / k; }
};

// a / k for a whole k from 1 to 2^32, to the bit, with a multiplication and a fused one to wait for instead of
// the slower division. high + low is 1 / k to 104 bits, and so is the quotient before its one rounding: enough,
// since a 53-bit number over a 32-bit one is further than a 2^-87th of itself from the middle between two
// doubles. Both parts depend on k alone and are ready when a is. The method is that of P. Markstein,
// Computation of elementary functions on the IBM RISC System/6000 processor, 1990.
struct FusedDivision {
    static ZUL_INLINE double Quotient(double a, double k) {
        const double high = 1 / k;
        const double low = std::fma(-k, high, 1.0) * high;
        if (!IsModerate(a)) [[unlikely]]
            return a / k;
        return std::fma(a, high, a * low);
    }

private:
    // Between 2^-900 and 2^901, where no part of the product underflows or overflows. By the bits, since a
    // comparison would trap NaN in trapping mode.
    static ZUL_INLINE bool IsModerate(double a) {
        constexpr std::uint64_t kBias = 1023;
        constexpr std::uint64_t kReach = 900;
        const std::uint64_t exponent = (std::bit_cast<std::uint64_t>(a) >> 52) & 0x7FF;
        return exponent - (kBias - kReach) <= 2 * kReach;
    }
};

}  // namespace zul::descriptive
