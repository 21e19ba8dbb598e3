// Random arguments in trapping mode: what a routine must hold to wherever they lie.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "zul/frame.h"

#if defined(__SANITIZE_ADDRESS__)
#define ZUL_TEST_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZUL_TEST_SANITIZED 1
#endif
#endif

namespace zul::test {

#ifdef ZUL_TEST_SANITIZED
inline constexpr int kSweepCount = 100'000;
#else
inline constexpr int kSweepCount = 1'000'000;
#endif

class Random {
public:
    double Uniform(double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(engine_); }
    // 10 to a power: half of the time within the common exponents, else anywhere.
    double Wild(double lo, double hi) {
        const bool common = Uniform(0, 1) < 0.5;
        return std::pow(10, common ? Uniform(lo, hi) : Uniform(-307, 308));
    }
    // Of a probability: even or by its exponent.
    double Probability() { return Uniform(0, 1) < 0.5 ? Uniform(0, 1) : std::pow(10, Uniform(-307, 0)); }

private:
    std::mt19937_64 engine_{20240229};  // NOLINT: the same arguments in each run
};

// In trapping mode: a trap is an exception that ends the test.
template <typename Check>
void Sweep(Check check) {
    Random random;
    SetKelFpuStates();
    for (int i = 0; i < kSweepCount && !testing::Test::HasFatalFailure(); ++i)
        check(random);
    ResetFpuStates();
}

inline void ExpectTails(double lower, double upper) {
    ASSERT_TRUE(lower >= 0 && lower <= 1 && upper >= 0 && upper <= 1) << lower << " " << upper;
    ASSERT_NEAR(lower + upper, 1, 1e-15);
}

}  // namespace zul::test
