#include "sampling/combined_block.h"

#include <immintrin.h>

#include <bit>

#include "frame/platform.h"
#include "processor/processor.h"

namespace zul::sampling {
namespace {

// Eight consecutive states of a component are kept in words of 16 bits, and computed together from the eight
// before them.
constexpr std::size_t kLanes = 8;
using Words = std::array<std::uint16_t, kLanes>;

// 1 / m as the sum of two doubles, of which the first is so short that its product with a state is exact. The
// sum of both products is then s / m rounded correctly: s / m is farther from the middle between two doubles
// than the second product is wrong, 2^-69 s / m against 2^-87 s / m.
struct Reciprocal {
    double high;
    double low;
};

constexpr Reciprocal ReciprocalOf(double modulus) {
    constexpr std::uint64_t kLongBits = 0xFFFF;
    const double high = std::bit_cast<double>(std::bit_cast<std::uint64_t>(1 / modulus) & ~kLongBits);
    return {high, (1 - high * modulus) / modulus};
}

// The multipliers of 1 to 8 steps, and for each the quotient 2^16 a / m, rounded down, with which a product
// s a is reduced: s a - floor(s quotient / 2^16) m lies in [0, 2 m), which is below 2^16, for any word s.
// Source: D. Harvey, Faster arithmetic for number-theoretic transforms, 2014, on V. Shoup's butterfly.
struct Component {
    std::uint16_t modulus;
    Words multipliers;
    Words quotients;
    Reciprocal reciprocal;
};

constexpr Component ComponentOf(std::uint32_t multiplier, std::uint32_t modulus) {
    Component component{static_cast<std::uint16_t>(modulus), {}, {}, ReciprocalOf(modulus)};
    std::uint32_t power = 1;
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        power = power * multiplier % modulus;
        component.multipliers[lane] = static_cast<std::uint16_t>(power);
        component.quotients[lane] = static_cast<std::uint16_t>((power << 16) / modulus);
    }
    return component;
}

constexpr Component kParts[kComponents] = {ComponentOf(kMultipliers[0], kModuli[0]),
                                           ComponentOf(kMultipliers[1], kModuli[1]),
                                           ComponentOf(kMultipliers[2], kModuli[2])};

__m128i Broadcast(std::uint32_t word) {
    return _mm_set1_epi16(static_cast<short>(word));
}

__m128i Load(const Words& words) {
    return _mm_loadu_si128(
        reinterpret_cast<const __m128i*>(words.data()));  // NOLINT: what the function takes
}

// One component. The states go on from step to step as they come out of the multiplication, which takes any
// word: to reduce them from [0, 2 m) in between would make the way from one to the next twice as long.
class Lanes {
public:
    Lanes(const Component& component, std::uint32_t state)
        : modulus_(Broadcast(component.modulus)),
          multiplier_(Broadcast(component.multipliers[kLanes - 1])),
          quotient_(Broadcast(component.quotients[kLanes - 1])),
          unreduced_(Multiply(Broadcast(state), Load(component.multipliers), Load(component.quotients))) {}

