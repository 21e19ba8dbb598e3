#pragma once

#include <bit>
#include <cstdint>

namespace zul::frame {

// NA: the missing value inside the library, compared by exact equality. Kernels, special functions and
// function objects return it for "no result"; it never leaves an exported distribution function.
inline constexpr double kNA = 1.23456e30;

// What a caller sees instead: the positive quiet NaN.
inline constexpr double kQuietNaN = std::bit_cast<double>(std::uint64_t{0x7FF8000000000000});

// NA and NaN alike. The comparisons are equalities, so a quiet NaN does not trap in them.
inline bool IsMissing(double x) {
    return x == kNA || x != x;
}

}  // namespace zul::frame
