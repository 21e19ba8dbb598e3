// The square root of a double. That of the C library for Windows rounds twice.
//
// In an unnamed namespace: see elementary/core/value.h.
#pragma once

#include "processor/processor.h"

#if !defined(__GNUC__)
#include <cmath>
#endif

namespace zul::elementary {
namespace {

// By the processor's instruction where it is written: so for x < 0 that raises invalid there.
ZUL_INLINE double Sqrt(double x) {
#if !defined(__GNUC__)
    return std::sqrt(x);
#elif defined(__AVX__)
    asm volatile("vsqrtsd %0, %0, %0" : "+x"(x));
    return x;
#else
    asm volatile("sqrtsd %0, %0" : "+x"(x));
    return x;
#endif
}

}  // namespace
}  // namespace zul::elementary
