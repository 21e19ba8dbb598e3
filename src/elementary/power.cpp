#include "elementary/power.h"

#include "elementary/core/power.h"
#include "elementary/exponential.h"
#include "elementary/special.h"

namespace zul::elementary {
namespace {

enum class Exponent { Fraction, Even, Odd };

Exponent KindOf(double y) {
    constexpr int kBias = 1023;
    constexpr int kDigits = 52;
    const std::uint64_t bits = AbsoluteBits(y);
    const int exponent = static_cast<int>(bits >> kDigits) - kBias;
    if (exponent < 0) return Exponent::Fraction;
    if (exponent > kDigits) return Exponent::Even;
    const std::uint64_t one = std::uint64_t{1} << (kDigits - exponent);
    if (bits & (one - 1)) return Exponent::Fraction;
    return bits & one ? Exponent::Odd : Exponent::Even;
}

double Finish(std::uint64_t x, double y) {
    const TwoDoubles<double> log = LogOfPower(x, y);
    if (AnyTopBit(OutsideExp(log.high))) [[unlikely]]
        return ScaledExp(log.high, log.low);
    return CoreExpOfTwo(log.high, log.low);
}

// Neither is NaN, nor is x 1 or y 0.
double InfinitePower(std::uint64_t x, double y) {
    if (x == Bits(1.0)) return 1.0;
    return (x > Bits(1.0)) == (y > 0) ? FromBits<double>(kInfinityBits) : 0.0;
}

// Of |x|, when it is 0 or infinite.
double PowerOfLimit(std::uint64_t x, double y, bool negative) {
    if ((x == 0) == (y > 0)) return negative ? -0.0 : 0.0;
    if (x == 0) return PoleResult(negative);
    return FromBits<double>(negative ? kInfinityBits | kSignBit : kInfinityBits);
}

double PositivePower(double x, double y) {
    if (AbsoluteBits(y) >= Bits(0x1p64)) {
        if (x == 1) return 1.0;
        return (x > 1) == (y > 0) ? OverflowResult() : UnderflowResult();
    }
    return Finish(NormalizedBits(x), y);
}

double SpecialPow(double x, double y) {
    const std::uint64_t bits = AbsoluteBits(x);
    if (AbsoluteBits(y) == 0 && !IsSignallingBits(Bits(x))) return 1.0;
    if (Bits(x) == Bits(1.0) && !IsSignallingBits(Bits(y))) return 1.0;
    if (IsNaNBits(Bits(x)) || IsNaNBits(Bits(y))) return x + y;
    if (AbsoluteBits(y) == kInfinityBits) return InfinitePower(bits, y);
    const Exponent kind = KindOf(y);
    const bool negative = (Bits(x) & kSignBit) != 0 && kind == Exponent::Odd;
    if (bits == 0 || bits == kInfinityBits) return PowerOfLimit(bits, y, negative);
    if ((Bits(x) & kSignBit) != 0 && kind == Exponent::Fraction) return InvalidResult();
    const double power = PositivePower(Absolute(x), y);
    return negative ? -power : power;
}

}  // namespace

double Pow(double x, double y) {
    if (AnyTopBit(OutsidePow(x, y))) [[unlikely]]
        return SpecialPow(x, y);
    return Finish(Bits(x), y);
}

}  // namespace zul::elementary
