// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

// The program's memory, in place of the standard library's. libexiv2 makes and forgets tens of
// thousands of small objects a photo, and to merge what they leave took a sixth of a run. Here they
// leave it to the next one of their size, in a list for each size; the system gets it back when the
// process ends. For one thread, which is all that the program has.

namespace {

constexpr std::size_t kUnit = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
constexpr std::size_t kHeader = sizeof(std::size_t);  // in front of each object
constexpr std::size_t kLargest = 32 * kUnit;          // with its header; larger ones are rare
constexpr std::size_t kPortion = 4096 * kUnit;
static_assert(kHeader < kUnit);

/// An object that was forgotten.
struct Free {
    Free* next;
};

Free* forgotten[kLargest / kUnit + 1];  // by their size in units
std::byte* fresh = nullptr;             // a header's place in front of an aligned address
std::size_t freshSize = 0;

/// The size in units of an object with its header; 0 for one that isn't in a list.
std::size_t& unitsOf(void* object) {
    return static_cast<std::size_t*>(object)[-1];
}

std::byte* allocate(std::size_t size) {
    if (void* const memory = std::malloc(size)) {
        return static_cast<std::byte*>(memory);
    }
    throw std::bad_alloc();
}

void* makeLarge(std::size_t size) {
    if (size > std::numeric_limits<std::size_t>::max() - kUnit) {
        throw std::bad_alloc();
    }
    void* const object = allocate(size + kUnit) + kUnit;
    unitsOf(object) = 0;
    return object;
}

void* makeFresh(std::size_t units) {
    const std::size_t size = units * kUnit;
    if (freshSize < size) {
        fresh = allocate(kPortion) + kUnit - kHeader;
        freshSize = kPortion - kUnit;
    }
    void* const object = fresh + kHeader;
    unitsOf(object) = units;
    fresh += size;
    freshSize -= size;
    return object;
}

}  // namespace

void* operator new(std::size_t size) {
    if (size > kLargest - kHeader) {
        return makeLarge(size);
    }
    const std::size_t units = (size + kHeader + kUnit - 1) / kUnit;
    Free* const object = forgotten[units];
    if (object == nullptr) {
        return makeFresh(units);
    }
    forgotten[units] = object->next;
    return object;
}

void operator delete(void* object) noexcept {
    if (object == nullptr) {
        return;
    }
    if (const std::size_t units = unitsOf(object); units > 0) {
        forgotten[units] = new (object) Free{forgotten[units]};
    } else {
        std::free(static_cast<std::byte*>(object) - kUnit);
    }
}

void operator delete(void* object, std::size_t /*size*/) noexcept {
    operator delete(object);
}
