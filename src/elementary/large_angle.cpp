#include "elementary/large_angle.h"

#include <bit>

#include "elementary/core/tables.h"
#include "elementary/core/value.h"

namespace zul::elementary {
namespace {

struct Words {  // a number of 128 bits
    std::uint64_t high;
    std::uint64_t low;
};

Words Product(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t kLow = 0xFFFFFFFF;
    const std::uint64_t low = (a & kLow) * (b & kLow);
    const std::uint64_t first = (a >> 32) * (b & kLow) + (low >> 32);
    const std::uint64_t second = (a & kLow) * (b >> 32) + (first & kLow);
    return {(a >> 32) * (b >> 32) + (first >> 32) + (second >> 32), (second << 32) | (low & kLow)};
}

// 64 bits of kTwoOverPi from a bit on.
std::uint64_t BitsFrom(unsigned bit) {
    const unsigned word = bit / 64;
    const unsigned shift = bit % 64;
    return shift == 0 ? kTwoOverPi[word]
                      : (kTwoOverPi[word] << shift) | (kTwoOverPi[word + 1] >> (64 - shift));
}

struct Fixed {  // 192 bits
    std::uint64_t words[3];
};

// The cells of mantissa 2^exponent, seven bits before the point and 185 behind it; those before them are whole turns.
Fixed CountCells(std::uint64_t mantissa, int exponent) {
    constexpr int kLeadingZeros = 64;
    const auto bit = static_cast<unsigned>(kLeadingZeros + exponent - 2);
    const Words low = Product(mantissa, BitsFrom(bit + 128));
    const Words middle = Product(mantissa, BitsFrom(bit + 64));
    const std::uint64_t second = middle.low + low.high;
    const std::uint64_t carry = second < low.high ? 1 : 0;
    return {{mantissa * BitsFrom(bit) + middle.high + carry, second, low.low}};
}

// A fraction of a cell by its first bits, in two doubles.
Words FirstBits(const Fixed& fraction) {
    const std::uint64_t* w = fraction.words;
    const unsigned first = w[0] == 0 ? 1 : 0;
    const int zeros = std::countl_zero(w[first]);
    if (zeros == 0) return {w[first], w[first + 1]};
    const std::uint64_t last = first == 0 ? w[2] : 0;
    return {(w[first] << zeros) | (w[first + 1] >> (64 - zeros)),
            (w[first + 1] << zeros) | (last >> (64 - zeros))};
}

Fixed Negative(const Fixed& a) {
    Fixed negative{};
    std::uint64_t carry = 1;
    for (int k = 2; k >= 0; --k) {
        negative.words[k] = ~a.words[k] + carry;
        carry = carry != 0 && negative.words[k] == 0 ? 1 : 0;
    }
    return negative;
}

int CountZeros(const Fixed& a) {
    return a.words[0] != 0 ? std::countl_zero(a.words[0]) : 64 + std::countl_zero(a.words[1]);
}

double PowerOfTwo(int exponent) {
    return FromBits<double>(static_cast<std::uint64_t>(exponent + 1023) << 52);
}

// The fraction, which stands for a number below 1/2, times pi / 64.
void ScaleFraction(const Fixed& fraction, LargeAngle* angle) {
    const Words first = FirstBits(fraction);
    const double scale = PowerOfTwo(-CountZeros(fraction) - 64);
    const double a = static_cast<double>(first.high >> 12) * (0x1p12 * scale);
    const double b = static_cast<double>(((first.high << 52) | (first.low >> 12)) >> 11) * (0x1p-41 * scale);
    const double upperA = UpperHalf(a);
    const double lowerA = a - upperA;
    const double upperStep = UpperHalf(kSineStepHigh);
    const double lowerStep = kSineStepHigh - upperStep;
    const double product = a * kSineStepHigh;
    angle->high = product;
    angle->low = (((upperA * upperStep - product) + upperA * lowerStep) + lowerA * upperStep) +
                 lowerA * lowerStep + (a * kSineStepLow + b * kSineStepHigh);
}

}  // namespace

LargeAngle ReduceLargeAngle(double x) {
    constexpr std::uint64_t kFraction = 0x000FFFFFFFFFFFFF;
    const std::uint64_t bits = AbsoluteBits(x);
    const Fixed cells =
        CountCells((bits & kFraction) | kLeastNormalBits, static_cast<int>(bits >> 52) - 1075);
    const std::uint64_t* w = cells.words;
    Fixed fraction{{(w[0] << 7) | (w[1] >> 57), (w[1] << 7) | (w[2] >> 57), w[2] << 7}};
    const bool above = (fraction.words[0] & kSignBit) != 0;
    if (above) fraction = Negative(fraction);
    LargeAngle angle{(w[0] >> 57) + (above ? 1 : 0), 0, 0};
    ScaleFraction(fraction, &angle);
    if (above != ((Bits(x) & kSignBit) != 0)) angle = {angle.cell, -angle.high, -angle.low};
    if (Bits(x) & kSignBit) angle.cell = 0 - angle.cell;
    return angle;
}

}  // namespace zul::elementary
