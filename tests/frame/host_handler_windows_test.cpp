// Handlers that the host has beside the library's, on Windows: they get what the library does not translate. The
// library is loaded by name, as hosts do that unload it again.
#include <gtest/gtest.h>
#include <windows.h>

#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <thread>

#include "frame/traps.h"
#include "support/float_mode.h"

namespace zul {
namespace {

class Library {
public:
    Library() : module_(LoadLibraryA("zul.dll")) {}
    ~Library() { FreeLibrary(module_); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    void Call(const char* name) const {
        reinterpret_cast<void (*)()>(reinterpret_cast<void*>(GetProcAddress(module_, name)))();
    }
    // A call that writes the numeric error state.
    void Fail() const {
        const auto quantile = reinterpret_cast<double (*)(double, double, double)>(
            reinterpret_cast<void*>(GetProcAddress(module_, "_ZN3zul12NormalInvCdfEddd")));
        EXPECT_TRUE(std::isnan(quantile(2, 0, 1)));
    }
    void Register() const { Call("_ZN3zul24RegisterKelSigfpeHandlerEv"); }
    void Trap() const { Call("_ZN3zul15SetKelFpuStatesEv"); }
    void Reset() const { Call("_ZN3zul14ResetFpuStatesEv"); }

private:
    HMODULE module_;
};

DWORD codeOfHost = 0;

// Lets the instruction run again, with all exceptions masked.
LONG CALLBACK OnException(EXCEPTION_POINTERS* pointers) {
    codeOfHost = pointers->ExceptionRecord->ExceptionCode;
    pointers->ContextRecord->MxCsr = pointers->ContextRecord->FltSave.MxCsr = test::kDefaultMode;
    return EXCEPTION_CONTINUE_EXECUTION;
}

TEST(HostHandler, GetsForeignTrapsAndOtherExceptions) {
    const Library library;
    void* const handler = AddVectoredExceptionHandler(0, &OnException);
    library.Register();
    std::thread([&library] {  // which does not register
        library.Trap();
        volatile double result = test::Divide(1, 0);
        (void)result;
    })
        .join();
    EXPECT_EQ(codeOfHost, EXCEPTION_FLT_DIVIDE_BY_ZERO);
    RaiseException(0xE0000001, 0, 0, nullptr);
    EXPECT_EQ(codeOfHost, 0xE0000001);
    RemoveVectoredExceptionHandler(handler);
}

std::string MessageOf(DWORD code, unsigned control) {
    void (*volatile raise)(DWORD, unsigned) = [](DWORD raised, unsigned mode) {
        _mm_setcsr(mode);
        RaiseException(raised, 0, 0, nullptr);
    };
    try {
        raise(code, control);
    } catch (const std::exception& error) {
        _mm_setcsr(test::kDefaultMode);
        return error.what();
    }
    return "";
}

// The codes that some systems report for any trap of the SSE unit: its flags tell which.
TEST(Traps, ReportedAsSeveralAreToldByTheFlags) {
    const Library library;
    library.Register();
    const std::string several = "Runtime exception: multiple floating point faults/traps.";
    for (const DWORD code : {0xC00002B4, 0xC00002B5}) {
        EXPECT_EQ(MessageOf(code, test::kTrappingMode | 0x31), "Float exception: invalid_argument.");
        EXPECT_EQ(MessageOf(code, test::kTrappingMode | 0x34), "Float exception: divide by zero.");
        EXPECT_EQ(MessageOf(code, test::kTrappingMode | 0x38), "Float exception: overflow.");
        EXPECT_EQ(MessageOf(code, test::kTrappingMode | 0x05), several);
        EXPECT_EQ(MessageOf(code, test::kTrappingMode), several);
    }
    library.Reset();
}

TEST(HostHandler, MayUnloadTheLibrary) {
    {
        const Library library;
        library.Register();
    }
    EXPECT_EQ(GetModuleHandleA("zul.dll"), nullptr);
    EXPECT_THROW(throw std::runtime_error(""), std::runtime_error);  // the system asks every handler about it
}

std::size_t BusyBlocksOfTheHeap() {
    std::size_t count = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(GetProcessHeap());
    while (HeapWalk(GetProcessHeap(), &entry) != 0)
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) ++count;
    HeapUnlock(GetProcessHeap());
    return count;
}

// Calls the library when its thread ends, after the library has been told of that.
struct LateCaller {
    const Library* library = nullptr;
    ~LateCaller() {
        if (library != nullptr) library->Fail();
    }
};
thread_local LateCaller lateCaller;

TEST(ThreadRecords, AreThoseOfLaterThreadsAgain) {
    const Library library;
    const auto run = [&library](int threads) {
        for (int i = 0; i < threads; ++i) {
            std::thread([&library, i] {
                if (i % 2 == 0) lateCaller.library = &library;
                library.Fail();
            }).join();
        }
    };
    run(20);
    const std::size_t before = BusyBlocksOfTheHeap();
    run(400);
    EXPECT_LT(BusyBlocksOfTheHeap(), before + 100);
}

TEST(Resource, TellsTheVersion) {
    char resource[4096];
    ASSERT_TRUE(GetFileVersionInfoA("zul.dll", 0, sizeof resource, resource));
    VS_FIXEDFILEINFO* info = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueA(resource, "\\", reinterpret_cast<void**>(&info), &size));
    EXPECT_EQ(std::to_string(HIWORD(info->dwFileVersionMS)) + "." +
                  std::to_string(LOWORD(info->dwFileVersionMS)) + "." +
                  std::to_string(HIWORD(info->dwFileVersionLS)),
              ZUL_TEST_VERSION);
}

}  // namespace
}  // namespace zul
