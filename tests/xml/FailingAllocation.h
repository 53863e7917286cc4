#pragma once

#include <cstddef>

// For its scope, lets so many allocations by `new` of the whole program succeed; all further ones throw
// std::bad_alloc. For tests of one thread.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t successes);
    FailingAllocation(FailingAllocation const&) = delete;
    FailingAllocation& operator=(FailingAllocation const&) = delete;
    ~FailingAllocation();
};
