#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "exiv2_wrapper/model/metadata_cache.h"
#include "exiv2_wrapper/runner/read_call.h"
#include "faults/failing_allocations.h"
#include "faults/photo_on_memory_platform.h"
#include "support/log_capture.h"

/// A thread waits for the metadata of a file that another thread reads, and that runs out of
/// memory.
namespace exiv2_wp::internal {
namespace {

using test_support::failEachAllocation;
using test_support::freshFile;
using test_support::LogCapture;
using test_support::memoryPlatform;
using test_support::runsOutOfMemory;

using Record = std::shared_ptr<const CliExifMetadata>;

// Asks for a file on a thread of its own, as soon as another thread has begun to read it, and holds
// that up until the question is under way.
class Waiter {
public:
    explicit Waiter(std::filesystem::path file) : file_(std::move(file)) {
        memoryPlatform().onStep([this](const std::string& step) {
            if (step == "start run" && !hasBegun_.exchange(true)) {
                thread_ = std::thread([this] { ask(); });
                isAsking_.get_future().wait();
            }
        });
        memoryPlatform().onFileName([this] {
            if (std::this_thread::get_id() != reader_ && !isCounted_.exchange(true)) {
                isAsking_.set_value();
            }
        });
    }
    Waiter(const Waiter&) = delete;
    Waiter& operator=(const Waiter&) = delete;
    ~Waiter() {
        memoryPlatform().onStep(nullptr);
        memoryPlatform().onFileName(nullptr);
        finish();
    }

    // What the thread was given; none when it never asked.
    std::optional<Record> finish() {
        if (thread_.joinable()) {
            thread_.join();
        }
        return answer_;
    }

private:
    void ask() { answer_ = readExifMetadataFromCliCached(file_); }

    std::filesystem::path file_;
    std::thread::id reader_ = std::this_thread::get_id();
    std::atomic<bool> hasBegun_ = false;
    std::atomic<bool> isCounted_ = false;
    std::promise<void> isAsking_;
    std::thread thread_;
    std::optional<Record> answer_;
};

class WaitingThread : public test_support::PhotoOnMemoryPlatform {
protected:
    const LogCapture log;
};

// Null for a thread that waits when memory runs out. One that is late finds no entry any more and
// reads the file itself.
TEST_F(WaitingThread, IsWokenWithNullAndTheEntryIsGone) {
    std::optional<Waiter> waiter;
    std::filesystem::path file;
    bool hasRaised = false;
    int woken = 0;
    const auto prepare = [&] {
        file = freshFile("photo.nef");
        waiter.emplace(file);
    };
    Record read;
    const auto ask = [&] {
        read.reset();
        hasRaised = runsOutOfMemory([&] { read = readExifMetadataFromCliCached(file); });
    };
    const auto check = [&] {
        EXPECT_NE(hasRaised, read != nullptr);
        const std::optional<Record> answer = waiter->finish();
        woken += answer && *answer == nullptr ? 1 : 0;
        waiter.reset();
        const Record record = readExifMetadataFromCliCached(file);
        ASSERT_TRUE(record);
        EXPECT_EQ(record->tags.size(), 9U);
        expectNothingLeft();
    };
    // On a busy machine every waiter may be late, round after round.
    for (int round = 0; woken == 0 && round < 50; ++round) {
        EXPECT_GT(failEachAllocation(prepare, ask, check), 0);
    }
    EXPECT_GT(woken, 0);
}

// The same for a file that is being read ahead, with another one in front of it.
TEST_F(WaitingThread, IsWokenWhenMemoryRunsOutWhileItsFileIsReadAhead) {
    memoryPlatform().knowReadCall();
    std::optional<Waiter> waiter;
    std::vector<std::filesystem::path> files;
    int woken = 0;
    const auto prepare = [&] {
        files = {freshFile("first.nef"), freshFile("photo.nef")};
        forgetReadCall();
        waiter.emplace(files.back());
    };
    const auto ask = [&] { runsOutOfMemory([&] { (void)readAhead(files); }); };
    const auto check = [&] {
        const std::optional<Record> answer = waiter->finish();
        woken += answer && *answer == nullptr ? 1 : 0;
        waiter.reset();
        EXPECT_EQ(readAhead(files), 2U);
        EXPECT_TRUE(readExifMetadataFromCliCached(files.back()));
        expectNothingLeft();
    };
    for (int round = 0; woken == 0 && round < 50; ++round) {
        EXPECT_GT(failEachAllocation(prepare, ask, check), 0);
    }
    EXPECT_GT(woken, 0);
}

TEST_F(WaitingThread, SharesTheRecordWhenMemorySuffices) {
    const std::filesystem::path file = freshFile("photo.nef");
    Waiter waiter(file);
    const Record record = readExifMetadataFromCliCached(file);
    EXPECT_TRUE(record);
    EXPECT_EQ(waiter.finish(), std::optional(record));
}

}  // namespace
}  // namespace exiv2_wp::internal
