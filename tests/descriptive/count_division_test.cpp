#include "descriptive/count_division.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

namespace zul::descriptive {
namespace {

// Compared by their bits, but for NaN.
void ExpectExact(double a, double k) {
    const double quotient = FusedDivision::Quotient(a, k);
    const bool same = std::bit_cast<std::uint64_t>(quotient) == std::bit_cast<std::uint64_t>(a / k);
    ASSERT_TRUE(same || (std::isnan(quotient) && std::isnan(a / k))) << std::hexfloat << a << " / " << k;
}

TEST(FusedDivision, IsExactForAnyArgument) {
    std::mt19937_64 generator(31);
    for (int i = 0; i < 300'000; ++i) {
        const double k = static_cast<double>(1 + (generator() >> (32 + generator() % 32)));
        ExpectExact(std::bit_cast<double>(generator()), k);
        ExpectExact(i % 2 == 0 ? 0.0 : -0.0, k);
        // A quotient as near as can be to the middle between two doubles.
        const double between = static_cast<double>((generator() >> 11) | (std::uint64_t{1} << 52));
        const double product = std::fma(between, k, k / 2);
        ExpectExact(product, k);
        ExpectExact(-std::nextafter(product, 0), k);
    }
}

}  // namespace
}  // namespace zul::descriptive
