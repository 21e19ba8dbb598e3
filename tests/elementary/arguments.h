// Random arguments, the same on every platform.
#pragma once

#include <bit>
#include <cstdint>

namespace zul::test {

class RandomArguments {
public:
    // Source: G. L. Steele, D. Lea, C. H. Flood, Fast splittable pseudorandom number generators, 2014.
    std::uint64_t Bits() {
        std::uint64_t z = state_ += 0x9E3779B97F4A7C15;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
        return z ^ (z >> 31);
    }

    // Between two numbers, all reals alike.
    double Uniform(double low, double high) {
        return low + (high - low) * (static_cast<double>(Bits() >> 11) * 0x1p-53);
    }

    // Between two positive numbers, all doubles alike.
    double AnyDouble(double low, double high) {
        const auto first = std::bit_cast<std::uint64_t>(low);
        return std::bit_cast<double>(first + Bits() % (std::bit_cast<std::uint64_t>(high) - first));
    }

    double Signed(double x) { return Bits() >> 63 ? -x : x; }

private:
    std::uint64_t state_ = 1;
};

}  // namespace zul::test
