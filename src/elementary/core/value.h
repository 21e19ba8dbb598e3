// The values over which each elementary function is written once: a double, or a vector of 2, 4 or 8 doubles. All do
// the same IEEE operations in the same order, so that each lane has the bits of the double.
//
// All here and in the other headers of this folder is in an unnamed namespace: a source that is compiled for a better
// processor keeps its code to itself.
#pragma once

#include <cstdint>
#include <cstring>

#include "processor/processor.h"

#if defined(__GNUC__)
#include <immintrin.h>
#endif

#if defined(__FAST_MATH__)
#error The elementary functions need IEEE arithmetic
#endif

namespace zul::elementary {
namespace {

// Unsigned numbers of 64 bits, as many as fill so many bytes.
template <unsigned kBytes>
struct Unsigned;

template <>
struct Unsigned<8> {
    using Type = std::uint64_t;
};

#if defined(__GNUC__)
template <>
struct Unsigned<16> {
    using Type = std::uint64_t __attribute__((vector_size(16)));
};

template <>
struct Unsigned<32> {
    using Type = std::uint64_t __attribute__((vector_size(32)));
};

template <>
struct Unsigned<64> {
    using Type = std::uint64_t __attribute__((vector_size(64)));
};
#endif

template <class D>
inline constexpr int kLanesOf = sizeof(D) / sizeof(double);

template <class D>
using BitsOf = typename Unsigned<sizeof(D)>::Type;

inline constexpr std::uint64_t kSignBit = 0x8000000000000000;
inline constexpr std::uint64_t kInfinityBits = 0x7FF0000000000000;
inline constexpr std::uint64_t kLeastNormalBits = 0x0010000000000000;
// Keeps 26 bits of a number, so that products of two such are exact; what is cut off has 27.
inline constexpr std::uint64_t kUpperHalf = 0xFFFFFFFFF8000000;
// A number below 2^51 is rounded to a whole one, which the low bits then hold, by adding this.
inline constexpr double kRounder = 0x1.8p52;

// By the compiler, since std::bit_cast would be a common function of all sources at -O0.
template <class D>
ZUL_INLINE constexpr BitsOf<D> Bits(D x) {
    return __builtin_bit_cast(BitsOf<D>, x);
}

template <class D>
ZUL_INLINE constexpr D FromBits(BitsOf<D> bits) {
    return __builtin_bit_cast(D, bits);
}

template <class D>
ZUL_INLINE BitsOf<D> AbsoluteBits(D x) {
    return Bits(x) & ~kSignBit;
}

template <class D>
ZUL_INLINE D Absolute(D x) {
    return FromBits<D>(AbsoluteBits(x));
}

template <class D>
struct Two {
    D first;
    D second;
};

// starts + slopes x of two lines: for a double both at once, as lanes of one vector.
template <class D>
ZUL_INLINE Two<D> AlongLines(Two<D> starts, Two<double> slopes, D x) {
#if defined(__GNUC__)
    if constexpr (kLanesOf<D> == 1) {
        using Both = double __attribute__((vector_size(16)));
        const Both lines = Both{starts.first, starts.second} + Both{slopes.first, slopes.second} * Both{x, x};
        return {lines[0], lines[1]};
    }
#endif
    return {starts.first + slopes.first * x, starts.second + slopes.second * x};
}

// x, which is not negative, with the sign of another number.
template <class D>
ZUL_INLINE D WithSignOf(D x, D other) {
    return FromBits<D>(Bits(x) | (Bits(other) & kSignBit));
}

template <class D>
ZUL_INLINE D UpperHalf(D x) {
    return FromBits<D>(Bits(x) & kUpperHalf);
}

template <class D>
ZUL_INLINE D Splat(double x) {
    return x - D{};
}

template <class Mask, class D>
ZUL_INLINE D Select(Mask condition, D a, D b) {
    return condition ? a : b;
}

// Has the top bit where bits >= limit; both are below 2^63. No comparison of doubles, which NaN would trap.
template <class U>
ZUL_INLINE U NotBelow(U bits, std::uint64_t limit) {
    return (limit - 1) - bits;
}

template <class U>
ZUL_INLINE bool AnyTopBit(U bits) {
    if constexpr (sizeof(U) == sizeof(std::uint64_t)) {
        return (bits & kSignBit) != 0;
    } else {
#if defined(__AVX512F__)
        if constexpr (sizeof(U) == sizeof(__m512i))
            return _mm512_movepi64_mask(__builtin_bit_cast(__m512i, bits)) != 0;
#endif
#if defined(__AVX__)
        if constexpr (sizeof(U) == sizeof(__m256d))
            return _mm256_movemask_pd(__builtin_bit_cast(__m256d, bits)) != 0;
#endif
        std::uint64_t any = 0;
        for (unsigned k = 0; k < sizeof(U) / sizeof any; ++k)
            any |= bits[k];
        return (any & kSignBit) != 0;
    }
}

// Whether a comparison holds for any lane.
template <class D, class Comparison>
ZUL_INLINE bool AnyLane(Comparison holds) {
    if constexpr (sizeof(D) == sizeof(double))
        return holds;
    else
        return AnyTopBit((BitsOf<D>)holds);
}

template <class D>
ZUL_INLINE D Load(const double* from) {
    D value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class D>
ZUL_INLINE void Store(double* to, D value) {
    std::memcpy(to, &value, sizeof value);
}

#if defined(__AVX512F__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored \
    "-Wsign-conversion"  // of the mask, in the macro that this is in GCC's debug builds
ZUL_INLINE __m512d GatherEight(const double* table, __m512i place) {
    return _mm512_mask_i64gather_pd(_mm512_setzero_pd(), 0xFF, place, table, 8);
}
#pragma GCC diagnostic pop
#endif

// table[kStride index] of each lane.
template <class D, int kStride>
ZUL_INLINE D Gather(const double* table, BitsOf<D> index) {
    if constexpr (kLanesOf<D> == 1) {
        return table[kStride * index];
    } else {
        const BitsOf<D> place = index * kStride;
#if defined(__AVX512F__)
        if constexpr (kLanesOf<D> == 8)
            return __builtin_bit_cast(D, GatherEight(table, __builtin_bit_cast(__m512i, place)));
#endif
        D values = {};
        for (int k = 0; k < kLanesOf<D>; ++k)
            values[k] = table[place[k]];
        return values;
    }
}

}  // namespace
}  // namespace zul::elementary
