// What a trap leaves of the function that it interrupts and of its callers (Linux).
#include <gtest/gtest.h>

#include <cfloat>
#include <stdexcept>

#include "frame/epilogue.h"
#include "frame/traps.h"
#include "zul/frame.h"

__asm__(R"(
    .text
    .globl zul_test_leaf
    .type zul_test_leaf, @function
zul_test_leaf:
    .cfi_startproc
    movq %rbx, -8(%rsp)
    .cfi_offset %rbx, -16
    movq %r12, -16(%rsp)
    .cfi_offset %r12, -24
    xorl %ebx, %ebx
    xorl %r12d, %r12d
    movl $1, %eax
    cvtsi2sdl %eax, %xmm0
    cvtsi2sdl %ebx, %xmm1
    divsd %xmm1, %xmm0
    movq -8(%rsp), %rbx
    .cfi_restore %rbx
    movq -16(%rsp), %r12
    .cfi_restore %r12
    ret
    .cfi_endproc
    .size zul_test_leaf, .-zul_test_leaf
)");

namespace zul {
namespace {

// The sum, 25, of values that the caller keeps in registers over the call that traps.
template <typename Exception, typename Operation>
long SumKeptOverTrap(Operation operation) {
    long a = 3;
    long b = 4;
    long c = 5;
    long d = 6;
    long e = 7;
    __asm__ volatile("" : "+r"(a), "+r"(b), "+r"(c), "+r"(d), "+r"(e));  // the compiler knows them no longer
    SetKelFpuStates();
    try {
        operation();
        ADD_FAILURE() << "no trap";
    } catch (const Exception&) {
        ResetFpuStates();
    }
    return a + b + c + d + e;
}

TEST(InterruptedFunction, KeepsItsCallersRegistersBelowTheStackPointer) {
    EXPECT_EQ(SumKeptOverTrap<std::runtime_error>([] { return zul_test_leaf(); }), 25);
}

TEST(InterruptedFunction, HasGivenBackItsCallersRegisters) {
    const long one[] = {1};
    const long none[] = {0};
    const test::Columns columns = {one, one, none, none, none, none};
    EXPECT_EQ(SumKeptOverTrap<std::overflow_error>([&] { return test::AddAndScale(columns, 1, DBL_MAX); }),
              25);
    EXPECT_EQ(test::AddAndScale(columns, 1, 1.0), 2.0);
}

}  // namespace
}  // namespace zul
