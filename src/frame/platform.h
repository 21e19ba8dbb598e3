// The control register of the SSE unit, and the translation of hardware traps into C++ exceptions. What is not inline
// here lives in one source per platform (platform_posix.cpp, platform_windows.cpp), like what a thread keeps
// (platform_thread.h) and the local time (clock.h).
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

// Of a constant, which the processor has at hand: the intrinsic would store it first and wait for the store.
template <unsigned kControl>
inline void LoadControl() {
#if defined(__GNUC__)
    static constexpr unsigned kInMemory = kControl;
    __asm__ volatile("ldmxcsr %0" : : "m"(kInMemory) : "memory");
#else
    SetControl(kControl);
#endif
}

// The function by a pointer of which the compiler knows nothing: it must not move the call across the ends of a frame.
template <typename Function>
inline Function* Unknown(Function* function) {
#if defined(__GNUC__)
    __asm__ volatile("" : "+r"(function));
    return function;
#else
    Function* volatile unknown = function;
    return unknown;
#endif
}

inline bool RoundsToNearest() {
    constexpr unsigned kDirection = 0x6000;
    return (GetControl() & kDirection) == 0;
}

// The state of the x87 unit after a trap, as functions expect it: of the status word the condition codes alone, since
// a pending exception comes again at each later instruction that looks for it, and no register in use, since what the
// interrupted function had there is nobody's.
inline constexpr unsigned short kX87ConditionCodes = 0x4700;
inline constexpr unsigned char kX87NoRegisters = 0;

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
    LoadControl<kTrappingControl>();
}

inline void EnterDefaultMode() {
    ResetX87Control();  // fegetround and fegetexcept read it
    LoadControl<kDefaultControl>();
}

// From now on a trap on the calling thread becomes an exception (RaiseTrap in errors.h). The process-wide handler is
// installed on the first call, and on POSIX systems again where the host has removed it; traps that are not ours go
// to the handler that was there before.
void TranslateTrapsOfThisThread();

}  // namespace zul::frame
