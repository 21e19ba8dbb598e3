#include "elementary/trigonometric.h"

#include "elementary/core/trigonometric.h"
#include "elementary/large_angle.h"
#include "elementary/special.h"

namespace zul::elementary {
namespace {

// What the three do with an angle that is neither NaN nor small.
template <class Sum>
ZUL_INLINE double OfAnyAngle(double x, Sum sum) {
    if (AbsoluteBits(x) == kInfinityBits) return InvalidResult();
    const LargeAngle large = ReduceLargeAngle(x);
    return sum(Angle<double>{large.cell, large.high, large.low});
}

bool IsSmallAngle(double x) {
    return AbsoluteBits(x) < Bits(kSmallAngle);
}

}  // namespace

double Sin(double x) {
    if (!AnyTopBit(OutsideAngles(x))) [[likely]]
        return CoreSin(x);
    if (IsNaNBits(Bits(x))) return x + x;
    if (IsSmallAngle(x)) return x;
    return OfAnyAngle(x, [](const Angle<double>& angle) { return SumSine(SplitSine(angle)); });
}

double Cos(double x) {
    if (!AnyTopBit(OutsideAngles(x))) [[likely]]
        return CoreCos(x);
    if (IsNaNBits(Bits(x))) return x + x;
    if (IsSmallAngle(x)) return 1.0;
    return OfAnyAngle(x, [](const Angle<double>& angle) { return SumSine(SplitSine(angle, kCosineTurn)); });
}

double Tan(double x) {
    if (!AnyTopBit(OutsideAngles(x))) [[likely]]
        return CoreTan(x);
    if (IsNaNBits(Bits(x))) return x + x;
    if (IsSmallAngle(x)) return x;
    return OfAnyAngle(x, [](const Angle<double>& angle) { return SumTangent(angle); });
}

double Atan(double x) {
    if (!AnyTopBit(OutsideAtan(x))) [[likely]]
        return CoreAtan(x);
    if (IsNaNBits(Bits(x))) return x + x;
    constexpr double kHalfPi = 0x1.921fb54442d18p+0;
    return WithSignOf(kHalfPi, x);
}

}  // namespace zul::elementary
