// Arguments for the sweeps that every numerical routine has to survive.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <random>

#include "support/sanitized.h"
#include "zul/frame.h"

namespace zul::test {

#ifdef ZUL_TEST_SANITIZED
inline constexpr int kSweepCount = 100'000;
#else
inline constexpr int kSweepCount = 1'000'000;
#endif

// Random numbers of every size, seeded.
class WildArguments {
public:
    explicit WildArguments(std::uint64_t seed) : engine_(seed) {}
    // In [0, 1).
    double Uniform() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }
    double Uniform(double lo, double hi) { return lo + (hi - lo) * Uniform(); }
    // 10 to a power between the two.
    double Power(double lo, double hi) { return std::pow(10, lo + (hi - lo) * Uniform()); }
    // Half of the time 10 to a power between the two, else to any power.
    double Wild(double lo, double hi) { return Uniform() < 0.5 ? Power(lo, hi) : Power(-307, 308); }
    // In [0, 1], also close to its ends.
    double Fraction() {
        const double kind = Uniform();
        if (kind < 0.5) return Uniform();
        return kind < 0.8 ? Power(-300, 0) : 1 - Power(-16, 0);
    }
    // A positive number, usually of ordinary size, sometimes of any.
    double Positive() {
        const double kind = Uniform();
        if (kind < 0.6) return Power(-3, 3);
        if (kind < 0.8) return std::ceil(Power(0, 3)) / 2;
        return kind < 0.97 ? Power(-12, 8) : Power(-307, 300);
    }
    // Now and then one of the values that break things, else the given one.
    double OrSpecial(double value) {
        constexpr std::array kSpecial = {0.0,     1.0,  0.5,   5e-324, DBL_MIN, DBL_MAX,    -DBL_MAX,
                                         -1e-300, -1.0, 1e-16, 1e30,   2e-288,  94906265.0, 94906266.0};
        if (Uniform() >= 0.03) return value;
        return kSpecial[engine_() % kSpecial.size()];
    }

private:
    std::mt19937_64 engine_;
};

// Runs the check on random arguments in trapping mode: a trap is an exception that ends the test.
template <typename Check>
void Sweep(Check check) {
    WildArguments wild(20240229);
    SetKelFpuStates();
    for (int i = 0; i < kSweepCount && !testing::Test::HasFatalFailure(); ++i)
        check(wild);
    ResetFpuStates();
}

inline void ExpectTails(double lower, double upper) {
    ASSERT_TRUE(lower >= 0 && lower <= 1 && upper >= 0 && upper <= 1) << lower << " " << upper;
    ASSERT_NEAR(lower + upper, 1, 1e-15);
}

}  // namespace zul::test
