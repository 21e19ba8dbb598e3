// The floating-point modes of the library, as the control register has them.
#pragma once

#include <xmmintrin.h>

namespace zul::test {

inline constexpr unsigned kDefaultMode = 0x1F80;
inline constexpr unsigned kTrappingMode = 0x1900;
inline constexpr unsigned kForeignMode = 0xFFC0;  // rounds towards zero, flushes denormals
inline constexpr unsigned kFlags = 0x3F;

inline unsigned ModeWithoutFlags() {
    return _mm_getcsr() & ~kFlags;
}

}  // namespace zul::test
