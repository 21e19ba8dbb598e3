// The square root of a double, and that of a vector with the same bits.
#pragma once

#include "elementary/core/value.h"
#include "elementary/root.h"

namespace zul::elementary {
namespace {

#if defined(__GNUC__)
template <class D>
requires(kLanesOf<D> > 1) ZUL_INLINE D Sqrt(D x) {
    if constexpr (kLanesOf<D> == 2) return __builtin_bit_cast(D, _mm_sqrt_pd(__builtin_bit_cast(__m128d, x)));
#if defined(__AVX__)
    if constexpr (kLanesOf<D> == 4)
        return __builtin_bit_cast(D, _mm256_sqrt_pd(__builtin_bit_cast(__m256d, x)));
#endif
#if defined(__AVX512F__)
    if constexpr (kLanesOf<D> == 8)
        return __builtin_bit_cast(D, _mm512_maskz_sqrt_pd(0xFF, __builtin_bit_cast(__m512d, x)));
#endif
}
#endif

}  // namespace
}  // namespace zul::elementary
