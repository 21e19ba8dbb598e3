#pragma once

#include <new>
#include <stdexcept>

namespace zul::frame {

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

// The same for a failure of any kind: also for work that calls operations of the host's objects.
template <typename Value, typename Work>
Value OnAnyException(Value fallback, Work work) {
    try {
        return work();
    } catch (...) {
        return fallback;
    }
}

}  // namespace zul::frame
