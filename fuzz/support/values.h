// Arrays for the targets that read data.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "fuzz/support/input.h"

namespace zul::fuzz {

// What is in places that a call has not written: a NaN that no arithmetic makes.
inline constexpr double kUnwritten = std::bit_cast<double>(std::uint64_t{0x7FF8'5A5A'5A5A'5A5A});

inline bool SameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

inline bool IsWritten(double x) {
    return !SameBits(x, kUnwritten);
}

// Any number, but for that mark.
inline double AnyReal(Input& input) {
    const double value = input.Real();
    return static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(value)) == 0x5A5A'5A5A ? kNaN : value;
}

// Equal, zeros of either sign apart, or both NaN.
inline bool Same(double a, double b) {
    return a == b ? std::signbit(a) == std::signbit(b) : a != a && b != b;
}

inline bool HasNaN(const std::vector<double>& values) {
    return std::any_of(values.begin(), values.end(), [](double x) { return x != x; });
}

// So many numbers of one kind: any at all, ties, one number all over, numbers of one size, or of a few sizes.
inline std::vector<double> Values(Input& input, std::size_t count) {
    constexpr std::array kExtremes = {
        1.7976931348623157e308, -1.7976931348623157e308, 1e308, 1e160, 1e-160, 1e-310, 5e-324, kInf};
    const unsigned kind = input.Byte() % 8;
    const double size = kind < 5 ? 1 : input.Flag() ? input.OneOf(kExtremes) : AnyReal(input);
    std::uint64_t state = kind < 3 ? 0 : input.Word();
    std::vector<double> values(count);
    for (double& value : values) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        if (kind == 0)
            value = AnyReal(input);
        else if (kind == 1)
            value = static_cast<double>(input.Byte() % 5);
        else if (kind == 2)
            value = input.Size();
        else if (kind == 3 || kind == 5)
            value = static_cast<double>(static_cast<std::int64_t>(state) >> 11) * 0x1p-52 * size;
        else if (kind == 4)
            value = static_cast<double>(state >> 60);
        else
            value = size;
    }
    if (kind == 7 && count > 0) values[input.Choice(count)] = AnyReal(input);
    return values;
}

}  // namespace zul::fuzz
