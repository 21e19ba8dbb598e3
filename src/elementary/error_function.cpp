#include "elementary/error_function.h"

#include "elementary/core/error_function.h"
#include "elementary/special.h"

namespace zul::elementary {
namespace {

double SpecialErfc(double x) {
    constexpr double kUnderflow = 28;
    const std::uint64_t bits = Bits(x);
    if (IsNaNBits(bits)) return x + x;
    if (bits & kSignBit) return 2.0;
    if (bits == kInfinityBits) return 0.0;
    if (x >= kUnderflow) return UnderflowResult();
    return ShiftedErfc(x, 600) * 0x1p-600;
}

}  // namespace

double Erfc(double x) {
    if (AnyTopBit(OutsideErfc(x))) [[unlikely]]
        return SpecialErfc(x);
    return CoreErfc(x);
}

}  // namespace zul::elementary
