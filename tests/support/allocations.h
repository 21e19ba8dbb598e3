// The allocations of a program through operator new: counted, and one of them made to fail. A program that
// links this has its own operator new; it is for tests on one thread.
#pragma once

#include <cstddef>

namespace zul::test {

// From the construction to the destruction, one at a time.
class AllocationWatch {
public:
    // The allocation with this number, counted from 1, fails; 0: none.
    explicit AllocationWatch(int failing = 0) : failing_(failing) { active = this; }
    ~AllocationWatch() { active = nullptr; }
    AllocationWatch(const AllocationWatch&) = delete;
    AllocationWatch& operator=(const AllocationWatch&) = delete;

    // Those that were tried.
    int Count() const { return count_; }
    // Those that succeeded and were not freed.
    int Live() const { return live_; }
    // All that was asked for.
    std::size_t Bytes() const { return bytes_; }

    // The watch that is on, or null; for operator new and delete alone.
    static inline AllocationWatch* active = nullptr;
    bool Allow(std::size_t size) {
        bytes_ += size;
        const bool allowed = ++count_ != failing_;
        if (allowed) ++live_;
        return allowed;
    }
    void Release() { --live_; }

private:
    int failing_;
    int count_ = 0;
    int live_ = 0;
    std::size_t bytes_ = 0;
};

}  // namespace zul::test
