#include "tests/time/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<unsigned long> allocations = 0;

} // namespace

unsigned long AllocationCount() {
    return allocations.load();
}

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

// Left alone, the array forms would pass the count by where a sanitizer brings forms of its own.
void* operator new[](std::size_t size) {
    return operator new(size);
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
