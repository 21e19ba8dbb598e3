#include "frame/platform.h"

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#if defined(_MSC_VER)
#include <eh.h>
#endif

#include "frame/errors.h"
#include "frame/trap_choice.h"

#if !defined(_MSC_VER)

// Where an interrupted thread goes on, with the trap as its argument: an assembly function, since the stack has
// any alignment of 8 bytes here, and what realigns it has to be told to the unwinder (GCC's attribute for that
// is without effect on this system). The stop after the call keeps the return address inside the function.
extern "C" void zul_trap_entry();

__asm__(R"(
    .text
    .p2align 4
    .globl zul_trap_entry
    .def zul_trap_entry; .scl 2; .type 32; .endef
    .seh_proc zul_trap_entry
zul_trap_entry:
    pushq %rbp
    .seh_pushreg %rbp
    movq %rsp, %rbp
    .seh_setframe %rbp, 0
    .seh_endprologue
    andq $-16, %rsp
    subq $32, %rsp
    call zul_raise_trap
    int3
    .seh_endproc
)");

extern "C" [[noreturn]] __attribute__((used)) void zul_raise_trap(zul::frame::Trap trap) {
    zul::frame::RaiseTrap(trap);
}

#endif

namespace zul::frame {
namespace {

// Processors report floating-point traps of the SSE unit as any of the first five, systems differ.
bool IdentifyTrap(DWORD code, unsigned control, Trap* trap) {
    constexpr DWORD kMultipleFaults = 0xC00002B4;
    constexpr DWORD kMultipleTraps = 0xC00002B5;
    switch (code) {
        case EXCEPTION_FLT_INVALID_OPERATION:
            *trap = ReportedOrMultiple(Trap::Invalid, control);
            return true;
        case EXCEPTION_FLT_DIVIDE_BY_ZERO:
            *trap = ReportedOrMultiple(Trap::DivideByZero, control);
            return true;
        case EXCEPTION_FLT_OVERFLOW:
            *trap = ReportedOrMultiple(Trap::Overflow, control);
            return true;
        case kMultipleFaults:
        case kMultipleTraps:
            *trap = TrapOfFlags(control);
            return true;
        case EXCEPTION_INT_DIVIDE_BY_ZERO:
            *trap = Trap::IntegerDivideByZero;
            return true;
        default:
            return false;
    }
}

#if defined(_MSC_VER)

// Not built nor tested by this project's own checks. The runtime calls this on the thread, in a state in which
// it may throw (/EHa); the control register is set outright, as it is the system's own here.
void TranslateStructuredException(unsigned code, EXCEPTION_POINTERS* pointers) {
    const unsigned control = pointers->ContextRecord->MxCsr;
    Trap trap{};
    if (!IdentifyTrap(code, control, &trap)) return;
    SetControl(trap == Trap::IntegerDivideByZero ? control : kTrappingControl);
    RaiseTrap(trap);
}

#else

// Makes the interrupted thread go on in zul_trap_entry as if the faulting instruction had been a call to it.
// The throw then happens in ordinary code, after the system has ended its dispatch of the exception.
void ResumeInThrow(CONTEXT* context, Trap trap) {
    if (trap != Trap::IntegerDivideByZero) context->MxCsr = context->FltSave.MxCsr = kTrappingControl;
    // The unwinder looks up the return address minus one, which has to fall on the faulting instruction.
    context->Rsp -= sizeof(DWORD64);
    *reinterpret_cast<DWORD64*>(context->Rsp) = context->Rip + 1;  // NOLINT: an address it is
    context->Rcx = static_cast<DWORD64>(trap);
    context->Rip = reinterpret_cast<DWORD64>(&zul_trap_entry);
    constexpr DWORD kDirectionFlag = 0x400;
    context->EFlags &= ~kDirectionFlag;
}

// The mark of the threads whose traps are ours, in a slot of the system: emulated thread_local storage may
// allocate, which a handler must not.
DWORD translatingSlot = TLS_OUT_OF_INDEXES;

LONG CALLBACK OnException(EXCEPTION_POINTERS* pointers) {
    CONTEXT* const context = pointers->ContextRecord;
    Trap trap{};
    if (!IdentifyTrap(pointers->ExceptionRecord->ExceptionCode, context->MxCsr, &trap) ||
        TlsGetValue(translatingSlot) == nullptr)
        return EXCEPTION_CONTINUE_SEARCH;
    ResumeInThrow(context, trap);
    return EXCEPTION_CONTINUE_EXECUTION;
}

// Installed from the first registration until the library is unloaded: the system calls a vectored handler for
// each exception of the process, those of C++ among them, and the code must be there then.
class InstalledHandler {
public:
    InstalledHandler() {
        constexpr ULONG kBeforeOthers = 1;
        translatingSlot = TlsAlloc();
        handle_ = AddVectoredExceptionHandler(kBeforeOthers, &OnException);
    }
    ~InstalledHandler() {
        RemoveVectoredExceptionHandler(handle_);
        TlsFree(translatingSlot);
    }
    InstalledHandler(const InstalledHandler&) = delete;
    InstalledHandler& operator=(const InstalledHandler&) = delete;

private:
    void* handle_;
};

#endif

}  // namespace

TimeOfDay LocalTimeOfDay() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

void TranslateTrapsOfThisThread() {
#if defined(_MSC_VER)
    _set_se_translator(&TranslateStructuredException);
#else
    static InstalledHandler installed;
    TlsSetValue(translatingSlot, &installed);
#endif
}

}  // namespace zul::frame
