#include "frame/platform.h"

#include <signal.h>
#include <ucontext.h>

#include <ctime>
#include <mutex>

#include "frame/errors.h"
#include "frame/trap_choice.h"

namespace zul::frame {
namespace {

// Initial-exec storage is laid out when the library is loaded, so that the signal handler can read it
// without allocating.
__attribute__((tls_model("initial-exec"))) thread_local bool translating = false;

struct sigaction previousAction;

[[noreturn]] __attribute__((noinline, used, force_align_arg_pointer)) void ThrowForTrap(Trap trap) {
    RaiseTrap(trap);
}

bool IdentifyTrap(const siginfo_t& info, unsigned control, Trap* trap) {
    switch (info.si_code) {
        case FPE_FLTINV:
            *trap = ReportedOrMultiple(Trap::Invalid, control);
            return true;
        case FPE_FLTDIV:
            *trap = ReportedOrMultiple(Trap::DivideByZero, control);
            return true;
        case FPE_FLTOVF:
            *trap = ReportedOrMultiple(Trap::Overflow, control);
            return true;
        case FPE_INTDIV:
            *trap = Trap::IntegerDivideByZero;
            return true;
        default:
            return false;
    }
}

// Makes the interrupted thread go on in ThrowForTrap as if the faulting instruction had been a call to
// it. The throw then happens in ordinary code, after the handler has returned: throwing inside the
// handler would start from the wrong control register and confuses ThreadSanitizer.
void ResumeInThrow(ucontext_t* context, Trap trap) {
    greg_t* registers = context->uc_mcontext.gregs;
    if (trap != Trap::IntegerDivideByZero) context->uc_mcontext.fpregs->mxcsr = kTrappingControl;
    // The unwinder looks up the return address minus one, which has to fall on the faulting instruction.
    registers[REG_RSP] -= 8;
    *reinterpret_cast<greg_t*>(registers[REG_RSP]) = registers[REG_RIP] + 1;  // NOLINT: an address it is
    registers[REG_RDI] = static_cast<greg_t>(trap);
    registers[REG_RIP] = reinterpret_cast<greg_t>(&ThrowForTrap);
    constexpr greg_t kDirectionFlag = 0x400;
    registers[REG_EFL] &= ~kDirectionFlag;
}

void PassToPreviousHandler(int signal, siginfo_t* info, void* context) {
    const bool isSent = info->si_code <= 0;  // by raise or kill, not by an instruction
    if (previousAction.sa_handler == SIG_IGN && isSent) return;
    if (previousAction.sa_handler == SIG_DFL || previousAction.sa_handler == SIG_IGN) {
        // An instruction runs again and the process dies where the fault is; a sent signal does not come again.
        ::signal(SIGFPE, SIG_DFL);
        if (isSent) ::raise(SIGFPE);
    } else if ((previousAction.sa_flags & SA_SIGINFO) != 0) {
        previousAction.sa_sigaction(signal, info, context);
    } else {
        previousAction.sa_handler(signal);
    }
}

void OnFloatingPointSignal(int signal, siginfo_t* info, void* rawContext) {
    auto* context = static_cast<ucontext_t*>(rawContext);
    Trap trap{};
    if (translating && IdentifyTrap(*info, context->uc_mcontext.fpregs->mxcsr, &trap)) {
        ResumeInThrow(context, trap);
    } else {
        PassToPreviousHandler(signal, info, rawContext);
    }
}

void InstallHandler() {
    struct sigaction action = {};
    action.sa_sigaction = OnFloatingPointSignal;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    sigaction(SIGFPE, &action, &previousAction);
}

}  // namespace

TimeOfDay LocalTimeOfDay() {
    constexpr long kNanosecondsPerMillisecond = 1'000'000;
    timespec now{};
    std::tm local{};
    if (std::timespec_get(&now, TIME_UTC) == 0 || localtime_r(&now.tv_sec, &local) == nullptr) return {};
    return {local.tm_hour, local.tm_min, local.tm_sec,
            static_cast<int>(now.tv_nsec / kNanosecondsPerMillisecond)};
}

void TranslateTrapsOfThisThread() {
    // Once only: two handlers that chain to each other would loop for ever.
    static std::once_flag installed;
    std::call_once(installed, InstallHandler);
    translating = true;
}

}  // namespace zul::frame
