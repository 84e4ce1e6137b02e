#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <random>
#include <stdexcept>
#include <thread>

#include "exiv2_wrapper/model/metadata_cache.h"
#include "model/cache_filler.h"
#include "model/metadata_cache_fixture.h"
#include "support/latch.h"
#include "support/this_process.h"
#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::countOpenHandles;
using test_support::hasChildren;
using test_support::kHandlesKeptForThreads;
using test_support::kPrintAll;
using test_support::kSummary;
using test_support::kSummaryThatRaises;
using test_support::Record;
using test_support::ToolDirectory;

using MetadataCacheThreads = test_support::MetadataCacheFixture;

enum class Outcome { record, null, raised };

struct Reply {
    Outcome outcome;
    Record record;
};

Reply ask(const std::filesystem::path& file) {
    try {
        const Record record = readExifMetadataFromCliCached(file);
        return {record ? Outcome::record : Outcome::null, record};
    } catch (const std::out_of_range&) {
        return {Outcome::raised, nullptr};
    }
}

// The replies to as many threads that ask for a file at the same moment. The tool waits at the gate
// until all are about to ask.
std::vector<Reply> askAtOnce(const ToolDirectory& tool, const std::string& gate,
                             std::size_t threadCount, const std::filesystem::path& file) {
    const std::size_t callsBefore = tool.calls().size();
    std::vector<Reply> replies(threadCount);
    test_support::Latch start(static_cast<std::ptrdiff_t>(threadCount));
    std::vector<std::thread> threads;
    for (Reply& reply : replies) {
        threads.emplace_back([&start, &reply, &file] {
            start.arrive_and_wait();
            reply = ask(file);
        });
    }
    EXPECT_TRUE(tool.waitForCalls(callsBefore + 1));
    tool.openGate(gate);
    for (std::thread& thread : threads) {
        thread.join();
    }
    return replies;
}

TEST_F(MetadataCacheThreads, RunsTheToolTwiceForTwoThreadsThatAskForOneFile) {
    tool.answer({"-PXEkycv"}, {.output = kPrintAll, .gate = "go"});
    tool.answer({"pr"}, {.output = kSummary});
    const std::vector<Reply> replies = askAtOnce(tool, "go", 2, tool.makeFile("photo.jpg"));
    EXPECT_TRUE(replies[0].record);
    EXPECT_EQ(replies[0].record, replies[1].record);
    EXPECT_EQ(printAllRuns(), 1U);
    EXPECT_EQ(summaryRuns(), 1U);
}

TEST_F(MetadataCacheThreads, SharesAFailureAmongThreads) {
    tool.answer({"-PXEkycv"}, {.exitCode = 1, .gate = "go"});
    for (const Reply& reply : askAtOnce(tool, "go", 8, tool.makeFile("photo.jpg"))) {
        EXPECT_EQ(reply.outcome, Outcome::null);
    }
    EXPECT_EQ(printAllRuns(), 1U);
    EXPECT_EQ(log.lines().size(), 1U);
}

// Whoever computes gets the exception and whoever waits gets null. A thread that comes late, when
// nothing is remembered any more, computes again: the runs tell how many did. Should all have come
// late, which is up to the system, they are sent once more.
TEST_F(MetadataCacheThreads, WakesEveryWaiterWithNullOnAnException) {
    tool.answer({"pr"}, {.output = kSummaryThatRaises});
    constexpr std::size_t kThreads = 8;
    constexpr int kMostRounds = 50;
    std::size_t woken = 0;
    for (int round = 0; woken == 0 && round < kMostRounds; ++round) {
        const std::string gate = "go" + std::to_string(round);
        const std::filesystem::path file = tool.makeFile("photo" + std::to_string(round) + ".jpg");
        tool.answer({"-PXEkycv"}, {.output = kPrintAll, .gate = gate}, file);
        const std::size_t runsBefore = printAllRuns();
        std::size_t raised = 0;
        for (const Reply& reply : askAtOnce(tool, gate, kThreads, file)) {
            raised += reply.outcome == Outcome::raised ? 1U : 0U;
            woken += reply.outcome == Outcome::null ? 1U : 0U;
        }
        EXPECT_EQ(raised, printAllRuns() - runsBefore);
        EXPECT_EQ(woken, kThreads - raised);
    }
    EXPECT_GT(woken, 0U);
}

