#include "elementary/logarithm.h"

#include "elementary/core/logarithm.h"
#include "elementary/special.h"

namespace zul::elementary {
namespace {

double SpecialLog(double x) {
    const std::uint64_t bits = Bits(x);
    if (IsNaNBits(bits)) return x + x;
    if ((bits & ~kSignBit) == 0) return PoleResult(true);
    if (bits & kSignBit) return InvalidResult();
    if (bits == kInfinityBits) return x;
    return LogOfBits<double>(NormalizedBits(x));
}

double SpecialLog1p(double x) {
    const std::uint64_t bits = Bits(x);
    if (IsNaNBits(bits)) return x + x;
    if (bits == Bits(-1.0)) return PoleResult(true);
    if (bits & kSignBit) return InvalidResult();
    return Log(x);
}

}  // namespace

double Log(double x) {
    if (Bits(x) - kLeastNormalBits >= kInfinityBits - kLeastNormalBits) [[unlikely]]
        return SpecialLog(x);
    return CoreLog(x);
}

double Log1p(double x) {
    if (AbsoluteBits(x) < Bits(kLog1pSmall)) return SmallLog1p(x);
    if (AnyTopBit(OutsideLog1p(x))) [[unlikely]]
        return SpecialLog1p(x);
    return CoreLog1p(x);
}

}  // namespace zul::elementary
