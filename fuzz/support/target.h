// What every target includes: the data that it reads, and what is asserted of results.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <string>
#include <vector>

#include "fuzz/support/check.h"
#include "fuzz/support/input.h"

namespace zul::fuzz {

using Data = std::vector<double>;

// One input: what is called, with which arguments. Each target defines it.
void RunInput(Input& input);

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

template <typename Values = std::initializer_list<double>>
bool AreNaN(const Values& values) {
    return std::ranges::all_of(values, [](double x) { return x != x; });
}

inline bool AreFinite(const Data& values) {
    return std::ranges::all_of(values, [](double x) { return std::isfinite(x); });
}

// They are in [low, high], or NaN.
void ExpectWithin(const auto& where, double low, double high, std::initializer_list<double> values) {
    for (const double x : values)
        Expect(IsWritten(x) && (x != x || (x >= low && x <= high)), [&] { return Call(Text(where), x); });
}

// Those lists in one.
inline Data Joined(std::initializer_list<Data> lists) {
    Data all;
    for (const Data& list : lists)
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

// A level of confidence, mostly.
inline double Confidence(Input& input) {
    return input.Byte() < 230 ? input.Fraction() : AnyReal(input);
}

// So many numbers of one kind: any at all, ties, one number all over, numbers of one size, or of a few sizes.
inline Data Values(Input& input, std::size_t count) {
    constexpr std::array kExtremes = {
        1.7976931348623157e308, -1.7976931348623157e308, 1e308, 1e160, 1e-160, 1e-310, 5e-324, kInf};
    const unsigned kind = input.Byte() % 8;
    const double size = kind < 5 ? 1 : input.Flag() ? input.OneOf(kExtremes) : AnyReal(input);
    std::uint64_t state = kind < 3 ? 0 : input.Word();
    Data values(count);
    for (double& value : values) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        value = kind == 0   ? AnyReal(input)
                : kind == 1 ? static_cast<double>(input.Byte() % 5)
                : kind == 2 ? input.Size()
                : kind == 4 ? static_cast<double>(state >> 60)
                : kind > 5  ? size
                            : static_cast<double>(static_cast<std::int64_t>(state) >> 11) * 0x1p-52 * size;
    }
    if (kind == 7 && count > 0) values[input.Choice(count)] = AnyReal(input);
    return values;
}

// The status that call() returns: one of those, or -1 after an exception that may be.
int StatusOf(Mode mode, const auto& where, std::initializer_list<int> documented, auto call) {
    int status = -1;
    const auto describe = [&] { return Text(where); };
    if (!Checked(mode, describe, [&] { status = call(); })) return -1;
    Expect(IsAmong(status, documented), where, "undocumented status");
    return status;
}

}  // namespace zul::fuzz
