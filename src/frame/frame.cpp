#include "zul/frame.h"

#include <bit>
#include <cstdint>

#include "frame/platform.h"

namespace zul {
namespace {

constexpr std::uint64_t kSignBit = 0x8000000000000000;
constexpr std::uint64_t kInfinityBits = 0x7FF0000000000000;

std::uint64_t Bits(double x) {
    return std::bit_cast<std::uint64_t>(x);
}

}  // namespace

int RegisterKelSigfpeHandler(void) {
    frame::TranslateTrapsOfThisThread();
    frame::EnterDefaultMode();
    return 0;
}

void SetKelFpuStates(void) {
    frame::EnterTrappingMode();
}

void ResetFpuStates(void) {
    frame::EnterDefaultMode();
}

// The predicates read bits: they hold in trapping mode and for signalling NaNs too.

bool IsInfinity(double x) {
    return (Bits(x) & ~kSignBit) == kInfinityBits;
}

bool IsPlusInfinity(double x) {
    return Bits(x) == kInfinityBits;
}

bool IsMinusInfinity(double x) {
    return Bits(x) == (kInfinityBits | kSignBit);
}

bool IsNaN(double x) {
    return (Bits(x) & ~kSignBit) > kInfinityBits;
}

bool IsResultNA(double x) {
    return IsNaN(x);
}

}  // namespace zul
