#include "fuzz/support/check.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string_view>

#include "fuzz/support/target.h"
#include "support/float_mode.h"
#include "support/sanitized.h"
#include "zul/frame.h"

namespace zul::fuzz {
namespace {

// Of one call, in seconds of processor time. The sanitizers and the fuzzer's counters together cost a factor of
// ten to twenty; on Windows the clock is that on the wall, and the programs may run in an emulation.
#if defined(ZUL_TEST_SANITIZED) || defined(_WIN32)
constexpr double kLimit = 2;
#else
constexpr double kLimit = 0.1;
#endif

// The traps of frame.h and the guarded elementary functions.
bool IsDocumented(std::string_view text) {
    constexpr std::string_view kTexts[] = {
        "Float exception: ",     "Runtime exception: ", "float overflow", " argument", " power",
        "out of range for trig", "too close to 0"};
    return std::ranges::any_of(kTexts, [=](std::string_view part) { return text.find(part) != text.npos; });
}

}  // namespace

void Fail(const std::string& complaint) {
    std::fprintf(stderr, "%s\n", complaint.c_str());
    std::abort();
}

bool Checked(Mode mode, const std::function<std::string()>& describe, const std::function<void()>& evaluate,
             int calls) {
    const unsigned before = test::ModeWithoutFlags();
    const std::clock_t start = std::clock();
    const char* complaint = nullptr;
    std::string exception;
    if (mode == Mode::Foreign) _mm_setcsr(test::kForeignMode);
    try {
        evaluate();
        if (test::ModeWithoutFlags() != (mode == Mode::Bare ? before : test::kDefaultMode))
            complaint = "returned in another floating-point mode";
    } catch (const std::exception& error) {
        if (test::ModeWithoutFlags() != test::kTrappingMode)
            complaint = "threw in another floating-point mode";
        ResetFpuStates();
        exception = error.what();
        if (mode == Mode::Bare || !IsDocumented(exception)) complaint = "threw what is not documented";
    }
    const auto ticks = static_cast<double>(std::clock() - start);
    if (ticks > kLimit * CLOCKS_PER_SEC * calls) complaint = "took too long";
    if (complaint == nullptr) return exception.empty();
    ResetFpuStates();  // formatting numbers may trap
    Fail(describe() + ": " + complaint + " " + exception);
}

}  // namespace zul::fuzz

// Both the fuzzer and the replay call it first.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    return zul::RegisterKelSigfpeHandler();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zul::fuzz::Input input(data, size);
    zul::fuzz::RunInput(input);
    return 0;
}
