// Operations that raise each kind of hardware trap, from run-time operands.
#pragma once

#include <emmintrin.h>

namespace zul::test {

inline double Divide(double a, double b) {
    volatile double x = a;
    volatile double y = b;
    return x / y;
}

inline double Multiply(double a, double b) {
    volatile double x = a;
    volatile double y = b;
    return x * y;
}

// One packed instruction: 0 / 0 beside 1 / 0.
inline double DividePacked() {
    volatile double zero = 0;
    volatile double one = 1;
    const __m128d quotients = _mm_div_pd(_mm_set_pd(zero, one), _mm_set1_pd(zero));
    return _mm_cvtsd_f64(quotients) + _mm_cvtsd_f64(_mm_unpackhi_pd(quotients, quotients));
}

__attribute__((no_sanitize("undefined"))) inline int DivideIntegers(int a, int b) {
    volatile int x = a;
    volatile int y = b;
    return x / y;  // NOLINT: that is its purpose
}

}  // namespace zul::test
