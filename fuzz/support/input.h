// The bytes of one fuzz input, read as choices, counts and numbers. Past the end everything is zero, so that
// every input is complete and shorter ones are simpler.
#pragma once

#include <array>
#include <bit>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace zul::fuzz {

inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    unsigned Byte() { return next_ < size_ ? data_[next_++] : 0U; }
    // Two bytes. One statement each: compilers differ in the order of the operands.
    unsigned Pair() {
        const unsigned high = Byte();
        return high << CHAR_BIT | Byte();
    }
    bool Flag() { return (Byte() & 1U) != 0; }

    // From 0 to count - 1.
    template <typename Number = std::size_t>
    Number Choice(std::size_t count) {
        const std::size_t value = count > UCHAR_MAX ? Pair() : Byte();
        return static_cast<Number>(value % count);
    }

    const auto& OneOf(const auto& values) { return values[Choice(values.size())]; }

    std::uint64_t Word() {
        std::uint64_t word = 0;
        for (int i = 0; i < 8; ++i)
            word = word << CHAR_BIT | Byte();
        return word;
    }

    // In [0, 1), evenly.
    double Uniform() { return Pair() * 0x1p-16; }
    double Uniform(double lo, double hi) { return lo + (hi - lo) * Uniform(); }
    // 10 to a power between the two.
    double Power(double lo, double hi) { return std::pow(10, Uniform(lo, hi)); }

    // In [0, 1], also close to its ends.
    double Fraction() {
        const unsigned kind = Byte() % 4;
        const double value = static_cast<double>(Pair()) * 0x1p-16;
        if (kind == 0) return std::ldexp(value, -static_cast<int>(Byte()) * 4);
        if (kind == 1) return 1 - std::ldexp(value, -static_cast<int>(Byte()) / 5);
        return kind == 2 ? value : static_cast<double>(Byte() % 17) / 16;
    }

    // Of ordinary size mostly, sometimes any double at all.
    double Real() {
        constexpr std::array kSpecial = {0.0,        1.0,        0.5,   -1.0,  5e-324,     DBL_MIN,
                                         DBL_MAX,    -DBL_MAX,   1e-16, 1e30,  1.23456e30, 2e-288,
                                         94906265.0, 94906266.0, kInf,  -kInf, kNaN};
        const unsigned kind = Byte() % 8;
        if (kind == 0) return OneOf(kSpecial);
        if (kind == 1) return std::bit_cast<double>(Word());
        if (kind < 4) return Fraction();
        if (kind == 4) return static_cast<double>(Integer());
        return kind == 5 ? -Size() : Size();
    }

    // Positive and finite: 1/65536 to 16 times a power of ten, mostly a small one.
    double Size() {
        const double mantissa = static_cast<double>(Pair() + 1) * 0x1p-12;
        const unsigned kind = Byte();
        if (kind < 160) return mantissa;
        const int exponent = static_cast<int>(Byte()) - 128;
        return mantissa * std::pow(10, kind < 240 ? exponent / 16 : exponent * 2);
    }

    int Integer() {
        constexpr std::array kEnds = {INT_MIN, INT_MIN + 1, INT_MAX - 1, INT_MAX};
        const unsigned kind = Byte() % 8;
        if (kind == 0) return OneOf(kEnds);
        if (kind == 1) return static_cast<int>(static_cast<std::uint32_t>(Word()));
        const int small = static_cast<int>(Byte());
        return kind == 2 ? -small : kind == 3 ? small * static_cast<int>(Byte()) : small;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t next_ = 0;
};

}  // namespace zul::fuzz
