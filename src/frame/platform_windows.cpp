#include "frame/platform.h"

#include <atomic>
#include <cstdlib>
#include <new>

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

#include "frame/clock.h"
#include "frame/errors.h"
#include "frame/large_pages.h"
#include "frame/platform_thread.h"
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

constinit std::atomic<unsigned long> recordSlot = TLS_OUT_OF_INDEXES;

namespace {

// A thread's record, kept for another thread when that one has ended.
struct KeptRecord {
    ThreadRecord record;
    std::atomic<bool> isUsed = true;
    std::atomic<DWORD> thread = GetCurrentThreadId();
    KeptRecord* next = nullptr;
};

// All records, until the library is unloaded. They come from the system's heap: taking one in the middle of a
// computation calls no operator new, which a host may replace and which may throw.
class ThreadRecords {
public:
    ThreadRecords() { recordSlot = TlsAlloc(); }
    ~ThreadRecords() {
        TlsFree(recordSlot);
        recordSlot = TLS_OUT_OF_INDEXES;
        for (KeptRecord* kept = first_.exchange(nullptr); kept != nullptr;) {
            KeptRecord* const next = kept->next;
            Free(kept->record.blocks);
            HeapFree(GetProcessHeap(), 0, kept);
            kept = next;
        }
    }
    ThreadRecords(const ThreadRecords&) = delete;
    ThreadRecords& operator=(const ThreadRecords&) = delete;

    // Null where the thread has none. The system sets its last error in the call.
    static ThreadRecord* InSlot() {
        const DWORD lastError = GetLastError();
        auto* const record = static_cast<ThreadRecord*>(TlsGetValue(recordSlot));
        SetLastError(lastError);
        return record;
    }

    ThreadRecord& OfThisThread() {
        if (ThreadRecord* const own = InSlot()) return *own;
        ThreadRecord* const record = Obtain();
        TlsSetValue(recordSlot, record);
        return *record;
    }
    // Where the record is shared there are none: they serve one thread at a time.
    KeptBlocks* BlocksOfThisThread() {
        ThreadRecord& own = OfThisThread();
        if (own.blocks == nullptr && &own != &spare_)
            own.blocks = static_cast<KeptBlocks*>(std::calloc(1, sizeof(KeptBlocks)));
        return own.blocks;
    }
    // When the thread ends. The blocks stay with the record.
    void GiveBack() {
        ThreadRecord* const own = InSlot();
        if (own == nullptr || own == &spare_) return;
        TlsSetValue(recordSlot, nullptr);
        for (KeptRecord* kept = first_; kept != nullptr; kept = kept->next)
            if (&kept->record == own) {
                kept->thread = 0;  // no thread's
                kept->isUsed = false;
            }
    }

private:
    ThreadRecord* Obtain() {
        // One that is used and has this thread's number was its own: the host's destructors may call the library
        // when the thread has given its record back already.
        const DWORD thread = GetCurrentThreadId();
        for (KeptRecord* kept = first_; kept != nullptr; kept = kept->next) {
            bool isUsed = false;
            if (kept->thread != thread && !kept->isUsed.compare_exchange_strong(isUsed, true)) continue;
            kept->isUsed = true;
            kept->thread = thread;
            kept->record = ThreadRecord{.blocks = kept->record.blocks};
            return &kept->record;
        }
        void* const memory = HeapAlloc(GetProcessHeap(), 0, sizeof(KeptRecord));
        if (memory == nullptr) return &spare_;
        auto* const made = new (memory) KeptRecord;
        made->next = first_;
        while (!first_.compare_exchange_weak(made->next, made)) {
        }
        return &made->record;
    }

    std::atomic<KeptRecord*> first_ = nullptr;
    // Shared by the threads for which the system has no memory left.
    ThreadRecord spare_;
};

ThreadRecords& Records() {
    static ThreadRecords records;
    return records;
}

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
    if (trap != Trap::IntegerDivideByZero) {
        context->MxCsr = context->FltSave.MxCsr = kTrappingControl;
        context->FltSave.StatusWord &= kX87ConditionCodes;
        context->FltSave.TagWord = kX87NoRegisters;
    }
    // The unwinder looks up the return address minus one, which has to fall on the faulting instruction.
    context->Rsp -= sizeof(DWORD64);
    *reinterpret_cast<DWORD64*>(context->Rsp) = context->Rip + 1;  // NOLINT: an address it is
    context->Rcx = static_cast<DWORD64>(trap);
    context->Rip = reinterpret_cast<DWORD64>(&zul_trap_entry);
    constexpr DWORD kDirectionFlag = 0x400;
    context->EFlags &= ~kDirectionFlag;
}

// Of the calling thread, without making a record of it.
bool TranslatesTraps() {
    const ThreadRecord* const record = ThreadRecords::InSlot();
    return record != nullptr && record->translatesTraps;
}

LONG CALLBACK OnException(EXCEPTION_POINTERS* pointers) {
    CONTEXT* const context = pointers->ContextRecord;
    Trap trap{};
    if (!IdentifyTrap(pointers->ExceptionRecord->ExceptionCode, context->MxCsr, &trap) || !TranslatesTraps())
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
        handle_ = AddVectoredExceptionHandler(kBeforeOthers, &OnException);
    }
    ~InstalledHandler() { RemoveVectoredExceptionHandler(handle_); }
    InstalledHandler(const InstalledHandler&) = delete;
    InstalledHandler& operator=(const InstalledHandler&) = delete;

private:
    void* handle_;
};

#endif

}  // namespace

ThreadRecord& RecordOfThisThread() {
    return Records().OfThisThread();
}

KeptBlocks* BlocksOfThisThread() {
    return Records().BlocksOfThisThread();
}

static void GiveBackRecordOfThisThread() {
    if (recordSlot != TLS_OUT_OF_INDEXES) Records().GiveBack();
}

TimeOfDay LocalTimeOfDay() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

// This system gives large pages to privileged programs only.
void PreferLargePages(void*, std::size_t) {}

void TranslateTrapsOfThisThread() {
#if defined(_MSC_VER)
    _set_se_translator(&TranslateStructuredException);
#else
    Records();  // made before the handler, which reads them until it is removed
    static const InstalledHandler installed;
    ThisThread().translatesTraps = true;
#endif
}

}  // namespace zul::frame

// Called by the system. Where the host has switched off the calls for threads, their records stay until it unloads
// the library.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    if (reason == DLL_THREAD_DETACH) zul::frame::GiveBackRecordOfThisThread();
    return TRUE;
}
