// The exceptions of the library. Each is thrown by a function of its own, out of line: an inlined throw
// would give the arithmetic around it an exception table, and a trap at an instruction that is missing
// from such a table ends the process.
#pragma once

namespace zul::frame {

enum class Trap : int { Invalid, DivideByZero, Overflow, IntegerDivideByZero, Multiple };

// std::invalid_argument for Invalid, std::overflow_error for Overflow, std::runtime_error for the others.
[[noreturn]] void RaiseTrap(Trap trap);

// std::runtime_error "float overflow".
[[noreturn]] void ThrowFloatOverflow();

// std::invalid_argument, each with the message of its function.
[[noreturn]] void ThrowSqrtOfNegative();
[[noreturn]] void ThrowLogOfNegative();
[[noreturn]] void ThrowNonintegerPowerOfNegative();
[[noreturn]] void ThrowNegativePowerOfZero();
[[noreturn]] void ThrowTrigonometricRange();
[[noreturn]] void ThrowGammaOfNonpositive();
[[noreturn]] void ThrowGammaTooCloseToZero();

// std::length_error "vector<T> too long".
[[noreturn]] void ThrowVectorTooLong();

}  // namespace zul::frame
