// Kernels that a thread keeps from one call to the next. A scalar call with the parameters of the last one then finds
// all that depends on them computed, as an element of an array call does, and costs what that costs.
//
// The frame does it for a kernel with a constant kKeptBetweenCalls = true: where the work on the parameters is much of
// the work of a call. What such a kernel computes on first need must touch nothing but the kernel, the numeric error
// state included, since a later call does without.
#pragma once

#include <atomic>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <tuple>
#include <utility>

#include "frame/platform_thread.h"

namespace zul::frame {

template <typename Kernel>
concept KeptBetweenCalls = Kernel::kKeptBetweenCalls;

// Of 1 to KeptBlocks::kCount - 1, given when the library is loaded; 0 where there are none left.
std::size_t NextBlockNumber();

template <typename Kernel>
inline const std::size_t kBlockNumber = NextBlockNumber();

// A new block for the calling thread's kernels of that number. Null where memory cannot be obtained, and for 0: then
// nothing is kept. It throws nothing and leaves errno alone.
void* MakeBlock(std::size_t number, std::size_t size);

// The kernel of the calls that had the same parameters, compared by their bits: -0 is not 0, and a NaN is what it was.
template <typename Kernel, typename... Types>
class KeptKernel {
public:
    // Null where the thread keeps none.
    static KeptKernel* OfThisThread() {
        const std::size_t number = kBlockNumber<Kernel>;
        KeptBlocks* const blocks = ThisThread().blocks;
        if (blocks != nullptr && blocks->memory[number] != nullptr)
            return static_cast<KeptKernel*>(blocks->memory[number]);
        void* const memory = MakeBlock(number, sizeof(KeptKernel));
        return memory != nullptr ? new (memory) KeptKernel : nullptr;
    }

    // Whether the last call had these parameters. From a second such call on the kernel is kept; where they change
    // with each call, it had better lie on the stack, whose address is at hand.
    bool IsRepeated(Types... parameters) {
        const bool isRepeated = AreLast(std::index_sequence_for<Types...>{}, parameters...);
        if (!isRepeated) {
            last_ = {parameters...};
            isWhole_ = false;
        }
        return isRepeated;
    }

    // For repeated parameters. The kernel is whole when it has returned only: a trap ends a call wherever it is, in
    // the middle of a constructor or of a value that is kept from then on. The memory has to be in the order of the
    // text at each trap, of which the compiler does not know; the processor sees to it by itself.
    double Apply(double x, Types... parameters) {
        const bool isKept = isWhole_;
        isWhole_ = false;
        std::atomic_signal_fence(std::memory_order_seq_cst);
        if (!isKept) new (memory_) Kernel{parameters...};
        const double result =
            (*std::launder(reinterpret_cast<Kernel*>(memory_)))(x);  // NOLINT: a kernel it is
        std::atomic_signal_fence(std::memory_order_seq_cst);
        isWhole_ = true;
        return result;
    }

private:
    static std::uint64_t Bits(double parameter) { return std::bit_cast<std::uint64_t>(parameter); }
    static std::uint64_t Bits(std::integral auto parameter) { return static_cast<std::uint64_t>(parameter); }

    template <std::size_t... kIndex>
    bool AreLast(std::index_sequence<kIndex...> /*indices*/, Types... parameters) const {
        return (static_cast<unsigned>(Bits(std::get<kIndex>(last_)) == Bits(parameters)) & ...) != 0;
    }

    bool isWhole_ = false;
    std::tuple<Types...> last_{};
    alignas(Kernel) std::byte memory_[sizeof(Kernel)];
};

}  // namespace zul::frame
