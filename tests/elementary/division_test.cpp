#include <gtest/gtest.h>

#include <bit>

#include "elementary/arguments.h"
#include "elementary/quotients_of_four.h"
#include "processor/level.h"

namespace zul::test {
namespace {

void ExpectQuotients(const double* quotients, const double* n, const double* d) {
    for (int k = 0; k < 4; ++k) {
        const double expected = n[k] / d[k];
        ASSERT_EQ(std::bit_cast<std::uint64_t>(quotients[k]), std::bit_cast<std::uint64_t>(expected))
            << n[k] << " / " << d[k];
    }
}

// The numerator next to d times a middle of two doubles, which decides the last bit.
double NextToMiddle(RandomArguments* random, double d) {
    const double q = random->AnyDouble(1, 2);
    const double n = q * d;
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(n) + random->Bits() % 3 - 1);
}

TEST(Division, OfLanesIsTheDivision) {
    if (processor::HighestLevel() < processor::Level::Four) GTEST_SKIP() << "no fused multiply-adds";
    RandomArguments random;
    for (int round = 0; round < 1'000'000; ++round) {
        const double base = random.AnyDouble(1, 2);
        // Of any size, few digits, and close to 2, where the reciprocal is farthest off.
        const double d[4] = {random.AnyDouble(1e-140, 1e140), static_cast<double>(1 + random.Bits() % 4096),
                             2 - 0x1p-52 * static_cast<double>(1 + random.Bits() % 64),
                             2 - 0x1p-26 * random.Uniform(0, 1)};
        const double n[4] = {random.Signed(random.AnyDouble(1e-140, 1e140)), base,
                             4 - 0x1p-51 * static_cast<double>(random.Bits() % 4096),
                             NextToMiddle(&random, d[3])};
        double quotients[4];
        QuotientsOfFour(quotients, n, d);
        ASSERT_NO_FATAL_FAILURE(ExpectQuotients(quotients, n, d));
    }
}

TEST(Division, OfLanesByAWholeNumberIsTheDivision) {
    if (processor::HighestLevel() < processor::Level::Four) GTEST_SKIP() << "no fused multiply-adds";
    RandomArguments random;
    for (int round = 0; round < 1'000'000; ++round) {
        // Of few and of many digits.
        const double whole = static_cast<double>(1 + (random.Bits() >> (24 + random.Bits() % 39)));
        const double d[4] = {whole, whole, whole, whole};
        const double n[4] = {random.Signed(random.AnyDouble(1e-240, 1e300)), random.AnyDouble(1, 2),
                             NextToMiddle(&random, whole), -NextToMiddle(&random, whole)};
        double quotients[4];
        QuotientsByWhole(quotients, n, whole);
        ASSERT_NO_FATAL_FAILURE(ExpectQuotients(quotients, n, d));
    }
}

}  // namespace
}  // namespace zul::test
