// What the library keeps for each thread, and how a thread finds it.
#pragma once

#if defined(_WIN32)
#include <atomic>
#endif
#if defined(_MSC_VER)
#include <intrin.h>
#endif

#include <cstddef>

#include "frame/error_record.h"

namespace zul::frame {

// Memory for what is too large for the storage below, from malloc: see calls/kept_kernel.h.
struct KeptBlocks {
    static constexpr std::size_t kCount = 64;
    void* memory[kCount];
};

struct ThreadRecord {
    NumericErrorState errorState;
    bool translatesTraps = false;  // see TranslateTrapsOfThisThread in platform.h
    KeptBlocks* blocks = nullptr;
};

// Obtains the table of the calling thread's blocks, all null, where the thread has none yet. Null where that fails.
KeptBlocks* BlocksOfThisThread();

// Once a thread has ended, or the library is unloaded.
void Free(KeptBlocks* blocks);

#if defined(_WIN32)

// A slot of the system holds the address of the record. Emulated thread_local storage would cost 13 ns an access,
// this 2, and may allocate, which a handler of traps must not.
extern constinit std::atomic<unsigned long> recordSlot;

// Obtains slot and record where the thread has none yet.
ThreadRecord& RecordOfThisThread();

// The slot's value, null where the system keeps it elsewhere than in the thread's block.
inline ThreadRecord* RecordInThreadBlock() {
    constexpr unsigned long kSlots = 64;
    constexpr std::size_t kFirstSlot = 0x1480;
    const unsigned long slot = recordSlot.load(std::memory_order_relaxed);
    if (slot >= kSlots) return nullptr;
    const std::size_t offset = kFirstSlot + slot * sizeof(void*);
#if defined(_MSC_VER)
    return reinterpret_cast<ThreadRecord*>(__readgsqword(offset));
#else
    ThreadRecord* record;
    __asm__("movq %%gs:(%1), %0" : "=r"(record) : "r"(offset));
    return record;
#endif
}

inline ThreadRecord& ThisThread() {
    ThreadRecord* const record = RecordInThreadBlock();
    return record != nullptr ? *record : RecordOfThisThread();
}

#else

// Initial-exec storage is laid out when the library is loaded: an access costs nothing that can be measured, and
// the signal handler reads it without allocating.
extern constinit thread_local ThreadRecord threadRecord __attribute__((tls_model("initial-exec")));

inline ThreadRecord& ThisThread() {
    return threadRecord;
}

#endif

}  // namespace zul::frame
