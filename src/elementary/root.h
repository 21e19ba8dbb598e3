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

// The instruction of IEEE, where it is written: for x < 0 it raises invalid.
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
