#include "frame/platform.h"

#include <pthread.h>
#include <signal.h>
#include <sys/mman.h>
#include <ucontext.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <mutex>

#include "frame/clock.h"
#include "frame/errors.h"
#include "frame/large_pages.h"
#include "frame/platform_thread.h"
#include "frame/trap_choice.h"

// Where an interrupted thread goes on, with the trap as its argument, as if the faulting instruction had called it.
// The return address stands below the 128 bytes under the stack pointer, which belong to the interrupted function:
// a leaf keeps its variables there, and the end of any function its caller's registers, which the unwinder restores.
// So the frame of the caller begins 136 bytes above. The stop after the call keeps the return address inside.
extern "C" void zul_trap_entry();

__asm__(R"(
    .text
    .p2align 4
    .hidden zul_trap_entry
    .globl zul_trap_entry
    .type zul_trap_entry, @function
zul_trap_entry:
    .cfi_startproc
    .cfi_def_cfa %rsp, 136
    .cfi_offset %rip, -136
    pushq %rbp
    .cfi_adjust_cfa_offset 8
    .cfi_offset %rbp, -144
    movq %rsp, %rbp
    .cfi_def_cfa_register %rbp
    andq $-16, %rsp
    call zul_raise_trap
    ud2
    .cfi_endproc
    .size zul_trap_entry, .-zul_trap_entry
)");

extern "C" [[noreturn]] __attribute__((used, visibility("hidden"))) void zul_raise_trap(
    zul::frame::Trap trap) {
    zul::frame::RaiseTrap(trap);
}

