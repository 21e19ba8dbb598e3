#include "frame/errors.h"

#include <stdexcept>

namespace zul::frame {
namespace {

// Made when the library is loaded, and never unmade. What is thrown is a copy, which shares the text: a trap
// needs no memory then, and a host that has run out of it still gets the exception that is documented, as do
// the functions that recover from one.
template <typename Exception>
const Exception& Kept(const char* message) {
    return *new Exception(message);
}

template <typename Exception>
Exception Copy(const Exception& kept) {
    return kept;
}

using InvalidArgument = std::invalid_argument;
using RuntimeError = std::runtime_error;

const auto& kInvalid = Kept<InvalidArgument>("Float exception: invalid_argument.");
const auto& kDivideByZero = Kept<RuntimeError>("Float exception: divide by zero.");
const auto& kOverflow = Kept<std::overflow_error>("Float exception: overflow.");
const auto& kIntegerDivideByZero = Kept<RuntimeError>("Runtime exception: integer division by zero.");
const auto& kMultiple = Kept<RuntimeError>("Runtime exception: multiple floating point faults/traps.");
const auto& kFloatOverflow = Kept<RuntimeError>("float overflow");
const auto& kSqrtOfNegative = Kept<InvalidArgument>("sqrt of a negative argument");
const auto& kLogOfNegative = Kept<InvalidArgument>("log of a negative argument");
const auto& kNonintegerPowerOfNegative =
    Kept<InvalidArgument>("negative number raised to a noninteger power");
const auto& kNegativePowerOfZero = Kept<InvalidArgument>("zero raised to a negative power");
const auto& kTrigonometricRange = Kept<InvalidArgument>("argument out of range for trig functions");
const auto& kGammaOfNonpositive = Kept<InvalidArgument>("gamma of a nonpositive argument");
const auto& kGammaTooCloseToZero = Kept<InvalidArgument>("gamma of a value too close to 0");
const auto& kVectorTooLong = Kept<std::length_error>("vector<T> too long");

}  // namespace

void RaiseTrap(Trap trap) {
    switch (trap) {
        case Trap::Invalid:
            throw Copy(kInvalid);
        case Trap::DivideByZero:
            throw Copy(kDivideByZero);
        case Trap::Overflow:
            throw Copy(kOverflow);
        case Trap::IntegerDivideByZero:
            throw Copy(kIntegerDivideByZero);
        case Trap::Multiple:
            break;
    }
    throw Copy(kMultiple);
}

void ThrowFloatOverflow() {
    throw Copy(kFloatOverflow);
}

void ThrowSqrtOfNegative() {
    throw Copy(kSqrtOfNegative);
}

void ThrowLogOfNegative() {
    throw Copy(kLogOfNegative);
}

void ThrowNonintegerPowerOfNegative() {
    throw Copy(kNonintegerPowerOfNegative);
}

void ThrowNegativePowerOfZero() {
    throw Copy(kNegativePowerOfZero);
}

void ThrowTrigonometricRange() {
    throw Copy(kTrigonometricRange);
}

void ThrowGammaOfNonpositive() {
    throw Copy(kGammaOfNonpositive);
}

void ThrowGammaTooCloseToZero() {
    throw Copy(kGammaTooCloseToZero);
}

void ThrowVectorTooLong() {
    throw Copy(kVectorTooLong);
}

}  // namespace zul::frame
