// Everything in the library that depends on the platform: the control register of the SSE unit, the
// translation of hardware traps into C++ exceptions, and the local time. The functions that are not inline here
// live in one source per platform (platform_posix.cpp, platform_windows.cpp).
#pragma once

#if !defined(__x86_64__) && !defined(_M_X64)
#error "zul computes with the SSE unit of x86-64 processors"
#endif

#include <xmmintrin.h>

namespace zul::frame {

// All exceptions masked, round to nearest, denormals kept, flags clear.
inline constexpr unsigned kDefaultControl = 0x1F80;
// As the default, with invalid operation, division by zero and overflow unmasked.
inline constexpr unsigned kTrappingControl = 0x1900;

inline unsigned GetControl() {
    return _mm_getcsr();
}

inline void SetControl(unsigned control) {
    _mm_setcsr(control);
}

inline bool RoundsToNearest() {
    constexpr unsigned kDirection = 0x6000;
    return (GetControl() & kDirection) == 0;
}

// The status word of the x87 unit without its exceptions and their summary. One that a host has unmasked stays
// pending and comes again at each later instruction of that unit that looks for it.
inline constexpr unsigned short kX87StatusWithoutExceptions = 0x7F00;

// The control word of the x87 unit, which computes nothing here, as the C library sets it. Loading it looks for
// pending exceptions, so these are cleared first.
inline void ResetX87Control() {
#if defined(__GNUC__)
    constexpr unsigned short kDefaultX87Control = 0x037F;
    unsigned short control = 0;
    __asm__ volatile("fnstcw %0" : "=m"(control));
    if (control != kDefaultX87Control) {
        control = kDefaultX87Control;
        __asm__ volatile("fnclex\n\tfldcw %0" : : "m"(control));
    }
#endif
}

// One write of the whole register clears the flags and sets masks and rounding together; a
// read-modify-write costs two thirds more and the functions of <fenv.h> ten times as much.
inline void EnterTrappingMode() {
    SetControl(kTrappingControl);
#if defined(__MINGW32__)
    // exp, log and pow of this C library use the x87 unit, which Windows starts threads with rounding to 53 bits:
    // they would lose digits on all but the first thread of a program.
    ResetX87Control();
#endif
}

inline void EnterDefaultMode() {
    SetControl(kDefaultControl);
    ResetX87Control();  // fegetround and fegetexcept read it
}

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

// The local time of day.
struct TimeOfDay {
    int hour;
    int minute;
    int second;
    int millisecond;
};
TimeOfDay LocalTimeOfDay();

// Whether the processor has vectors of four doubles. Functions marked ZUL_WIDE are compiled for them and are to
// be called on such processors alone; what they call has to be inlined to be so compiled. Their results are
// those of the same code without the mark.
#if defined(__GNUC__)
#define ZUL_WIDE __attribute__((target("avx2")))
inline bool HasWideVectors() {
    return __builtin_cpu_supports("avx2") != 0;
}
#else
#define ZUL_WIDE
inline bool HasWideVectors() {
    return false;
}
#endif

// The memory at an address, which need not be accessible, will be read soon.
inline void Prefetch(const void* address) {
    _mm_prefetch(static_cast<const char*>(address), _MM_HINT_T0);
}

// From now on a trap on the calling thread becomes an exception (RaiseTrap in errors.h). The process-wide handler is
// installed on the first call, and on POSIX systems again where the host has removed it; traps that are not ours go
// to the handler that was there before.
void TranslateTrapsOfThisThread();

}  // namespace zul::frame
