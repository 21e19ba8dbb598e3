#pragma once

#include <xmmintrin.h>

#include "processor/processor.h"

namespace zul::dax::clustering {

// The memory at an address, which need not be accessible, will be read soon.
ZUL_INLINE void Prefetch(const void* address) {
    _mm_prefetch(static_cast<const char*>(address), _MM_HINT_T0);
}

}  // namespace zul::dax::clustering
