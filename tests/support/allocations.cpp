#include "support/allocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

struct {
    bool on = false;
    int failing = 0;
    int count = 0;
    int live = 0;
} watch;

void* Allocate(std::size_t size) noexcept {
    if (watch.on && ++watch.count == watch.failing) return nullptr;
    if (watch.on) ++watch.live;
    return std::malloc(size == 0 ? 1 : size);
}

void* AllocateOrThrow(std::size_t size) {
    void* const memory = Allocate(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void Free(void* memory) noexcept {
    if (watch.on && memory != nullptr) --watch.live;
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

namespace zul::test {

AllocationWatch::AllocationWatch(int failing) {
    watch = {true, failing, 0, 0};
}

AllocationWatch::~AllocationWatch() {
    watch.on = false;
}

int AllocationWatch::Count() const {
    return watch.count;
}

int AllocationWatch::Live() const {
    return watch.live;
}

}  // namespace zul::test
