#include "elementary/exponential.h"

#include "elementary/core/exponential.h"
#include "elementary/special.h"

namespace zul::elementary {
namespace {

double SpecialExp(double x) {
    const std::uint64_t bits = Bits(x);
    if (IsNaNBits(bits)) return x + x;
    if (bits == kInfinityBits) return x;
    if (bits == (kInfinityBits | kSignBit)) return 0.0;
    return ScaledExp(x, 0);
}

// The upper of two parts of a number below 1 rounded at 2^-52, where it will be the last place of a denormal.
double RoundedToDenormal(double high, double low) {
    const double sum = 1 + high;
    const double rest = (1 - sum) + high + low;
    return (sum + rest) - 1;
}

}  // namespace

double ScaledExp(double x, double low) {
    constexpr double kOverflow = 710;
    constexpr double kUnderflow = -746;
    if (x > kOverflow) return OverflowResult();
    if (x < kUnderflow) return UnderflowResult();
    const bool large = x > 0;
    const ExpParts<double> parts = SplitExp(x, large ? -1000 : 1022);
    const double rest = parts.power * ExpRest(parts, (parts.high - parts.low) + low);
    const double scaled = parts.power + rest;
    if (large) return scaled * 0x1p1000;
    if (scaled >= 1) return scaled * 0x1p-1022;
    return RoundedToDenormal(scaled, (parts.power - scaled) + rest) * 0x1p-1022;
}

double Exp(double x) {
    if (AnyTopBit(OutsideExp(x))) [[unlikely]]
        return SpecialExp(x);
    return CoreExp(x);
}

double Expm1(double x) {
    if (AbsoluteBits(x) < Bits(kExpm1Small)) return SmallExpm1(x);
    if (!AnyTopBit(OutsideExpm1(x))) [[likely]]
        return CoreExpm1(x);
    return Bits(x) > (kInfinityBits | kSignBit) || !(Bits(x) & kSignBit) ? SpecialExp(x) : -1.0;
}

}  // namespace zul::elementary
