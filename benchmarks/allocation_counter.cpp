#include "allocation_counter.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

// glibc's allocator keeps a word in front of each block.
constexpr std::size_t kBookKeeping = sizeof(std::size_t);

std::atomic<std::size_t> bytesInUse;
std::atomic<std::size_t> allocationsMade;

}  // namespace

void* operator new(std::size_t size) {
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    bytesInUse += malloc_usable_size(memory) + kBookKeeping;
    ++allocationsMade;
    return memory;
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) {
        bytesInUse -= malloc_usable_size(memory) + kBookKeeping;
        std::free(memory);
    }
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace benchmarks {

Allocations allocations() {
    return {bytesInUse, allocationsMade};
}

}  // namespace benchmarks
