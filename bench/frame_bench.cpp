#include <zul/frame.h>

#include "bench.h"
#include "peers.h"

namespace zul::bench {
namespace {

constexpr int kPairs = 1000;

struct Row {
    const char* library;
    void (*enterAndLeave)();
};

template <auto kEnterAndLeave>
void Repeat() {
    for (int i = 0; i < kPairs; ++i)
        kEnterAndLeave();
}

const Row kRows[] = {
    {kOurs, Repeat<[] {
         zul::SetKelFpuStates();
         zul::ResetFpuStates();
     }>},
    ZUL_BENCH_FENV(Repeat<[] {
        fesetenv(FE_DFL_ENV);
        feenableexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW);
        fesetenv(FE_DFL_ENV);
    }>),
};

}  // namespace

void AddFrameBenchmarks() {
    for (const auto& [library, enterAndLeave] : kRows)
        AddBenchmark("frame enter + leave", library, kPairs, enterAndLeave);
}

}  // namespace zul::bench
