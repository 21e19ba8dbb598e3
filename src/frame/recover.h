#pragma once

#include <new>
#include <stdexcept>
#if defined(__GLIBCXX__)
#include <cxxabi.h>
#endif

#include "frame/platform.h"

namespace zul::frame {

// What unwinds a thread that is cancelled or that leaves by pthread_exit: the process ends unless it is passed on.
#if defined(__GLIBCXX__)
using ForcedUnwind = abi::__forced_unwind;
#else
struct ForcedUnwind {};  // not seen here
#endif

// The value of arithmetic(arguments...), or the fallback when it ends in a std::runtime_error: "float
// overflow", or a translated trap for a division by zero, an overflow or several faults at once. An invalid
// operation passes. The arithmetic is called out of line: compilers drop a handler around plain arithmetic.
template <typename... Types>
double OnRuntimeError(double fallback, double (*arithmetic)(Types...), Types... arguments) {
    double (*volatile call)(Types...) = arithmetic;
    try {
        return call(arguments...);
    } catch (const std::runtime_error&) {
        return fallback;
    }
}

// The same for a failure of either class: an invalid operation and the domain errors of the guarded functions,
// std::invalid_argument, give the fallback as well.
template <typename... Types>
double OnAnyFailure(double fallback, double (*arithmetic)(Types...), Types... arguments) {
    double (*volatile call)(Types...) = arithmetic;
    try {
        return call(arguments...);
    } catch (const std::runtime_error&) {
        return fallback;
    } catch (const std::invalid_argument&) {
        return fallback;
    }
}

// The value of the work, or the fallback when memory cannot be obtained. For work that does not compute.
template <typename Value, typename Work>
Value OnBadAlloc(Value fallback, Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return fallback;
    }
}

// The same for a failure of any kind: also for work that calls operations of the host's objects. A trap in these
// leaves the thread in trapping mode: after a failure it is again in the mode of the call.
template <typename Value, typename Work>
Value OnAnyException(Value fallback, Work work) {
    const unsigned control = GetControl();
    try {
        return work();
    } catch (ForcedUnwind&) {
        throw;
    } catch (...) {
        SetControl(control);
        return fallback;
    }
}

}  // namespace zul::frame
