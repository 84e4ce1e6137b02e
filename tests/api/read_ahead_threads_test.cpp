#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "api/read_ahead_fixture.h"
#include "exiv2_wrapper/model/metadata_cache.h"

namespace exiv2_wp {
namespace {

using internal::readExifMetadataFromCliCached;

using Paths = std::vector<std::filesystem::path>;

class ReadAheadOnThreads : public test_support::ReadAheadFixture {
protected:
    void SetUp() override {
        ReadAheadFixture::SetUp();
        // A tool that is known to know the call: all threads make use of it from the beginning.
        tool.answerMetadata("", "", file("first.jpg"));
        ASSERT_EQ(readAhead({file("first.jpg")}), 1U);
        callsBefore = tool.calls().size();
    }

    // The tool waits in the middle of this file until the gate is opened.
    void holdUp(const std::string& name) {
        tool.answer({"-PXEkycv"}, {.output = kPrintAll, .gate = "go"}, file(name));
        tool.answer({"pr"}, {}, file(name));
    }

    static std::future<std::size_t> readAheadOnAThread(const Paths& files) {
        return std::async(std::launch::async, [files] { return readAhead(files); });
    }

    static constexpr auto kPrintAll = "Exif.Image.Make Ascii 5 Maker\n";
    std::size_t callsBefore = 0;
};

TEST_F(ReadAheadOnThreads, GivesARecordAsSoonAsItIsThere) {
    holdUp("b.jpg");
    tool.answerMetadata(kPrintAll);
    auto known = readAheadOnAThread({file("a.jpg"), file("b.jpg")});
    ASSERT_TRUE(tool.waitForCalls(callsBefore + 1));
    EXPECT_NE(readExifMetadataFromCliCached(file("a.jpg")), nullptr);
    EXPECT_EQ(known.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
    tool.openGate("go");
    EXPECT_EQ(known.get(), 2U);
    EXPECT_EQ(printAllRuns(), 0U);
}

TEST_F(ReadAheadOnThreads, LetsWhoAsksWaitForTheReading) {
    holdUp("a.jpg");
    tool.answerMetadata(kPrintAll);
    auto known = readAheadOnAThread({file("a.jpg"), file("b.jpg")});
    ASSERT_TRUE(tool.waitForCalls(callsBefore + 1));
    auto answer = std::async(std::launch::async,
                             [&] { return readExifMetadataFromCliCached(file("b.jpg")); });
    tool.openGate("go");
    EXPECT_NE(answer.get(), nullptr);
    EXPECT_EQ(known.get(), 2U);
    EXPECT_EQ(printAllRuns(), 0U);
    EXPECT_EQ(readCalls(), 2U);
}

TEST_F(ReadAheadOnThreads, WaitsForTheFilesOfOthersWhenItsOwnAreDelivered) {
    holdUp("a.jpg");
    tool.answerMetadata(kPrintAll);
    auto other = std::async(std::launch::async,
                            [&] { return readExifMetadataFromCliCached(file("a.jpg")); });
    ASSERT_TRUE(tool.waitForCalls(callsBefore + 1));
    auto known = readAheadOnAThread({file("a.jpg"), file("b.jpg")});
    ASSERT_TRUE(tool.waitForCalls(callsBefore + 2));
    EXPECT_NE(readExifMetadataFromCliCached(file("b.jpg")), nullptr);
    tool.openGate("go");
    EXPECT_EQ(known.get(), 2U);
    EXPECT_NE(other.get(), nullptr);
    EXPECT_EQ(tool.calls()[callsBefore + 1],
              (test_support::Arguments{test_support::native("--read"), file("b.jpg").native()}));
}

// Each list begins with a file of the other's end. Both would wait for ever if they didn't deliver
// their own files first.
TEST_F(ReadAheadOnThreads, ReadsTwoListsInOppositeOrders) {
    tool.answerMetadata(kPrintAll);
    constexpr int kRounds = 10;
    for (int round = 0; round < kRounds; ++round) {
        Paths files;
        for (int i = 0; i < 10; ++i) {
            files.push_back(file(std::to_string(round) + "-" + std::to_string(i) + ".jpg"));
        }
        auto forwards = readAheadOnAThread(files);
        auto backwards = readAheadOnAThread({files.rbegin(), files.rend()});
        EXPECT_EQ(forwards.get(), files.size());
        EXPECT_EQ(backwards.get(), files.size());
    }
    std::size_t readFiles = 0;
    for (const test_support::Arguments& call : tool.calls()) {
        readFiles += call.front() == test_support::native("--read") ? call.size() - 1 : 0;
    }
    EXPECT_EQ(readFiles, 1U + kRounds * 10);
    EXPECT_EQ(printAllRuns(), 0U);
}

// While one thread finds out whether the tool knows the call, another one reads file by file.
TEST_F(ReadAheadOnThreads, DoesNotWaitForAnothersTrialOfTheCall) {
    ASSERT_TRUE(initialize(tool.path()));
    holdUp("a.jpg");
    tool.answerMetadata(kPrintAll);
    auto known = readAheadOnAThread({file("a.jpg")});
    ASSERT_TRUE(tool.waitForCalls(callsBefore + 2));
    EXPECT_EQ(readAhead({file("b.jpg"), file("c.jpg")}), 2U);
    EXPECT_EQ(printAllRuns(), 2U);
    tool.openGate("go");
    EXPECT_EQ(known.get(), 1U);
    EXPECT_EQ(readAhead({file("d.jpg"), file("e.jpg")}), 2U);
    EXPECT_EQ(printAllRuns(), 2U);
}

}  // namespace
}  // namespace exiv2_wp
