#include "processor/level.h"

#include <atomic>

namespace zul::processor {
namespace {

std::atomic<Level> limit{Level::Eight};

}  // namespace

Level HighestLevel() {
#if defined(__GNUC__)
    if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma")) return Level::Two;
    const bool eight = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
                       __builtin_cpu_supports("avx512vl");
    return eight ? Level::Eight : Level::Four;
#else
    return Level::One;
#endif
}

Level CurrentLevel() {
    static const Level highest = HighestLevel();
    const Level limited = limit.load(std::memory_order_relaxed);
    return limited < highest ? limited : highest;
}

void LimitLevel(Level highest) {
    limit.store(highest, std::memory_order_relaxed);
}

}  // namespace zul::processor
