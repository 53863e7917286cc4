#include "tests/xml/FailingAllocation.h"

#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t cUnlimited = static_cast<std::size_t>(-1);
std::size_t successesLeft = cUnlimited;

} // namespace

FailingAllocation::FailingAllocation(std::size_t successes) {
    successesLeft = successes;
}

FailingAllocation::~FailingAllocation() {
    successesLeft = cUnlimited;
}

void* operator new(std::size_t size) {
    if (successesLeft == 0) throw std::bad_alloc();
    if (successesLeft != cUnlimited) --successesLeft;
    void* const memory = std::malloc(size != 0 ? size : 1);
    if (!memory) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