namespace zul::frame {

constinit thread_local ThreadRecord threadRecord;

namespace {

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

// Makes the interrupted thread go on in zul_trap_entry. The throw then happens in ordinary code, after the handler
// has returned: throwing inside the handler would start from the wrong control register and confuses
// ThreadSanitizer.
void ResumeInThrow(ucontext_t* context, Trap trap) {
    greg_t* registers = context->uc_mcontext.gregs;
    if (trap != Trap::IntegerDivideByZero) {
        context->uc_mcontext.fpregs->mxcsr = kTrappingControl;
        context->uc_mcontext.fpregs->swd &= kX87ConditionCodes;
        context->uc_mcontext.fpregs->ftw = kX87NoRegisters;
    }
    // The unwinder looks up the return address minus one, which has to fall on the faulting instruction.
    constexpr greg_t kRedZone = 128;
    registers[REG_RSP] -= kRedZone + 8;
    *reinterpret_cast<greg_t*>(registers[REG_RSP]) = registers[REG_RIP] + 1;  // NOLINT: an address it is
    registers[REG_RDI] = static_cast<greg_t>(trap);
    registers[REG_RIP] = reinterpret_cast<greg_t>(&zul_trap_entry);
    constexpr greg_t kDirectionFlag = 0x400;
    registers[REG_EFL] &= ~kDirectionFlag;
}

// What the host had before, for what is not ours. It does not change once it is pointed to, since a signal may read
// it at any time.
std::atomic<const struct sigaction*> previousAction;

bool IsDefaultOrIgnore(const struct sigaction& action) {
    return action.sa_handler == SIG_DFL || action.sa_handler == SIG_IGN;
}

void PassToPreviousHandler(int signal, siginfo_t* info, void* context) {
    const struct sigaction& previous = *previousAction.load();
    const bool isSent = info->si_code <= 0;  // by raise or kill, not by an instruction
    if (previous.sa_handler == SIG_IGN && isSent) return;
    if (IsDefaultOrIgnore(previous)) {
        // An instruction runs again and the process dies where the fault is; a sent signal does not come again.
        ::signal(SIGFPE, SIG_DFL);
        if (isSent) ::raise(SIGFPE);
    } else if ((previous.sa_flags & SA_SIGINFO) != 0) {
        previous.sa_sigaction(signal, info, context);
    } else {
        previous.sa_handler(signal);
    }
}

void OnFloatingPointSignal(int signal, siginfo_t* info, void* rawContext) {
    auto* context = static_cast<ucontext_t*>(rawContext);
    Trap trap{};
    if (threadRecord.translatesTraps && IdentifyTrap(*info, context->uc_mcontext.fpregs->mxcsr, &trap)) {
        ResumeInThrow(context, trap);
    } else {
        PassToPreviousHandler(signal, info, rawContext);
    }
}

struct sigaction ActionWithHandler(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    return action;
}

// After the handler that the host has at the first registration; later only where the host has put back the default
// or ignores the signal: two handlers that pass signals on to each other would do so for ever.
void InstallHandler() {
    static std::mutex mutex;
    static struct sigaction hostAction;
    static const struct sigaction defaultAction = ActionWithHandler(SIG_DFL);
    static const struct sigaction ignoreAction = ActionWithHandler(SIG_IGN);
    const std::lock_guard lock(mutex);
    struct sigaction current = {};
    sigaction(SIGFPE, nullptr, &current);
    if (previousAction.load() == nullptr) {
        hostAction = current;
        previousAction = &hostAction;
    } else if (IsDefaultOrIgnore(current)) {
        previousAction = current.sa_handler == SIG_IGN ? &ignoreAction : &defaultAction;
    } else {
        return;
    }
    struct sigaction action = {};
    action.sa_sigaction = OnFloatingPointSignal;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    sigaction(SIGFPE, &action, nullptr);
}

// Tells of a thread's end. Destructors of the host's that come later may call the library again, for which the thread
// gets blocks anew.
class ThreadEnd {
public:
    ThreadEnd() : isMade_(pthread_key_create(&key_, &FreeBlocks) == 0) {}
    bool Frees(KeptBlocks* blocks) const { return isMade_ && pthread_setspecific(key_, blocks) == 0; }

private:
    static void FreeBlocks(void* blocks) {
        threadRecord.blocks = nullptr;
        Free(static_cast<KeptBlocks*>(blocks));
    }
    pthread_key_t key_{};
    bool isMade_;
};

// The library stays loaded, and the key with it.
const ThreadEnd kThreadEnd;

}  // namespace

KeptBlocks* BlocksOfThisThread() {
    if (threadRecord.blocks != nullptr) return threadRecord.blocks;
    auto* const blocks = static_cast<KeptBlocks*>(std::calloc(1, sizeof(KeptBlocks)));
    if (blocks == nullptr || !kThreadEnd.Frees(blocks)) {
        std::free(blocks);
        return nullptr;
    }
    return threadRecord.blocks = blocks;
}

TimeOfDay LocalTimeOfDay() {
    constexpr long kNanosecondsPerMillisecond = 1'000'000;
    timespec now{};
    std::tm local{};
    if (std::timespec_get(&now, TIME_UTC) == 0 || localtime_r(&now.tv_sec, &local) == nullptr) return {};
    return {local.tm_hour, local.tm_min, local.tm_sec,
            static_cast<int>(now.tv_nsec / kNanosecondsPerMillisecond)};
}

// Linux alone has the hint. It is for whole large pages, and fails without harm where the kernel has none.
void PreferLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) {
#if defined(MADV_HUGEPAGE)
    constexpr std::uintptr_t kLargePage = std::uintptr_t{1} << 21;
    const auto start = reinterpret_cast<std::uintptr_t>(memory);  // NOLINT: pages are told by their addresses
    const std::uintptr_t first = (start + kLargePage - 1) & ~(kLargePage - 1);
    const std::uintptr_t end = (start + bytes) & ~(kLargePage - 1);
    if (first >= end) return;
    auto* const pages = static_cast<char*>(memory) + (first - start);
    static_cast<void>(madvise(pages, end - first, MADV_HUGEPAGE));
#endif
}

void TranslateTrapsOfThisThread() {
    InstallHandler();
    // A trap of a thread that blocks the signal would end the process.
    sigset_t trapSignal;
    sigemptyset(&trapSignal);
    sigaddset(&trapSignal, SIGFPE);
    pthread_sigmask(SIG_UNBLOCK, &trapSignal, nullptr);
    threadRecord.translatesTraps = true;
}

}  // namespace zul::frame
