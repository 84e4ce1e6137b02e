#include <gtest/gtest.h>

#include "faults/failing_allocations.h"
#include "faults/photo_on_memory_platform.h"
#include "vesk_logger/log_sink.h"

/// Where the whole program shares one operator new, blocks can be counted.
namespace exiv2_wp {
namespace {

using test_support::countAllocatedBlocks;
using test_support::failEachAllocation;
using test_support::freshFile;
using test_support::memoryPlatform;
using test_support::runsOutOfMemory;

class AllocatedBlocks : public test_support::PhotoOnMemoryPlatform {
protected:
    void SetUp() override {
        PhotoOnMemoryPlatform::SetUp();
        vesk::setLogSink([](const std::vector<vesk::LogItem>&) {});
    }
    void TearDown() override {
        vesk::setLogSink({});
        PhotoOnMemoryPlatform::TearDown();
    }

    // How many there are, but for the platform's own notes.
    static std::ptrdiff_t count() {
        memoryPlatform().failAt(0);
        return countAllocatedBlocks();
    }
};

TEST_F(AllocatedBlocks, AreAllReleasedWhenMemoryRunsOutInAReading) {
    createImageMetadata(freshFile("photo.nef"), [](const SExivMetadataInfo&) {});
    std::filesystem::path file;
    std::ptrdiff_t before = 0;
    const auto prepare = [&] {
        file = freshFile("photo.nef");
        before = count();
    };
    const auto read = [&] {
        (void)runsOutOfMemory([&] { createImageMetadata(file, [](const SExivMetadataInfo&) {}); });
    };
    // The cache keeps the record of a reading that succeeded before its summary couldn't be made,
    // and it releases others when it needs room.
    int kept = 0;
    const auto check = [&] {
        const std::ptrdiff_t left = count() - before;
        if (left > 0) {
            ++kept;
            const std::size_t steps = (createImageMetadata(file, [](const SExivMetadataInfo&) {}),
                                       memoryPlatform().steps().size());
            EXPECT_EQ(steps, 0U) << left << " blocks are left, and not in the cache";
        }
    };
    const int failures = failEachAllocation(prepare, read, check);
    EXPECT_GT(failures, kept);
}

TEST_F(AllocatedBlocks, AreAllReleasedWhenMemoryRunsOutInAPreview) {
    TopBottomOffset offset{};
    const auto ignoreSize = [](int, int, int) {};
    const auto take = [](const unsigned char*, std::uint64_t, const TopBottomOffset&) {
        return true;
    };
    const std::filesystem::path file = freshFile("photo.nef");
    std::ptrdiff_t before = 0;
    const auto read = [&] {
        (void)runsOutOfMemory([&] {
            (void)readExiv2Thumbnail(file, "", 4, 3, offset, ignoreSize, nullptr, take, nullptr);
        });
    };
    read();
    const int failures =
        failEachAllocation([&] { before = count(); }, read, [&] { EXPECT_EQ(count(), before); });
    EXPECT_GT(failures, 0);
}

}  // namespace
}  // namespace exiv2_wp
