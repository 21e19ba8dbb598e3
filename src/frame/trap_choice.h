// Which row of RaiseTrap a hardware trap is: the part of the translation that platforms share.
#pragma once

#include <bit>

#include "frame/errors.h"

namespace zul::frame {

// The flags of the control register: invalid operation, division by zero, overflow.
inline constexpr unsigned kInvalidFlag = 0x01;
inline constexpr unsigned kDivideByZeroFlag = 0x04;
inline constexpr unsigned kOverflowFlag = 0x08;

// The unmasked exceptions whose flags are up.
inline unsigned LiveExceptions(unsigned control) {
    constexpr unsigned kFlags = kInvalidFlag | kDivideByZeroFlag | kOverflowFlag;
    constexpr unsigned kMaskShift = 7;
    return control & ~(control >> kMaskShift) & kFlags;
}

// A packed instruction may raise several at once, of which the system reports the first alone.
inline Trap ReportedOrMultiple(Trap reported, unsigned control) {
    return std::popcount(LiveExceptions(control)) > 1 ? Trap::Multiple : reported;
}

// The trap by its flags, when the system reports several.
inline Trap TrapOfFlags(unsigned control) {
    switch (LiveExceptions(control)) {
        case kInvalidFlag:
            return Trap::Invalid;
        case kDivideByZeroFlag:
            return Trap::DivideByZero;
        case kOverflowFlag:
            return Trap::Overflow;
        default:
            return Trap::Multiple;
    }
}

}  // namespace zul::frame
