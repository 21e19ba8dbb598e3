#include "numerics/gamma/trigamma.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "numerics/gamma/digamma.h"
#include "support/reference_table.h"

namespace zul::numerics {
namespace {

constexpr double kPi = std::numbers::pi;

// M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions, 1964, 6.3.2, 6.3.3, 6.4.2, 6.4.4; Catalan's
// constant at 1/4.
TEST(Trigamma, HasItsKnownValues) {
    test::ExpectExact({{Trigamma(1), kPi * kPi / 6},
                       {Trigamma(0.5), kPi * kPi / 2},
                       {Trigamma(0.25), kPi * kPi + 8 * 0.91596559417721901505},
                       {Trigamma(20), kPi * kPi / 6 - 1.5936632439130234},
                       {LogLessDigamma(1), std::numbers::egamma},
                       {LogLessDigamma(0.5), std::numbers::egamma + std::numbers::ln2},
                       {Trigamma(1e10), 1e-10 + 0.5e-20},
                       {TrigammaExcess(1e10), 0.5e-20 * (1 + 1e-10 / 3)},
                       {LogLessDigamma(1e10), 0.5e-10 * (1 + 1e-10 / 6)},
                       {TrigammaExcess(1e-10), 1e20 - 1e10 + kPi * kPi / 6}},
                      2e-14);
}

// The recurrences run through the start of the series.
TEST(Trigamma, FollowsItsRecurrence) {
    for (double x = 0.3; x < 14; x += 0.37) {
        EXPECT_NEAR(Trigamma(x) - Trigamma(x + 1), 1 / (x * x), 1e-14 / (x * x) + 1e-15);
        EXPECT_NEAR(LogLessDigamma(x), std::log(x) - Digamma(x), 2e-12);
        const double slope = (LogLessDigamma(x + 1e-4) - LogLessDigamma(x - 1e-4)) / 2e-4;
        EXPECT_NEAR(-TrigammaExcess(x), slope, 1e-7 / (x * x * x * x));
    }
}

TEST(Trigamma, OutsideItsDomain) {
    for (const double x : {0.0, -1.5, kNaN})
        test::ExpectExact({{Trigamma(x), kNaN}, {TrigammaExcess(x), kNaN}, {LogLessDigamma(x), kNaN}});
}

}  // namespace
}  // namespace zul::numerics
