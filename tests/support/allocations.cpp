#include "support/allocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

using zul::test::AllocationWatch;

void* Allocate(std::size_t size) noexcept {
    if (AllocationWatch::active != nullptr && !AllocationWatch::active->Allow(size)) return nullptr;
    return std::malloc(size == 0 ? 1 : size);
}

void* AllocateOrThrow(std::size_t size) {
    void* const memory = Allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void Free(void* memory) noexcept {
    if (AllocationWatch::active != nullptr && memory != nullptr) AllocationWatch::active->Release();
    std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    Free(memory);
}
void operator delete[](void* memory) noexcept {
    Free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    Free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    Free(memory);
}
