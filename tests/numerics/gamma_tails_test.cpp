#include "numerics/gamma_tails.h"

#include <gtest/gtest.h>

#include "support/reference_table.h"

namespace zul::numerics {
namespace {

TEST(FineGammaTails, MatchesReferenceOnBothSidesOfEachSwitch) {
    for (const test::Row& row : test::ReadTable("numerics/gamma_tails.csv", ',')) {
        const double a = test::Number(row.at(0));
        GammaTails tails{};
        ASSERT_TRUE(FineGammaTails(test::Number(row.at(1)), a, &tails));
        // The exponent of a far tail of a large shape cancels from numbers up to the shape; for shapes below 1, and from
        // 20 to 100 by the uniform expansion, all digits but the last stand.
        const double rtol = a < 1 || (a >= 20 && a <= 100) ? 2e-14 : a < 1e4 ? 4e-13 : 3e-12;
        const double results[] = {tails.lower, tails.upper, tails.power};
        for (std::size_t i = 0; i < 3; ++i) {
            const double expected = test::Number(row.at(2 + i));
            if (expected < 1e-290) continue;
            EXPECT_TRUE(test::IsNear(results[i], expected, rtol))
                << i << ": a = " << row.at(0) << ", x = " << row.at(1);
        }
    }
}

}  // namespace
}  // namespace zul::numerics
