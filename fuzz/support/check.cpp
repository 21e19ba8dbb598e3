#include "fuzz/support/check.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <stdexcept>
#include <string_view>
#include <typeindex>
#include <typeinfo>

#include "support/float_mode.h"
#include "support/sanitized.h"

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
struct Exception {
    std::type_index type;
    std::string_view text;
};
const Exception kDocumented[] = {
    {typeid(std::invalid_argument), "Float exception: invalid_argument."},
    {typeid(std::runtime_error), "Float exception: divide by zero."},
    {typeid(std::overflow_error), "Float exception: overflow."},
    {typeid(std::runtime_error), "Runtime exception: multiple floating point faults/traps."},
    {typeid(std::runtime_error), "Runtime exception: integer division by zero."},
    {typeid(std::runtime_error), "float overflow"},
    {typeid(std::invalid_argument), "sqrt of a negative argument"},
    {typeid(std::invalid_argument), "log of a negative argument"},
    {typeid(std::invalid_argument), "negative number raised to a noninteger power"},
    {typeid(std::invalid_argument), "zero raised to a negative power"},
    {typeid(std::invalid_argument), "argument out of range for trig functions"},
    {typeid(std::invalid_argument), "gamma of a nonpositive argument"},
    {typeid(std::invalid_argument), "gamma of a value too close to 0"},
};

bool IsDocumented(const std::exception& error) {
    return std::ranges::any_of(kDocumented, [&error](const Exception& documented) {
        return documented.type == typeid(error) && documented.text == error.what();
    });
}

double Seconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

}  // namespace

void Fail(const std::string& complaint) {
    std::fprintf(stderr, "%s\n", complaint.c_str());
    std::abort();
}

Watch::Watch(Mode mode, int calls)
    : mode_(mode), calls_(calls), floatMode_(test::ModeWithoutFlags()), start_(Seconds()) {}

std::string Watch::AfterSeconds() const {
    const double seconds = Seconds() - start_;
    return seconds > kLimit * calls_ ? "took " + std::to_string(seconds) + " s" : "";
}

std::string Watch::AfterReturn() const {
    const unsigned expected = mode_ == Mode::Bare ? floatMode_ : test::kDefaultMode;
    return test::ModeWithoutFlags() != expected ? "returned in another floating-point mode" : AfterSeconds();
}

std::string Watch::AfterException(const std::exception& error) const {
    const unsigned now = test::ModeWithoutFlags();
    const bool asDocumented = mode_ != Mode::Bare && IsDocumented(error);
    if (!asDocumented) return std::string("threw ") + typeid(error).name() + " " + error.what();
    const bool right = now == test::kTrappingMode || (mode_ == Mode::PartlyFramed && now == floatMode_);
    return right ? AfterSeconds() : "threw in another floating-point mode";
}

}  // namespace zul::fuzz

// Both the fuzzer and the replay call it first.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    return zul::RegisterKelSigfpeHandler();
}
