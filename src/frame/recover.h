#pragma once

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

}  // namespace zul::frame
