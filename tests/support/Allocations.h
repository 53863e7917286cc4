#pragma once

#include <cstddef>

// Counting and failing of allocations by `new`, for programs that have Allocations.cpp among their sources.

// Calls of operator new in the test program so far, on all threads.
unsigned long AllocationCount();

// For its scope, lets so many allocations of the whole program succeed; of those behind them so many, or all,
// fail: they throw std::bad_alloc or, in the forms that do not throw, return null. For tests of one thread;
// one at a time.
class FailingAllocation {
public:
    static constexpr std::size_t cAll = static_cast<std::size_t>(-1);

    explicit FailingAllocation(std::size_t successes, std::size_t failures = cAll);
    FailingAllocation(FailingAllocation const&) = delete;
    FailingAllocation& operator=(FailingAllocation const&) = delete;
    ~FailingAllocation();
};
