// The allocations of a program through operator new: counted, and one of them made to fail. A program that
// links this has its own operator new; it is for tests on one thread.
#pragma once

namespace zul::test {

// From the construction to the destruction.
class AllocationWatch {
public:
    // The allocation with this number, counted from 1, fails; 0: none.
    explicit AllocationWatch(int failing = 0);
    ~AllocationWatch();
    AllocationWatch(const AllocationWatch&) = delete;
    AllocationWatch& operator=(const AllocationWatch&) = delete;

    // Those that were tried.
    int Count() const;
    // Those that succeeded and were not freed.
    int Live() const;
};

}  // namespace zul::test
