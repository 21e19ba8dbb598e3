// What the processor can do beyond what every one of its kind can: the one place that asks.
#pragma once

namespace zul::processor {

// Whether the processor multiplies and adds with one rounding. The marked functions are compiled for such
// processors and are to be called on them alone; what they call has to be inlined to be so compiled.
#if defined(__GNUC__)
#define ZUL_FUSED __attribute__((target("fma")))
#define ZUL_INLINE inline __attribute__((always_inline))
inline bool HasFusedMultiplyAdd() {
    return __builtin_cpu_supports("fma") != 0;
}
#else
#define ZUL_FUSED
#define ZUL_INLINE inline
inline bool HasFusedMultiplyAdd() {
    return false;
}
#endif

}  // namespace zul::processor
