#include "descriptive/count_division.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

#include "support/reference_table.h"

namespace zul::descriptive {
namespace {

TEST(FusedDivision, IsExactForAnyArgument) {
    std::mt19937_64 generator(31);
    for (int i = 0; i < 300'000; ++i) {
        const double k = static_cast<double>(1 + (generator() >> (32 + generator() % 32)));
        // With a quotient as near as can be to the middle between two doubles.
        const double between = static_cast<double>((generator() >> 11) | (std::uint64_t{1} << 52));
        const double product = std::fma(between, k, k / 2);
        for (const double a :
             {std::bit_cast<double>(generator()), product, -std::nextafter(product, 0), -0.0}) {
            const double quotient = FusedDivision::Quotient(a, k);
            ASSERT_TRUE(test::IsNear(quotient, a / k, 0)) << std::hexfloat << a << " / " << k;
            ASSERT_TRUE(std::isnan(a) || std::signbit(quotient) == std::signbit(a));
        }
    }
}

}  // namespace
}  // namespace zul::descriptive
