#include "faults/failing_allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

// Plain numbers, so that using them needs no allocation.
thread_local int allocationsLeft = 0;  // the last of them fails; 0: none does
thread_local bool failed = false;
thread_local int safeScopes = 0;
std::atomic<std::ptrdiff_t> blocks = 0;

}  // namespace

namespace test_support {

bool allocationFailsNow() {
    if (allocationsLeft == 0 || safeScopes != 0 || --allocationsLeft != 0) {
        return false;
    }
    failed = true;
    return true;
}

}  // namespace test_support

namespace {

void* allocate(std::size_t size) {
    void* const block =
        test_support::allocationFailsNow() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    ++blocks;
    return block;
}

void release(void* block) noexcept {
    if (block != nullptr) {
        --blocks;
        std::free(block);
    }
}

}  // namespace

void* operator new(std::size_t size) {
    return allocate(size);
}

void* operator new[](std::size_t size) {
    return allocate(size);
}

void operator delete(void* block) noexcept {
    release(block);
}

void operator delete[](void* block) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t) noexcept {
    release(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    release(block);
}

namespace test_support {

FailingAllocation::FailingAllocation(int number) {
    allocationsLeft = number;
    failed = false;
}

FailingAllocation::~FailingAllocation() {
    allocationsLeft = 0;
}

bool FailingAllocation::hasFailed() const {
    return failed;
}

SafeAllocations::SafeAllocations() {
    ++safeScopes;
}

SafeAllocations::~SafeAllocations() {
    --safeScopes;
}

std::ptrdiff_t countAllocatedBlocks() {
    return blocks;
}

}  // namespace test_support
