#include <cstddef>

#include "faults/failing_allocations.h"

// The linker (--wrap) leads the objects' calls of realloc here, and these to the C library.
extern "C" {
void* __real_realloc(void* block, std::size_t size);
void* __wrap_realloc(void* block, std::size_t size);
}

void* __wrap_realloc(void* block, std::size_t size) {
    return test_support::allocationFailsNow() ? nullptr : __real_realloc(block, size);
}
