#include <cstdio>

#include <zul/ticks.h>

int main() {
    //! [ticks]
    using namespace zul::deprecated;
    TickCalculationResult ticks;
    const int status = ComputeTicks(&ticks, /*low=*/0.317, /*high=*/1.094, /*wanted=*/5);
    if (status != 0) return status;
    for (unsigned i = 0; i < ticks.count; ++i)
        std::printf("%.*f ", static_cast<int>(ticks.decimals), TickValue(&ticks, i));
    std::printf("\n%u of %u within the range, from %g to %g\n", ticks.countInside, ticks.count,
                ticks.firstInside, ticks.lastInside);
    //! [ticks]
    return 0;
}
