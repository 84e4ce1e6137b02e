#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/metadata_cache.h"
#include "exiv2_wrapper/platform/quoting.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

/// A program of its own, since it begins with an empty cache.
namespace exiv2_wp {
namespace {

using test_support::Arguments;
using test_support::LogCapture;
using test_support::native;
using test_support::ToolDirectory;

using Paths = std::vector<std::filesystem::path>;

class ReadAheadCapacity : public ::testing::Test {
protected:
    void SetUp() override {
        tool.knowReadCall();
        tool.answerMetadata("");
        ASSERT_TRUE(initialize(tool.path()));
    }

    Paths makeList(const std::string& prefix, int count) const {
        Paths files;
        for (int i = 0; i < count; ++i) {
            files.push_back(tool.path() / (prefix + std::to_string(i) + ".jpg"));
        }
        return files;
    }

    // How many of the files have to be read for a question.
    std::size_t countUnknown(const Paths& files) const {
        const std::size_t before = tool.countCalls("-PXEkycv");
        for (const auto& file : files) {
            (void)internal::readExifMetadataFromCliCached(file);
        }
        return tool.countCalls("-PXEkycv") - before;
    }

    LogCapture log;
    ToolDirectory tool;
};

// In the order in which they stand here, since the cache can't be emptied.
TEST_F(ReadAheadCapacity, IsThatOfTheCache) {
    Paths files = makeList("a", 300);
    EXPECT_EQ(readAhead(files), 200U);
    EXPECT_EQ(tool.countCalls("--read"), 1U);
    EXPECT_EQ(countUnknown({files.begin(), files.begin() + 200}), 0U);

    // The rest, and files that are known or read again: two hundred again, whatever was there.
    files.erase(files.begin(), files.begin() + 200);
    const Paths more = makeList("b", 200);
    files.insert(files.end(), more.begin(), more.end());
    EXPECT_EQ(readAhead(files), 200U);
    EXPECT_EQ(countUnknown({files.begin(), files.begin() + 200}), 0U);
}

// Of the files that are kept, those that came first go in forties: a front keeps what it finds, and
// ends where one of its own would be lost.
TEST_F(ReadAheadCapacity, IsSmallerWhereTheFrontBeginsWithOldFiles) {
    const Paths old = makeList("old", 200);
    ASSERT_EQ(readAhead(old), 200U);
    Paths files = {old.front()};
    const Paths others = makeList("new", 10);
    files.insert(files.end(), others.begin(), others.end());
    EXPECT_EQ(readAhead(files), 1U);
    EXPECT_EQ(readAhead(others), 10U);
    EXPECT_EQ(countUnknown({old.begin() + 40, old.end()}), 0U);
}

TEST_F(ReadAheadCapacity, TakesAsManyRunsAsTheCommandLinesLengthWants) {
    const std::string longName(600, 'x');
    const Paths files = makeList(longName + "/", 160);
    EXPECT_EQ(readAhead(files), 160U);
    std::size_t calls = 0;
    std::size_t readFiles = 0;
    for (const Arguments& call : tool.calls()) {
        std::size_t room = internal::commandLineRoom(tool.toolPath().native());
        for (const auto& argument : call) {
            room += internal::commandLineRoom(argument);
        }
        EXPECT_LE(room, internal::kLongestCommandLine<Arguments::value_type::value_type>);
        calls += call.front() == native("--read") ? 1U : 0U;
        readFiles += call.front() == native("--read") ? call.size() - 1 : 0U;
    }
    EXPECT_GT(calls, 1U);
    EXPECT_LT(calls, 8U);
    EXPECT_EQ(readFiles, 160U);
}

TEST_F(ReadAheadCapacity, OfALongListIsUsedUpByCallingAgainWithTheRest) {
    Paths files = makeList("long", 700);
    std::size_t calls = 0;
    while (!files.empty()) {
        const std::size_t known = readAhead(files);
        ASSERT_GT(known, 0U);
        files.erase(files.begin(), files.begin() + static_cast<std::ptrdiff_t>(known));
        ++calls;
    }
    EXPECT_LE(calls, 5U);
    EXPECT_EQ(tool.countCalls("-PXEkycv"), 0U);
}

}  // namespace
}  // namespace exiv2_wp
