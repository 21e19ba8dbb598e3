#include "zul/frame.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfenv>
#include <cfloat>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <typeinfo>

#include "frame/traps.h"
#include "support/float_mode.h"
#include "zul/distributions.h"

namespace zul {
namespace {

using test::kDefaultMode;
using test::kTrappingMode;

// Runs the operation where the compiler cannot know that it does not throw.
template <typename Operation>
double Opaque(Operation operation) {
    double (*volatile call)(Operation&) = [](Operation& f) -> double { return f(); };
    return call(operation);
}

TEST(Frame, SetsTheWholeControlRegister) {
    _mm_setcsr(test::kForeignMode);
    SetKelFpuStates();
    EXPECT_EQ(_mm_getcsr(), kTrappingMode);
    ResetFpuStates();
    EXPECT_EQ(_mm_getcsr(), kDefaultMode);
    EXPECT_EQ(test::Divide(1, 0), std::numeric_limits<double>::infinity());
    std::fesetround(FE_UPWARD);
    EXPECT_EQ(RegisterKelSigfpeHandler(), 0);
    EXPECT_EQ(std::fegetround(), FE_TONEAREST);
    EXPECT_EQ(_mm_getcsr(), kDefaultMode);
}

TEST(Traps, BecomeStandardExceptions) {
    struct Case {
        double (*operation)();
        const std::type_info& type;
        std::string message;
    };
    const Case cases[] = {
        {[] { return test::Divide(0, 0); }, typeid(std::invalid_argument),
         "Float exception: invalid_argument."},
        {[] { return test::Divide(1, 0); }, typeid(std::runtime_error), "Float exception: divide by zero."},
        {[] { return test::Multiply(DBL_MAX, 2); }, typeid(std::overflow_error),
         "Float exception: overflow."},
        {[] { return test::DividePacked(); }, typeid(std::runtime_error),
         "Runtime exception: multiple floating point faults/traps."},
    };
    for (const Case& c : cases) {
        for (int repeat = 0; repeat < 3; ++repeat) {
            SetKelFpuStates();
            try {
                const double result = Opaque(c.operation);
                ResetFpuStates();
                ADD_FAILURE() << c.message << " did not come: " << result;
            } catch (const std::exception& e) {
                EXPECT_EQ(test::ModeWithoutFlags(), kTrappingMode);
                ResetFpuStates();
                EXPECT_EQ(typeid(e), c.type) << c.message;
                EXPECT_EQ(e.what(), c.message);
            }
        }
    }
}

TEST(Traps, IntegerDivisionKeepsTheFloatingPointMode) {
    for (const unsigned mode : {kDefaultMode, kTrappingMode}) {
        _mm_setcsr(mode);
        try {
            const double result = Opaque([] { return static_cast<double>(test::DivideIntegers(1, 0)); });
            ADD_FAILURE() << result;
        } catch (const std::runtime_error& e) {
            const unsigned control = _mm_getcsr();
            ResetFpuStates();
            EXPECT_EQ(control & ~test::kFlags, mode);
            EXPECT_STREQ(e.what(), "Runtime exception: integer division by zero.");
        }
    }
}

TEST(Traps, UnderflowAndInexactResultsDoNotTrap) {
    SetKelFpuStates();
    const double small = test::Multiply(DBL_MIN, 0.1);
    const double third = test::Divide(1, 3);
    ResetFpuStates();
    EXPECT_GT(small, 0);
    EXPECT_EQ(third, 1.0 / 3);
}

TEST(Traps, EndAProcessWhoseThreadDidNotRegister) {
#ifdef _WIN32
    const testing::ExitedWithCode ends(static_cast<int>(0xC000008E));  // the code of a division by zero
#else
    const testing::KilledBySignal ends(SIGFPE);
#endif
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::thread([] {
                    SetKelFpuStates();
                    volatile double result = test::Divide(1, 0);
                    (void)result;
                }).join(),
                ends, "");
}

// 1 / 0 in the x87 unit with that exception unmasked: pending until `waits`, an instruction that looks for it.
void DivideInX87Unit(bool waits) {
    constexpr unsigned short kTrapsDivisionByZero = 0x037B;
    __asm__ volatile("fldcw %0\n\tfldz\n\tfld1\n\tfdivp" : : "m"(kTrapsDivisionByZero));
    if (waits) __asm__ volatile("fwait");
}

// As often as there are registers in that unit, and more: what is left in them would fill it.
TEST(X87Unit, AnExceptionComesOnceAndLeavesNothing) {
    void (*volatile divide)(bool) = DivideInX87Unit;
    const double expected = ExponentialCdf(1.5, 2, 0, false);
    for (int i = 0; i < 10; ++i) {
        const bool waits = i < 9;  // otherwise it may stay pending; some compilers look for it at once
        try {
            divide(waits);
            EXPECT_FALSE(waits);
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "Float exception: divide by zero.");
        }
        EXPECT_NO_THROW(ResetFpuStates());
        EXPECT_EQ(ExponentialCdf(1.5, 2, 0, false), expected);
        EXPECT_EQ(RegisterKelSigfpeHandler(), 0);
        volatile long double x = 1.5L;
        EXPECT_EQ(x + x, 3.0L);
    }
    __asm__ volatile("fninit");
}

TEST(Predicates, LookAtTheBits) {
    const double inf = std::numeric_limits<double>::infinity();
    const double quiet = std::numeric_limits<double>::quiet_NaN();
    const double signalling = std::bit_cast<double>(std::uint64_t{0xFFF0000000000001});
    SetKelFpuStates();
    for (const double nan : {quiet, -quiet, signalling}) {
        EXPECT_TRUE(IsNaN(nan) && IsResultNA(nan));
        EXPECT_FALSE(IsInfinity(nan) || IsPlusInfinity(nan) || IsMinusInfinity(nan));
    }
    for (const double number : {0.0, -1.0, DBL_MAX, 1.23456e30, inf, -inf}) {
        EXPECT_FALSE(IsNaN(number) || IsResultNA(number));
        EXPECT_EQ(IsPlusInfinity(number), number == inf);
        EXPECT_EQ(IsMinusInfinity(number), number == -inf);
        EXPECT_EQ(IsInfinity(number), number == inf || number == -inf);
    }
}

}  // namespace
}  // namespace zul
