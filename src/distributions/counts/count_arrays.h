// Array calls of the families on whole numbers. Densities and tails: the numbers repeat in most data, and each is
// computed once for a block. Quantiles: a table of the distribution has nearly all of a block.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "distributions/either_tail.h"
#include "frame/calls/in_blocks.h"
#include "frame/error_state.h"
#include "frame/missing_value.h"
#include "numerics/counts/quantile_table.h"
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

// The distribution of an inverse's kernel, of no numbers where the parameters are out of the ordinary. At its quantiles
// the kernel neither throws nor traps and sets the error state wholly anew, at that of the first mass perhaps not at
// all. The numbers count from an origin.
struct TabledCounts {
    numerics::CountDistribution distribution{};
    double origin = 0;
    bool firstKeepsErrorState = false;
};

template <class Kernel>
const Kernel& InverseOf(const Kernel& kernel) {
    return kernel;
}

template <class Kernel>
const Kernel& InverseOf(const EitherTail<Kernel>& kernel) {
    return kernel.Inverse();
}

template <class Kernel>
bool IsByUpperTail(const Kernel&) {
    return false;
}

template <class Kernel>
bool IsByUpperTail(const EitherTail<Kernel>& kernel) {
    return kernel.IsUpper();
}

// Leaves the run of `first` before each element that is left, and at the end, so that the kernel finds the error state
// of the element before the run.
inline void LeaveRunsOf(double first, double* out, std::size_t n) {
    for (std::size_t i = n; i-- > 0;)
        if (out[i] == first && (i + 1 == n || frame::IsNA(out[i + 1]))) out[i] = frame::kNA;
}

template <class Kernel>
bool FillQuantiles(Kernel& kernel, double* out, const double* in, std::size_t n) {
    constexpr std::size_t kMassesOfAnElement = 16;  // they take less time than a search
    const bool isUpper = IsByUpperTail(kernel);
    const TabledCounts counts = InverseOf(kernel).Counts();
    const numerics::QuantileTable table(counts.distribution, n * kMassesOfAnElement);
    std::fill_n(out, n, frame::kNA);
    if (table.IsEmpty()) return false;
    bool all = true;
    for (std::size_t i = 0; i < n; ++i) {
        const double k = table.At(isUpper ? 1 - in[i] : in[i]);
        if (frame::IsNA(k))
            all = false;
        else
            out[i] = counts.origin + k;
    }
    if (!counts.firstKeepsErrorState) return all;
    LeaveRunsOf(counts.origin + counts.distribution.first, out, n);
    return false;
}

struct TabledQuantiles {
    template <class Kernel>
    static frame::FillInLanes<Kernel> FillOf() {
        return processor::CurrentLevel() == processor::Level::One ? nullptr : &FillQuantiles<Kernel>;
    }
};

}  // namespace zul::kernels
