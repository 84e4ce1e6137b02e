#pragma once

#include <cstddef>
#include <new>

/// The test program's own operator new, which can be told to fail, and so can its realloc where the
/// linker puts ours in its place (failing_realloc.cpp). A library that is loaded beside
/// the program may keep the allocation functions of its own, as on Windows; those never fail.
namespace test_support {

/// Lets the n-th allocation of this thread during its life fail, counted from 1, and no other.
class FailingAllocation {
public:
    explicit FailingAllocation(int number);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

    /// False while fewer were asked for.
    [[nodiscard]] bool hasFailed() const;
};

/// During its life this thread's allocations neither fail nor count.
class SafeAllocations {
public:
    SafeAllocations();
    SafeAllocations(const SafeAllocations&) = delete;
    SafeAllocations& operator=(const SafeAllocations&) = delete;
    ~SafeAllocations();
};

/// Counts an allocation of this thread; true when it is the one that has to fail.
[[nodiscard]] bool allocationFailsNow();

/// How many blocks are allocated by operator new, in all threads.
[[nodiscard]] std::ptrdiff_t countAllocatedBlocks();

/// Whether the call ends in std::bad_alloc.
template <typename Call>
bool runsOutOfMemory(const Call& call) {
    try {
        call();
        return false;
    } catch (const std::bad_alloc&) {
        return true;
    }
}

/// Calls `call` again and again, with the first allocation failing, the second and so on, until it
/// asks for no more; before each call `prepare`, and `check` after each that had a failure. Returns
/// how many allocations failed.
template <typename Prepare, typename Call, typename Check>
int failEachAllocation(const Prepare& prepare, const Call& call, const Check& check) {
    for (int number = 1;; ++number) {
        prepare();
        bool hasFailed = false;
        {
            const FailingAllocation failing(number);
            call();
            hasFailed = failing.hasFailed();
        }
        if (!hasFailed) {
            return number - 1;
        }
        check();
    }
}

}  // namespace test_support
