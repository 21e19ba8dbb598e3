// Exact quotients by divisors whose reciprocals are known.
#pragma once

#include "elementary/core/value.h"

namespace zul::elementary {
namespace {

// Products and sums with one rounding, of vectors of so many bytes, where the level has them.
template <unsigned kBytes>
struct FusedOf {
    static constexpr bool kIsThere = false;
};

#if defined(__AVX2__) && defined(__FMA__)
template <>
struct FusedOf<sizeof(__m256d)> {
    static constexpr bool kIsThere = true;
    static ZUL_INLINE __m256d PlusProduct(__m256d c, __m256d a, __m256d b) {
        return _mm256_fmadd_pd(a, b, c);
    }
    static ZUL_INLINE __m256d MinusProduct(__m256d c, __m256d a, __m256d b) {
        return _mm256_fnmadd_pd(a, b, c);
    }
};
#endif

#if defined(__AVX512F__)
template <>
struct FusedOf<sizeof(__m512d)> {
    static constexpr bool kIsThere = true;
    static ZUL_INLINE __m512d PlusProduct(__m512d c, __m512d a, __m512d b) {
        return _mm512_fmadd_pd(a, b, c);
    }
    static ZUL_INLINE __m512d MinusProduct(__m512d c, __m512d a, __m512d b) {
        return _mm512_fnmadd_pd(a, b, c);
    }
};
#endif

// n / d with the bits of the division, but for the sign of 0, for r = 1 / d rounded and n of either sign. |n| is 0 or
// from 1e-250 to 1e250, d from 1e-150 to 1e150, so that nothing on the way is denormal or overflows.
//
// With d and n / d in [1, 2), u = 2^-52 and |r - 1/d| <= u/4, q = n r has an error of less than 1.5 u, and e = n - q d
// one of at most u^2, and of 0 if |e| <= 2 u. So q + e r differs from n / d by at most 1.75 u^2, which does not matter
// unless n / d is within that of the middle m of two doubles. Let it be, at a distance c, and d = 2 - j u, j >= 1.
// |m - q| is u/2 or 3u/2. The latter takes n |r - 1/d| > u - 2 u^2, so n > 4 - 8 u and d > 2 - 4 u: then n / d is within
// 32 u^2 of a double, and far from a middle. So |e| <= (u/2 + c) d, and q + e r differs from n / d by at most
// (u/2 + c) d u/4. That is below c, since c >= u^2 / (2 d), n - m d being a multiple of u^2 / 2, and d^2 < 4 - d u: the
// sum is on the right side of m.
// Source: P. Markstein, Computation of elementary functions on the IBM RISC System/6000 processor, 1990, which asks for
// a q within u; N. Brisebarre, J.-M. Muller and S. K. Raina, Accelerating correctly rounded floating-point division
// when the divisor is known in advance, 2004.
template <class D>
ZUL_INLINE D Quotient(D n, D d, [[maybe_unused]] D r) {
    using Fused = FusedOf<sizeof(D)>;
    if constexpr (Fused::kIsThere) {
        const D q = n * r;
        const D e = Fused::MinusProduct(n, q, d);
        return Fused::PlusProduct(q, e, r);
    }
    return n / d;
}

// 1 / d as the sum of two numbers, with an error of at most 2^-104 / d: high is off by at most 2^-53 / d, that times d is
// a double, and the rest has the roundings of high and of its product. Where nothing is fused it is not needed, and 0.
template <class D>
struct Reciprocal {
    D high;
    D rest;
};

template <class D>
ZUL_INLINE Reciprocal<D> ReciprocalOf(D d) {
    using Fused = FusedOf<sizeof(D)>;
    if constexpr (Fused::kIsThere) {
        const D high = 1.0 / d;
        const D error = Fused::MinusProduct(Splat<D>(1), high, d);
        return {high, error * high};
    }
    return {D{}, D{}};
}

// n / d, but for the sign of 0, for whole d up to 2^40 and finite n, |n| 0 or from 1e-250 on, in less time from n to
// the quotient: n high + n rest, rounded once but for an error of 2^-103 n / d. That does not matter unless
// n / d is within it of the middle m = M 2^e of two doubles, where M is odd and has 54 digits. Let it be. Then n, of 53
// digits, is a multiple of 2^e, since a finer one is at most half as large as m d. So is m d, which is no double, as it has
// the 54 digits of M at least. So they differ by 2^e or more, which is 2^-94 n at least.
template <class D>
ZUL_INLINE D QuotientByWhole(D n, D d, [[maybe_unused]] const Reciprocal<D>& r) {
    using Fused = FusedOf<sizeof(D)>;
    if constexpr (Fused::kIsThere) return Fused::PlusProduct(n * r.rest, n, r.high);
    return n / d;
}

}  // namespace
}  // namespace zul::elementary
