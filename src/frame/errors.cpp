#include "frame/errors.h"

#include <stdexcept>

namespace zul::frame {

void RaiseTrap(Trap trap) {
    switch (trap) {
        case Trap::Invalid:
            throw std::invalid_argument("Float exception: invalid_argument.");
        case Trap::DivideByZero:
            throw std::runtime_error("Float exception: divide by zero.");
        case Trap::Overflow:
            throw std::overflow_error("Float exception: overflow.");
        case Trap::IntegerDivideByZero:
            throw std::runtime_error("Runtime exception: integer division by zero.");
        case Trap::Multiple:
            break;
    }
    throw std::runtime_error("Runtime exception: multiple floating point faults/traps.");
}

void ThrowFloatOverflow() {
    throw std::runtime_error("float overflow");
}

void ThrowSqrtOfNegative() {
    throw std::invalid_argument("sqrt of a negative argument");
}

void ThrowLogOfNegative() {
    throw std::invalid_argument("log of a negative argument");
}

void ThrowNonintegerPowerOfNegative() {
    throw std::invalid_argument("negative number raised to a noninteger power");
}

void ThrowNegativePowerOfZero() {
    throw std::invalid_argument("zero raised to a negative power");
}

void ThrowTrigonometricRange() {
    throw std::invalid_argument("argument out of range for trig functions");
}

void ThrowGammaOfNonpositive() {
    throw std::invalid_argument("gamma of a nonpositive argument");
}

void ThrowGammaTooCloseToZero() {
    throw std::invalid_argument("gamma of a value too close to 0");
}

void ThrowVectorTooLong() {
    throw std::length_error("vector<T> too long");
}

}  // namespace zul::frame
