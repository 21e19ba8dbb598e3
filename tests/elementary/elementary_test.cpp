#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "elementary/arguments.h"
#include "elementary/error_function.h"
#include "elementary/exponential.h"
#include "elementary/functions.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "elementary/trigonometric.h"
#include "support/float_mode.h"
#include "support/reference_table.h"
#include "zul/frame.h"

namespace zul::test {
namespace {

using namespace elementary;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kSignalling = std::numeric_limits<double>::signaling_NaN();
constexpr double kLeast = std::numeric_limits<double>::denorm_min();
constexpr double kHalfPi = 0x1.921fb54442d18p+0;

constexpr unsigned kInvalid = 0x01;
constexpr unsigned kDivide = 0x04;
constexpr unsigned kOverflow = 0x08;

double FromHexadecimal(const std::string& bits) {
    return std::bit_cast<double>(std::uint64_t{std::stoull(bits, nullptr, 16)});
}

TEST(ElementaryFunctions, HardArguments) {
    for (const Row& row : ReadTable("elementary/hard_arguments.csv", ';')) {
        const double x = FromHexadecimal(row[1]);
        const double y = FromHexadecimal(row[2]);
        std::optional<double> result;
        double limit = kPowLimit;
        if (row[0] == "Pow") result = Pow(x, y);
        for (const ElementaryFunction& f : kFunctions) {
            if (row[0] != f.name) continue;
            result = f.scalar(x);
            limit = f.limit;
        }
        ASSERT_TRUE(result) << row[0];
        EXPECT_LE(Places(*result, FromHexadecimal(row[3]), FromHexadecimal(row[4])), limit)
            << row[0] << ' ' << std::hexfloat << x << ' ' << y;
    }
}

// A result and the flags of traps that came with it.
struct Outcome {
    double value;
    unsigned flags;
};

template <class... X>
Outcome Watch(double (*function)(X...), X... x) {
    double (*volatile call)(X...) = function;
    _mm_setcsr(kDefaultMode);
    const double value = call(x...);
    return {value, _mm_getcsr() & (kInvalid | kDivide | kOverflow)};
}

void ExpectOutcome(const Outcome& outcome, double value, unsigned flags, const std::string& what) {
    if (std::isnan(value)) {
        EXPECT_TRUE(std::isnan(outcome.value)) << what;
        EXPECT_TRUE(std::bit_cast<std::uint64_t>(outcome.value) & 0x0008000000000000) << what;
    } else {
        EXPECT_EQ(std::bit_cast<std::uint64_t>(outcome.value), std::bit_cast<std::uint64_t>(value))
            << what << ": " << outcome.value;
    }
    EXPECT_EQ(outcome.flags, flags) << what;
}

// Zeros of either sign, infinities and what lies outside the domain, by their bits; the flags are those of the C
// standard. (In the default mode, since some of them are traps.)
TEST(ElementaryFunctionsDomain, SpecialArguments) {
    struct Case {
        double (*function)(double);
        double x;
        double value;
        unsigned flags = 0;
    };
    const Case cases[] = {
        {Exp, 0.0, 1},
        {Exp, -0.0, 1},
        {Exp, kLeast, 1},
        {Exp, kInfinity, kInfinity},
        {Exp, -kInfinity, 0.0},
        {Exp, 709.79, kInfinity, kOverflow},
        {Exp, 1e308, kInfinity, kOverflow},
        {Exp, -745.2, 0.0},
        {Exp, -1e308, 0.0},
        {Exp, 0x1.62e42fefa39efp+9, 0x1.fffffffffff2ap+1023},
        {Exp, -0x1.74910d52d3051p+9, kLeast},
        {Expm1, 0.0, 0.0},
        {Expm1, -0.0, -0.0},
        {Expm1, -kLeast, -kLeast},
        {Expm1, kInfinity, kInfinity},
        {Expm1, -kInfinity, -1},
        {Expm1, 710.0, kInfinity, kOverflow},
        {Expm1, -1e308, -1},
        {Log, 1, 0.0},
        {Log, 0.0, -kInfinity, kDivide},
        {Log, -0.0, -kInfinity, kDivide},
        {Log, -kLeast, kNaN, kInvalid},
        {Log, -kInfinity, kNaN, kInvalid},
        {Log, kInfinity, kInfinity},
        {Log, kLeast, -0x1.74385446d71c3p+9},
        {Log1p, 0.0, 0.0},
        {Log1p, -0.0, -0.0},
        {Log1p, -kLeast, -kLeast},
        {Log1p, -1, -kInfinity, kDivide},
        {Log1p, -0x1.0000000000001p+0, kNaN, kInvalid},
        {Log1p, -kInfinity, kNaN, kInvalid},
        {Log1p, kInfinity, kInfinity},
        {Log1p, 0x1.fffffffffffffp1023, 0x1.62e42fefa39efp+9},
        {Sin, -0.0, -0.0},
        {Sin, -kLeast, -kLeast},
        {Sin, kInfinity, kNaN, kInvalid},
        {Cos, -0.0, 1},
        {Cos, -kInfinity, kNaN, kInvalid},
        {Tan, -0.0, -0.0},
        {Tan, -kLeast, -kLeast},
        {Tan, kInfinity, kNaN, kInvalid},
        {Atan, -0.0, -0.0},
        {Atan, -kLeast, -kLeast},
        {Atan, -kInfinity, -kHalfPi},
        {Atan, 1e308, kHalfPi},
        {Erfc, -0.0, 1},
        {Erfc, kInfinity, 0.0},
        {Erfc, -kInfinity, 2},
        {Erfc, -1e308, 2},
        {Erfc, 1e308, 0.0},
        {Erfc, 27.3, 0.0},
        {Erfc, 27.226, kLeast},
    };
    for (const Case& c : cases)
        ExpectOutcome(Watch(c.function, c.x), c.value, c.flags, std::to_string(&c - cases));
    for (const ElementaryFunction& f : kFunctions) {
        ExpectOutcome(Watch(f.scalar, kNaN), kNaN, 0, f.name);
        ExpectOutcome(Watch(f.scalar, -kNaN), kNaN, 0, f.name);
        ExpectOutcome(Watch(f.scalar, kSignalling), kNaN, kInvalid, f.name);
    }
}

TEST(ElementaryFunctionsDomain, SpecialPowers) {
    struct Case {
        double x;
        double y;
        double value;
        unsigned flags = 0;
    };
    const Case cases[] = {
        {kNaN, 0.0, 1},
        {kNaN, 1, kNaN},
        {1, kNaN, 1},
        {2, kNaN, kNaN},
        {kSignalling, 0.0, kNaN, kInvalid},
        {1, kSignalling, kNaN, kInvalid},
        {0.0, 3, 0.0},
        {-0.0, 3, -0.0},
        {-0.0, 2, 0.0},
        {-0.0, 0.5, 0.0},
        {0.0, -3, kInfinity, kDivide},
        {-0.0, -3, -kInfinity, kDivide},
        {-0.0, -2.5, kInfinity, kDivide},
        {kInfinity, 0.5, kInfinity},
        {kInfinity, -0.5, 0.0},
        {-kInfinity, 3, -kInfinity},
        {-kInfinity, 2, kInfinity},
        {-kInfinity, -3, -0.0},
        {-1, kInfinity, 1},
        {0.5, kInfinity, 0.0},
        {-2, kInfinity, kInfinity},
        {-2, -kInfinity, 0.0},
        {0.0, -kInfinity, kInfinity},
        {-8, 1.0 / 3, kNaN, kInvalid},
        {-2, 3, -8},
        {-2, -2, 0.25},
        {-1, 0x1p53 - 1, -1},
        {-1, 0x1p53, 1},
        {-1, 1e300, 1},
        {2, 1e300, kInfinity, kOverflow},
        {2, -1e300, 0.0},
        {0.5, -1e300, kInfinity, kOverflow},
        {-2, 1025, -kInfinity, kOverflow},
        {-2, -1075, -0.0},
        {-2, -1073, -2 * kLeast},
        {kLeast, 0.5, 0x1p-537},
        {kLeast, -1, kInfinity, kOverflow},
        {kLeast, kLeast, 1},
        {0x1.fffffffffffffp1023, 1, 0x1.fffffffffffffp1023},
        {3, 2, 9},
        {10, 22, 1e22},
    };
    for (const Case& c : cases)
        ExpectOutcome(Watch(Pow, c.x, c.y), c.value, c.flags,
                      std::to_string(c.x) + " to the " + std::to_string(c.y));
}

// Whatever the bits of the arguments, a flag has its reason in the result.
void ExpectReasons(const Outcome& outcome, bool allFinite, double x, double y) {
    const bool infinite = std::isinf(outcome.value);
    const bool wrong =
        (outcome.flags & kInvalid) != (allFinite && std::isnan(outcome.value) ? kInvalid : 0) ||
        (outcome.flags & (kDivide | kOverflow)) == (kDivide | kOverflow) ||
        ((outcome.flags & (kDivide | kOverflow)) != 0) != (allFinite && infinite);
    EXPECT_FALSE(wrong) << std::hexfloat << x << ' ' << y << ": " << outcome.value << ", flags "
                        << outcome.flags;
}

TEST(ElementaryFunctionsDomain, FlagsOfAnyArgument) {
    RandomArguments arguments;
    for (int k = 0; k < 50'000 && !testing::Test::HasFailure(); ++k) {
        const double x = std::bit_cast<double>(arguments.Bits());
        const double y = std::bit_cast<double>(arguments.Bits());
        if (!std::isfinite(x) || !std::isfinite(y)) continue;
        for (const ElementaryFunction& f : kFunctions)
            ExpectReasons(Watch(f.scalar, x), true, x, 0);
        ExpectReasons(Watch(Pow, x, y), true, x, y);
        ExpectReasons(Watch(Pow, x, arguments.Uniform(-3, 3)), true, x, y);
    }
}

TEST(ElementaryFunctionsDomain, TrapsInTrappingMode) {
    const auto trapped = [](double (*function)(double), double x) {
        double (*volatile call)(double) = function;
        SetKelFpuStates();
        const double value = call(x);
        ResetFpuStates();
        return value;
    };
    EXPECT_THROW(trapped(Log, 0), std::runtime_error);
    EXPECT_THROW(trapped(Log1p, -2), std::invalid_argument);
    EXPECT_THROW(trapped(Exp, 710), std::overflow_error);
    EXPECT_THROW(trapped(Sin, kInfinity), std::invalid_argument);
    for (const ElementaryFunction& f : kFunctions)
        EXPECT_TRUE(std::isnan(trapped(f.scalar, kNaN))) << f.name;
}

}  // namespace
}  // namespace zul::test
