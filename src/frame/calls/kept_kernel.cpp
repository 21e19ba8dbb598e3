#include "frame/calls/kept_kernel.h"

#include <cerrno>

namespace zul::frame {
namespace {

constinit std::size_t numbersGiven = 0;

// malloc, not operator new, which a host may replace and which may throw.
template <typename Obtain>
void* WithoutErrno(Obtain obtain) {
    const int before = errno;
    void* const memory = obtain();
    errno = before;
    return memory;
}

}  // namespace

std::size_t NextBlockNumber() {
    return numbersGiven + 1 < KeptBlocks::kCount ? ++numbersGiven : 0;
}

void* MakeBlock(std::size_t number, std::size_t size) {
    if (number == 0) return nullptr;
    return WithoutErrno([number, size]() -> void* {
        KeptBlocks* const blocks = BlocksOfThisThread();
        if (blocks == nullptr) return nullptr;
        return blocks->memory[number] = std::malloc(size);
    });
}

void Free(KeptBlocks* blocks) {
    if (blocks == nullptr) return;
    for (void* const memory : blocks->memory)
        std::free(memory);
    std::free(blocks);
}

}  // namespace zul::frame
