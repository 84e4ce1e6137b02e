#include <gtest/gtest.h>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/metadata_cache.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

/// A program of its own, since it begins with an empty cache.
namespace exiv2_wp::internal {
namespace {

using test_support::LogCapture;
using test_support::ToolDirectory;

class CacheCapacity : public ::testing::Test {
protected:
    // Asks for the files of these numbers and returns how many of them the tool was run for. The
    // tool fails for each; a failure is kept like a record.
    std::size_t runsFor(int first, int last) {
        const std::size_t before = tool.countCalls("-PXEkycv");
        for (int i = first; i <= last; ++i) {
            (void)readExifMetadataFromCliCached(tool.path() / std::to_string(i));
        }
        return tool.countCalls("-PXEkycv") - before;
    }

    LogCapture log;
    ToolDirectory tool;
};

TEST_F(CacheCapacity, Keeps161FilesWhenThe201stHasCome) {
    ASSERT_TRUE(initialize(tool.path()));
    EXPECT_EQ(runsFor(1, 200), 200U);
    EXPECT_EQ(runsFor(1, 200), 0U);  // all are kept, and being asked for doesn't make them younger
    EXPECT_EQ(runsFor(201, 201), 1U);
    EXPECT_EQ(runsFor(41, 201), 0U);  // the 161 that are left
    EXPECT_EQ(runsFor(1, 39), 39U);   // 200 again
    EXPECT_EQ(runsFor(41, 80), 0U);
    EXPECT_EQ(runsFor(40, 40), 1U);  // 161 again
    EXPECT_EQ(runsFor(81, 201), 0U);
    EXPECT_EQ(runsFor(1, 40), 0U);
    EXPECT_EQ(runsFor(41, 41), 1U);
}

}  // namespace
}  // namespace exiv2_wp::internal