    void Advance() { unreduced_ = Multiply(unreduced_, multiplier_, quotient_); }
    __m128i Reduced() const {
        const __m128i less = _mm_sub_epi16(unreduced_, modulus_);
        const __m128i isNegative = _mm_srai_epi16(less, 15);
        return _mm_add_epi16(less, _mm_and_si128(isNegative, modulus_));
    }

private:
    __m128i Multiply(__m128i words, __m128i multipliers, __m128i quotients) const {
        const __m128i quotient = _mm_mulhi_epu16(words, quotients);
        return _mm_sub_epi16(_mm_mullo_epi16(words, multipliers), _mm_mullo_epi16(quotient, modulus_));
    }
    __m128i modulus_;
    __m128i multiplier_;
    __m128i quotient_;
    __m128i unreduced_;
};

// The states of the three components.
struct Eight {
    __m128i first;
    __m128i second;
    __m128i third;
};

struct AllLanes {
    AllLanes(const Component* parts, const States& states)
        : first(parts[0], states[0]), second(parts[1], states[1]), third(parts[2], states[2]) {}
    void Advance() {
        first.Advance();
        second.Advance();
        third.Advance();
    }
    Eight Reduced() const { return {first.Reduced(), second.Reduced(), third.Reduced()}; }
    Lanes first;
    Lanes second;
    Lanes third;
};

std::uint32_t LastOf(__m128i states) {
    return static_cast<std::uint32_t>(_mm_extract_epi16(states, kLanes - 1));
}

// Those in the lower or the upper half as whole numbers of 32 bits.
template <bool kUpper>
__m128i Half(__m128i states) {
    const __m128i zero = _mm_setzero_si128();
    return kUpper ? _mm_unpackhi_epi16(states, zero) : _mm_unpacklo_epi16(states, zero);
}

__m128d Ratios(__m128i states, const Reciprocal& reciprocal) {
    const __m128d s = _mm_cvtepi32_pd(states);
    return _mm_add_pd(_mm_mul_pd(s, _mm_set1_pd(reciprocal.high)),
                      _mm_mul_pd(s, _mm_set1_pd(reciprocal.low)));
}

void StoreTwo(double* out, Line line, __m128i first, __m128i second, __m128i third) {
    const __m128d sum =
        _mm_add_pd(_mm_add_pd(Ratios(second, kParts[1].reciprocal), Ratios(first, kParts[0].reciprocal)),
                   Ratios(third, kParts[2].reciprocal));
    const __m128d u = _mm_sub_pd(sum, _mm_cvtepi32_pd(_mm_cvttpd_epi32(sum)));
    _mm_storeu_pd(out, _mm_add_pd(_mm_mul_pd(_mm_set1_pd(line.slope), u), _mm_set1_pd(line.intercept)));
}

template <bool kUpper>
void StoreHalfByTwos(double* out, Line line, const Eight& eight) {
    constexpr int kUpperPair = 0xEE;
    const __m128i first = Half<kUpper>(eight.first);
    const __m128i second = Half<kUpper>(eight.second);
    const __m128i third = Half<kUpper>(eight.third);
    StoreTwo(out, line, first, second, third);
    StoreTwo(out + 2, line, _mm_shuffle_epi32(first, kUpperPair), _mm_shuffle_epi32(second, kUpperPair),
             _mm_shuffle_epi32(third, kUpperPair));
}

ZUL_FUSED inline __m256d RatiosOfFour(__m128i states, const Reciprocal& reciprocal) {
    const __m256d s = _mm256_cvtepi32_pd(states);
    return _mm256_add_pd(_mm256_mul_pd(s, _mm256_set1_pd(reciprocal.high)),
                         _mm256_mul_pd(s, _mm256_set1_pd(reciprocal.low)));
}

template <bool kUpper>
ZUL_FUSED inline void StoreHalf(double* out, Line line, const Eight& eight) {
    const __m256d first = RatiosOfFour(Half<kUpper>(eight.first), kParts[0].reciprocal);
    const __m256d second = RatiosOfFour(Half<kUpper>(eight.second), kParts[1].reciprocal);
    const __m256d third = RatiosOfFour(Half<kUpper>(eight.third), kParts[2].reciprocal);
    const __m256d sum = _mm256_add_pd(_mm256_add_pd(second, first), third);
    const __m256d u = _mm256_sub_pd(sum, _mm256_floor_pd(sum));
    _mm256_storeu_pd(
        out, _mm256_add_pd(_mm256_mul_pd(_mm256_set1_pd(line.slope), u), _mm256_set1_pd(line.intercept)));
}

}  // namespace

// The constants are read through a volatile pointer: a compiler that knows them replaces multiplications by
// chains of shifts and additions, which take longer.

void FillBlockByTwos(double* out, std::size_t count, Line line, States* states) {
    const Component* const volatile parts = kParts;
    AllLanes lanes(parts, *states);
    Eight eight{};
    for (std::size_t i = 0; i < count; i += kLanes) {
        eight = lanes.Reduced();
        lanes.Advance();
        StoreHalfByTwos<false>(out + i, line, eight);
        StoreHalfByTwos<true>(out + i + kLanes / 2, line, eight);
    }
    *states = {LastOf(eight.first), LastOf(eight.second), LastOf(eight.third)};
}

ZUL_FUSED void FillBlockByFours(double* out, std::size_t count, Line line, States* states) {
    const Component* const volatile parts = kParts;
    AllLanes lanes(parts, *states);
    Eight eight{};
    for (std::size_t i = 0; i < count; i += kLanes) {
        eight = lanes.Reduced();
        lanes.Advance();
        StoreHalf<false>(out + i, line, eight);
        StoreHalf<true>(out + i + kLanes / 2, line, eight);
    }
    *states = {LastOf(eight.first), LastOf(eight.second), LastOf(eight.third)};
}

void FillBlock(double* out, std::size_t count, Line line, States* states) {
    // Processors that fuse multiply and add have the vectors of four, which is all that is wanted here.
    void (*volatile fill)(double*, std::size_t, Line, States*) =
        processor::HasFusedMultiplyAdd() ? &FillBlockByFours : &FillBlockByTwos;
    // The block may be needed by a later call, in another mode than the host has now: it is rounded to
    // nearest.
    const bool asItIs = frame::RoundsToNearest();
    const unsigned control = frame::GetControl();
    if (!asItIs) frame::SetControl(frame::kDefaultControl);
    fill(out, count, line, states);
    if (!asItIs) frame::SetControl(control);
}

}  // namespace zul::sampling