// The first computation goes on for those who hold its result, a second one begins for the next
// caller, and the second is what is remembered.
TEST_F(MetadataCacheThreads, MayEvictAFileThatIsStillBeingRead) {
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    tool.answer({"-PXEkycv"}, {.output = kPrintAll, .gate = "go"}, file);
    tool.answer({"pr"}, {.output = kSummary});
    Reply first{};
    Reply second{};
    std::thread firstCaller([&] { first = ask(file); });
    ASSERT_TRUE(tool.waitForCalls(2));
    test_support::fillCache();
    std::thread secondCaller([&] { second = ask(file); });
    EXPECT_TRUE(tool.waitForCalls(2 + 1));
    tool.openGate("go");
    firstCaller.join();
    secondCaller.join();

    EXPECT_TRUE(first.record && second.record);
    EXPECT_NE(first.record, second.record);
    EXPECT_EQ(readExifMetadataFromCliCached(file), second.record);
}

// ---- many threads, many files

enum class Kind { readable, failing, raising };

struct Photo {
    std::filesystem::path file;
    Kind kind;
};

bool isPossible(Kind kind, Outcome outcome) {
    switch (kind) {
        case Kind::readable:
            return outcome == Outcome::record;
        case Kind::failing:
            return outcome == Outcome::null;
        default:  // null for whoever waited for the thread that got the exception
            return outcome == Outcome::raised || outcome == Outcome::null;
    }
}

std::vector<Photo> makePhotos(ToolDirectory& tool, std::size_t count) {
    std::vector<Photo> photos;
    for (std::size_t i = 0; i < count; ++i) {
        constexpr Kind kinds[] = {Kind::raising, Kind::failing, Kind::failing};
        const std::filesystem::path file = tool.path() / ("photo-" + std::to_string(i) + ".nef");
        photos.push_back({file, i % 10 < 3 ? kinds[i % 10] : Kind::readable});
        if (photos.back().kind == Kind::failing) {
            tool.answer({"-PXEkycv"}, {.exitCode = 1}, file);
        }
        if (photos.back().kind == Kind::raising) {
            tool.answer({"pr"}, {.output = kSummaryThatRaises}, file);
        }
    }
    tool.answerMetadata(kPrintAll, kSummary);
    return photos;
}

// Asks for every photo of the list, on many threads; counts the impossible outcomes.
int askForAll(const std::vector<Photo>& photos) {
    constexpr int kThreads = 16;
    std::atomic<std::size_t> next = 0;
    std::atomic<int> impossible = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (std::size_t at = next++; at < photos.size(); at = next++) {
                const Reply reply = ask(photos[at].file);
                impossible += isPossible(photos[at].kind, reply.outcome) ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return impossible;
}

TEST_F(MetadataCacheThreads, LeaveNothingBehindAfterMoreFilesThanAreKept) {
    constexpr std::size_t kFiles = 250;
    constexpr std::size_t kRepeats = 75;
    std::vector<Photo> photos = makePhotos(tool, kFiles);
    std::mt19937 random(1);
    for (std::size_t i = 0; i < kRepeats; ++i) {
        photos.push_back(photos[random() % kFiles]);
    }
    std::shuffle(photos.begin(), photos.end(), random);
    const std::vector<Photo> some(photos.begin(), photos.begin() + 20);

    ASSERT_EQ(askForAll(some), 0);  // brings to life what the system makes once for threads
    test_support::fillCache();      // an entry that was waited for may hold handles
    const std::size_t before = countOpenHandles();
    EXPECT_EQ(askForAll(photos), 0);
    test_support::fillCache();
    EXPECT_LE(countOpenHandles(), before + kHandlesKeptForThreads);
    EXPECT_FALSE(hasChildren());
}

}  // namespace
}  // namespace exiv2_wp::internal
