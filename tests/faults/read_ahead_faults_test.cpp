#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/metadata_cache.h"
#include "exiv2_wrapper/runner/read_call.h"
#include "faults/failing_allocations.h"
#include "faults/photo_on_memory_platform.h"
#include "support/every_nth.h"
#include "support/log_capture.h"

/// The call for many files, torn at every byte, and with every step and every allocation failing.
namespace exiv2_wp {
namespace {

using internal::readExifMetadataFromCliCached;
using test_support::failEachAllocation;
using test_support::freshFile;
using test_support::kEveryNthInput;
using test_support::LogCapture;
using test_support::memoryPlatform;
using ToolRun = test_support::Run;  // GoogleTest has a Run of its own
using test_support::runsOutOfMemory;

using Paths = std::vector<std::filesystem::path>;

class FaultyReadAhead : public test_support::PhotoOnMemoryPlatform {
protected:
    void SetUp() override {
        PhotoOnMemoryPlatform::SetUp();
        memoryPlatform().knowReadCall();
        internal::forgetReadCall();
    }

    static Paths freshFiles() {
        return {freshFile("a.nef"), freshFile("b.nef"), freshFile("c.nef")};
    }

    // Whether every file has the record that the ordinary runs give, and no question needs a run.
    static void expectAllKnown(const Paths& files) {
        memoryPlatform().failAt(0);  // forgets the steps so far
        for (const auto& file : files) {
            const auto record = readExifMetadataFromCliCached(file);
            ASSERT_TRUE(record);
            EXPECT_EQ(record->tags.size(), 9U);
            EXPECT_EQ(record->lensName, "A lens of 24-70mm with a long name");
        }
        EXPECT_EQ(memoryPlatform().steps(), std::vector<std::string>{});
        expectNothingLeft();
    }

    const LogCapture log;
};

// How the first call for many files goes wrong; those behind it are right.
void changeFirstCall(const std::function<void(ToolRun&)>& change) {
    memoryPlatform().knowReadCall([change, isFirst = true](ToolRun& run) mutable {
        if (std::exchange(isFirst, false)) {
            change(run);
        }
    });
}

struct Torn {
    std::uint32_t exitCode;
    std::size_t first;  // where every n-th place is tried, the others are another exit code's
};

class TornReadAhead : public FaultyReadAhead, public ::testing::WithParamInterface<Torn> {};

TEST_P(TornReadAhead, ReadsAllFilesWhereverTheOutputEnds) {
    std::size_t whole = 0;
    std::size_t end = GetParam().first % kEveryNthInput;
    do {
        internal::forgetReadCall();
        changeFirstCall([&](ToolRun& run) {
            whole = run.output.size();
            run = {.output = run.output.substr(0, end), .exitCode = GetParam().exitCode};
        });
        const Paths files = freshFiles();
        ASSERT_EQ(readAhead(files), 3U) << end;
        expectAllKnown(files);
        end += kEveryNthInput;
    } while (end <= whole);
    EXPECT_GT(whole, 1000U);
    EXPECT_EQ(log.lines(), std::vector<test_support::LogLine>{});
}

INSTANTIATE_TEST_SUITE_P(, TornReadAhead,
                         ::testing::Values(Torn{0, 0}, Torn{1, 1}, Torn{0xC0000005, 2}));

// A byte too many or too few anywhere: what came whole counts, and what is behind is read anew.
TEST_F(FaultyReadAhead, EndsWhateverByteIsMissing) {
    std::size_t whole = 1;
    for (std::size_t at = 0; at < whole; ++at) {
        changeFirstCall([&](ToolRun& run) {
            whole = run.output.size();
            run.output.erase(at, 1);
        });
        const Paths files = freshFiles();
        EXPECT_EQ(readAhead(files), 3U) << at;
        EXPECT_EQ(readAhead(files), 3U) << at;
        expectNothingLeft();
    }
}

// The six steps of a run, of which each may fail: the ordinary runs give what is missing then.
TEST_F(FaultyReadAhead, ReadsAllFilesWhicheverStepFails) {
    const Paths withoutFailure = freshFiles();
    memoryPlatform().failAt(0);
    ASSERT_EQ(readAhead(withoutFailure), 3U);
    const std::size_t steps = memoryPlatform().steps().size();
    EXPECT_EQ(steps, 5U);  // nothing is read behind the last part
    for (std::size_t step = 1; step <= steps; ++step) {
        const Paths files = freshFiles();
        memoryPlatform().failAt(static_cast<int>(step));
        ASSERT_EQ(readAhead(files), 3U) << step;
        expectAllKnown(files);
    }
}

TEST_F(FaultyReadAhead, LeavesNothingHalfKnownWhenMemoryIsExhausted) {
    Paths files;
    bool hasRaised = false;
    std::size_t known = 0;
    const int failures = failEachAllocation(
        [&] {
            files = freshFiles();
            internal::forgetReadCall();
        },
        [&] { hasRaised = runsOutOfMemory([&] { known = readAhead(files); }); },
        [&] {
            EXPECT_TRUE(hasRaised || known == 3);
            expectNothingLeft();
            ASSERT_EQ(readAhead(files), 3U);
            expectAllKnown(files);
        });
    EXPECT_FALSE(hasRaised);
    EXPECT_GT(failures, 100);
}

TEST_F(FaultyReadAhead, LeavesNothingHalfKnownWhenMemoryIsExhaustedByAToolThatDoesNotKnowTheCall) {
    memoryPlatform().knowReadCall([](ToolRun& run) { run = {.exitCode = 1}; });
    Paths files;
    bool hasRaised = false;
    const int failures = failEachAllocation(
        [&] {
            files = freshFiles();
            internal::forgetReadCall();
        },
        [&] { hasRaised = runsOutOfMemory([&] { (void)readAhead(files); }); },
        [&] {
            expectNothingLeft();
            ASSERT_EQ(readAhead(files), 3U);
            expectAllKnown(files);
        });
    EXPECT_FALSE(hasRaised);
    EXPECT_GT(failures, 100);
}

}  // namespace
}  // namespace exiv2_wp
