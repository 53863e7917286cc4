#include "tests/support/Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<unsigned long> allocations = 0;

// The next failures, and how many allocations succeed before them.
std::atomic<std::size_t> successesLeft = 0;
std::atomic<std::size_t> failuresLeft = 0;

bool IsToFail() {
    if (failuresLeft == 0) return false;
    if (successesLeft != 0) {
        --successesLeft;
        return false;
    }
    if (failuresLeft != FailingAllocation::cAll) --failuresLeft;
    return true;
}

} // namespace

unsigned long AllocationCount() {
    return allocations.load();
}

FailingAllocation::FailingAllocation(std::size_t successes, std::size_t failures) {
    successesLeft = successes;
    failuresLeft = failures;
}

FailingAllocation::~FailingAllocation() {
    failuresLeft = 0;
}

void* operator new(std::size_t size) {
    ++allocations;
    if (IsToFail()) throw std::bad_alloc();
    if (void* const memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

// Left alone, the array forms and those that return null would pass the count by where a sanitizer brings
// forms of its own, which do not go together with the plain forms here.
void* operator new[](std::size_t size) {
    return operator new(size);
}

void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    try {
        return operator new(size);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

void* operator new[](std::size_t size, std::nothrow_t const& nothrow) noexcept {
    return operator new(size, nothrow);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::nothrow_t const&) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::nothrow_t const&) noexcept {
    std::free(memory);
}
