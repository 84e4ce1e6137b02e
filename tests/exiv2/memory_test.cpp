// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <random>
#include <vector>

// This program's memory is that of exiv2.exe, whose source it contains.

// Clang declares it by an option alone.
void operator delete(void* object, std::size_t size) noexcept;

namespace {

constexpr std::size_t kAlignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__;

// Beyond the largest of which forgotten ones are kept, in sizes that matter at every boundary.
constexpr std::size_t kSizes = 1200;

void fill(void* object, std::size_t size) {
    std::memset(object, static_cast<int>(size % 251), size);
}

bool isFilled(const void* object, std::size_t size) {
    const auto* const bytes = static_cast<const unsigned char*>(object);
    return std::all_of(bytes, bytes + size,
                       [size](unsigned char byte) { return byte == size % 251; });
}

// A size that the compiler doesn't know.
std::size_t hidden(std::size_t size) {
    volatile std::size_t hiddenSize = size;
    return hiddenSize;
}

}  // namespace

TEST(Memory, ObjectsOfEverySizeAreAlignedAndApart) {
    for (int round = 0; round < 2; ++round) {  // fresh memory, then forgotten objects' too
        std::vector<void*> objects;
        for (std::size_t size = 0; size < kSizes; ++size) {
            objects.push_back(operator new(size));
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(objects.back()) % kAlignment, 0U) << size;
            fill(objects.back(), size);
        }
        for (std::size_t size = 0; size < kSizes; ++size) {
            EXPECT_TRUE(isFilled(objects[size], size)) << size;
            operator delete(objects[size]);
        }
    }
}

TEST(Memory, AForgottenObjectServesTheNextOfItsSize) {
    void* const first = operator new(hidden(100));
    void* const second = operator new(hidden(100));
    operator delete(first);
    operator delete(second, hidden(100));
    void* const third = operator new(hidden(100));
    void* const fourth = operator new(hidden(100));
    EXPECT_EQ(third, second);
    EXPECT_EQ(fourth, first);
    operator delete(first);
    operator delete(second);
}

TEST(Memory, AForgottenObjectDoesNotServeALargerOne) {
    constexpr std::size_t unit = kAlignment;
    void* const small = operator new(hidden(10 * unit - sizeof(std::size_t)));
    operator delete(small);  // at whose place the next of its size would be
    void* const larger = operator new(hidden(10 * unit - sizeof(std::size_t) + 1));
    EXPECT_NE(larger, small);
    operator delete(larger);
}

TEST(Memory, NothingMayBeDeleted) {
    operator delete(nullptr);
    operator delete (nullptr, std::size_t{8});
}

TEST(Memory, MoreThanThereIsRaisesBadAlloc) {
    constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
    for (std::size_t less = 0; less < 4 * kAlignment; ++less) {
        EXPECT_THROW((void)operator new(hidden(most - less)), std::bad_alloc) << less;
    }
    EXPECT_THROW((void)operator new(hidden(most / 2)), std::bad_alloc);
}

TEST(Memory, ObjectsThatComeAndGoKeepTheirBytes) {
    struct Object {
        void* memory;
        std::size_t size;
    };
    std::vector<Object> objects;
    std::mt19937 random(1);
    for (int i = 0; i < 50'000; ++i) {
        if (random() % 3 == 0 && !objects.empty()) {
            std::swap(objects[random() % objects.size()], objects.back());
            ASSERT_TRUE(isFilled(objects.back().memory, objects.back().size));
            operator delete(objects.back().memory);
            objects.pop_back();
        } else {
            const std::size_t size = random() % (random() % 10 == 0 ? 20'000 : 200);
            objects.push_back({operator new(size), size});
            fill(objects.back().memory, size);
        }
    }
    for (const Object& object : objects) {
        ASSERT_TRUE(isFilled(object.memory, object.size));
        operator delete(object.memory);
    }
}
