// Results of arguments outside a function's domain or range: each raises its floating-point flag, and in trapping mode
// its trap, by an operation at run time.
#pragma once

#include <cstdint>

#include "elementary/core/value.h"

namespace zul::elementary {

// A quiet NaN whose bits are those of every processor, and the flag of an invalid operation.
double InvalidResult();

// An infinity and the flag of a division by zero, or of an overflow; a zero and the flag of an underflow.
double PoleResult(bool negative);
double OverflowResult();
double UnderflowResult();

inline bool IsNaNBits(std::uint64_t bits) {
    return (bits & ~kSignBit) > kInfinityBits;
}

inline bool IsSignallingBits(std::uint64_t bits) {
    constexpr std::uint64_t kQuietBit = 0x0008000000000000;
    return IsNaNBits(bits) && (bits & kQuietBit) == 0;
}

}  // namespace zul::elementary
