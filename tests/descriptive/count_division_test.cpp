#include "descriptive/count_division.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

#include "support/reference_table.h"

namespace zul::descriptive {
namespace {

// For the processors that it is for: the function of a C library may round twice.
ZUL_FUSED __attribute__((noinline)) double Quotient(double a, double k) {
    return FusedDivision::Quotient(a, k);
}

TEST(FusedDivision, IsExactForAnyArgument) {
    if (!processor::HasFusedMultiplyAdd()) GTEST_SKIP();
    std::mt19937_64 generator(31);
    for (int i = 0; i < 300'000; ++i) {
        const double k = static_cast<double>(1 + (generator() >> (32 + generator() % 32)));
        // With a quotient as near as can be to the middle between two doubles.
        const double between = static_cast<double>((generator() >> 11) | (std::uint64_t{1} << 52));
        const double product = std::fma(between, k, k / 2);
        for (const double a :
             {std::bit_cast<double>(generator()), product, -std::nextafter(product, 0), -0.0}) {
            const double quotient = Quotient(a, k);
            ASSERT_TRUE(test::IsNear(quotient, a / k, 0)) << std::hexfloat << a << " / " << k;
            ASSERT_TRUE(std::isnan(a) || std::signbit(quotient) == std::signbit(a));
        }
    }
}

}  // namespace
}  // namespace zul::descriptive
