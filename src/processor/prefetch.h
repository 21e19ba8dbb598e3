#pragma once

#include <xmmintrin.h>

namespace zul::processor {

// The memory at an address, which need not be accessible, will be needed soon.
inline void Prefetch(const void* address) {
    _mm_prefetch(static_cast<const char*>(address), _MM_HINT_T0);
}

}  // namespace zul::processor
