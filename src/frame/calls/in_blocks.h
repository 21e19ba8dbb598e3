// Array calls of kernels that also compute several elements at a time, in lanes. Results, exceptions, what is written
// before one, and the error state are those of one element after the other.
#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>

#include "frame/missing_value.h"
#include "frame/platform.h"

namespace zul::frame {

// By the bits: a signalling NaN that a kernel returns as it came would trap in a comparison.
inline bool IsNA(double result) {
    return std::bit_cast<std::uint64_t>(result) == std::bit_cast<std::uint64_t>(kNA);
}

inline double NaToNaN(double result) {
    return IsNA(result) ? kQuietNaN : result;
}

// Computes n elements, at most kBlock, with all traps masked, and says whether it has all of them. An element that
// it leaves to the kernel is NA: every one that fails, throws or traps, and what is too rare to be worth its lanes. Of
// the others the kernel sets the error state wholly anew for each, or for none.
template <typename Kernel>
using FillInLanes = bool (*)(Kernel& kernel, double* out, const double* in, std::size_t n);

inline constexpr std::size_t kBlock = 1024;

// Such a kernel names the table that has its function, null where the processor or the compiler has no lanes.
template <typename Kernel>
concept TakesLanes = requires {
    { Kernel::Table::template FillOf<Kernel>() } -> std::same_as<FillInLanes<Kernel>>;
};

template <typename Kernel>
void ApplyEach(Kernel& kernel, double* out, const double* in, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        out[i] = NaToNaN(kernel(in[i]));
}

// Whether the flags stay clear of what traps. Leaves the mode trapping and its flags clear.
template <typename Kernel>
bool FillQuietly(Kernel& kernel, FillInLanes<Kernel> fill, double* out, const double* in, std::size_t n,
                 bool* all) {
    constexpr unsigned kTrapping = 0x000D;  // invalid operation, division by zero, overflow
    LoadControl<kDefaultControl>();
    *all = fill(kernel, out, in, n);
    const bool quiet = (GetControl() & kTrapping) == 0;
    LoadControl<kTrappingControl>();
    return quiet;
}

// Each result, by the kernel where it is missing. So is the one before such, and the last, for the error state that the
// kernel leaves.
template <typename Kernel>
void Complete(Kernel& kernel, const double* results, double* out, const double* in, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        const bool again = i + 1 == n || IsNA(results[i]) || IsNA(results[i + 1]);
        out[i] = again ? NaToNaN(kernel(in[i])) : results[i];
    }
}

// in: n values, which are out, or do not overlap it.
template <typename Kernel>
void ApplyInLanes(Kernel& kernel, FillInLanes<Kernel> fill, double* out, const double* in,
                  std::size_t count) {
    double results[kBlock];
    for (std::size_t begin = 0; begin < count; begin += kBlock) {
        const std::size_t n = std::min(kBlock, count - begin);
        bool all = false;
        if (!FillQuietly(kernel, fill, results, in + begin, n, &all)) {
            ApplyEach(kernel, out + begin, in + begin, n);
        } else if (!all) {
            Complete(kernel, results, out + begin, in + begin, n);
        } else {
            const double last = in[begin + n - 1];
            std::copy(results, results + n - 1, out + begin);
            out[begin + n - 1] = NaToNaN(kernel(last));
        }
    }
}

// Below it the lanes gain nothing.
inline constexpr std::size_t kLeastInLanes = 32;

inline bool OverlapsElsewhere(const double* out, const double* in, std::size_t count) {
    const auto distance = reinterpret_cast<std::uintptr_t>(out) - reinterpret_cast<std::uintptr_t>(in);
    const std::uintptr_t bytes = count * sizeof(double);
    return distance != 0 && (distance < bytes || distance > 0 - bytes);
}

template <typename Kernel>
void ApplyToArray(Kernel& kernel, double* out, const double* in, std::size_t count) {
    if constexpr (TakesLanes<Kernel>) {
        const FillInLanes<Kernel> fill = Kernel::Table::template FillOf<Kernel>();
        if (fill != nullptr && count >= kLeastInLanes && !OverlapsElsewhere(out, in, count)) {
            ApplyInLanes(kernel, fill, out, in, count);
            return;
        }
    }
    ApplyEach(kernel, out, in, count);
}

}  // namespace zul::frame
