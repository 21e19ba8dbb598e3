#include "numerics/gamma/gamma_tails.h"

#include <gtest/gtest.h>

#include "support/reference_table.h"

namespace zul::numerics {
namespace {

TEST(FineGammaTails, MatchesReferenceOnBothSidesOfEachSwitch) {
    test::ForEachRow("numerics/gamma_tails.csv", [](const std::vector<double>& row) {
        const double a = row[0];
        GammaTails tails{};
        ASSERT_TRUE(FineGammaTails(row[1], a, &tails));
        // The exponent of a far tail of a large shape cancels from numbers up to the shape; for shapes below 1, and from
        // 20 to 100 by the uniform expansion, all digits but the last stand.
        const double rtol = a < 1 || (a >= 20 && a <= 100) ? 2e-14 : a < 1e4 ? 4e-13 : 3e-12;
        const double results[] = {tails.lower, tails.upper, tails.power};
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_TRUE(row[2 + i] < 1e-290 || test::IsNear(results[i], row[2 + i], rtol)) << i;
    });
}

}  // namespace
}  // namespace zul::numerics
