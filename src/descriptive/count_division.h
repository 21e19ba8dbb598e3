// The division of a running mean's loop, whose quotient the next value has to wait for.
#pragma once

#include <bit>
#include <cstdint>

#include "processor/processor.h"

namespace zul::descriptive {

struct PlainDivision {
    static double Quotient(double a, double k) { return a / k; }
};

// a / k for a whole k from 1 to 2^32, to the bit when rounding to nearest (in another direction exact quotients
// come out one off), with a multiplication and a fused one to wait for instead of the slower division: as QuotientByWhole()
// of elementary/core/division.h, where the reasons stand. Both parts of 1 / k depend on k alone and are ready when a is.
struct FusedDivision {
    static ZUL_INLINE double Quotient(double a, double k) {
        const double high = 1 / k;
        const double low = __builtin_fma(-k, high, 1.0) * high;
        if (!IsModerate(a)) [[unlikely]]
            return a / k;
        return __builtin_fma(a, high, a * low);
    }

private:
    // Between 2^-900 and 2^901: of the parts of the product a low is the smallest, above 2^-118 of a unless 0.
    // By the bits, since a comparison would trap NaN in trapping mode.
    static ZUL_INLINE bool IsModerate(double a) {
        constexpr std::uint64_t kBias = 1023;
        constexpr std::uint64_t kReach = 900;
        const std::uint64_t exponent = (std::bit_cast<std::uint64_t>(a) >> 52) & 0x7FF;
        return exponent - (kBias - kReach) <= 2 * kReach;
    }
};

}  // namespace zul::descriptive
