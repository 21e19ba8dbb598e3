// Random arguments that are the same on every platform: whole numbers and multiples of powers of two, never
// what the C library computes.
#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace zul::test {

class ExactNumbers {
public:
    explicit ExactNumbers(std::uint64_t seed) : engine_(seed) {}
    // From 0 to n - 1.
    int Below(int n) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(n)); }
    // In (0, 1).
    double Fraction() { return (static_cast<double>(engine_() >> 12) + 0.5) * 0x1p-52; }
    // In (2^low, 2^high).
    double Positive(int low, int high) { return Scaled(1 + Fraction(), low, high - low); }
    double Real(int low, int high) { return Below(2) == 0 ? Positive(low, high) : -Positive(low, high); }
    // In (0, 1), also close to its ends.
    double Probability() {
        const int kind = Below(4);
        if (kind < 2) return Fraction();
        return kind == 2 ? Scaled(Fraction(), -40, 40) : 1 - Scaled(Fraction(), -30, 30);
    }
    // Decimals as data have them, of eighths.
    std::vector<double> Data(std::size_t count, int center, int spread) {
        std::vector<double> data(count);
        for (double& x : data)
            x = center + (Below(16 * spread) + Below(16 * spread) - 16 * spread) / 8.0;
        return data;
    }

private:
    // The order in which arguments are evaluated is the compiler's: what draws twice does so in two
    // statements.
    double Scaled(double x, int low, int count) {
        const int exponent = low + Below(count);
        return std::ldexp(x, exponent);
    }
    std::mt19937_64 engine_;
};

}  // namespace zul::test
