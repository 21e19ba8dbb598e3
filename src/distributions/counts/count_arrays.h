// Array calls of kernels on whole numbers, which repeat in most data: each number is computed once for a block.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "frame/calls/in_blocks.h"
#include "frame/error_state.h"
#include "frame/missing_value.h"
#include "processor/level.h"

namespace zul::kernels {

// The whole numbers, in [0, 2^31), at which a kernel neither throws nor traps and sets the error state wholly anew for
// each, or for none; empty where the parameters are out of the ordinary.
struct CountRange {
    double first = 1;
    double last = 0;
};

template <class Kernel>
bool FillRepeated(Kernel& kernel, double* out, const double* in, std::size_t n) {
    constexpr std::size_t kPlaces = 256;
    constexpr std::int64_t kNone = -1;
    std::int64_t known[kPlaces];
    double results[kPlaces];
    for (std::int64_t& count : known)
        count = kNone;
    const CountRange range = kernel.Counts();
    const frame::NumericErrorState state = frame::ErrorState();
    bool all = true;
    for (std::size_t i = 0; i < n; ++i) {
        const double x = in[i];
        const bool inRange = std::isgreaterequal(x, range.first) && std::islessequal(x, range.last);
        const std::int64_t count = inRange ? static_cast<std::int64_t>(x) : kNone;
        if (!inRange || static_cast<double>(count) != x) {
            out[i] = frame::kNA;
            all = false;
            continue;
        }
        const std::size_t place = static_cast<std::size_t>(count) % kPlaces;
        if (known[place] != count) {
            known[place] = count;
            results[place] = kernel(x);
        }
        out[i] = results[place];
        all = all && !frame::IsNA(out[i]);
    }
    frame::ErrorState() = state;
    return all;
}

// A table as lanes have it, for kernels with a CountRange Counts() const.
struct RepeatedCounts {
    template <class Kernel>
    static frame::FillInLanes<Kernel> FillOf() {
        return processor::CurrentLevel() == processor::Level::One ? nullptr : &FillRepeated<Kernel>;
    }
};

}  // namespace zul::kernels
