#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>

#include "exiv2_wrapper/model/metadata_cache.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

/// A program of its own, since it begins with an empty cache.
namespace exiv2_wp::internal {
namespace {

using test_support::failureLine;
using test_support::kRunExiv2CliSignature;
using test_support::LogCapture;
using test_support::TemporaryDirectory;

class CacheCapacity : public ::testing::Test {
protected:
    // Asks for the files of these numbers and returns how many of them were to be read. No tool is
    // known, which is logged for each; a failure is kept like a record.
    std::ptrdiff_t readingsFor(int first, int last) {
        log.clear();
        for (int i = first; i <= last; ++i) {
            (void)readExifMetadataFromCliCached(folder.path() / std::to_string(i));
        }
        const auto lines = log.lines();
        return std::count(lines.begin(), lines.end(),
                          failureLine(kRunExiv2CliSignature, "Valid exiv2 executable not found"));
    }

    LogCapture log;
    TemporaryDirectory folder;
};

TEST_F(CacheCapacity, Keeps161FilesWhenThe201stHasCome) {
    EXPECT_EQ(readingsFor(1, 200), 200);
    EXPECT_EQ(readingsFor(1, 200),
              0);  // all are kept, and being asked for doesn't make them younger
    EXPECT_EQ(readingsFor(201, 201), 1);
    EXPECT_EQ(readingsFor(41, 201), 0);  // the 161 that are left
    EXPECT_EQ(readingsFor(1, 39), 39);   // 200 again
    EXPECT_EQ(readingsFor(41, 80), 0);
    EXPECT_EQ(readingsFor(40, 40), 1);  // 161 again
    EXPECT_EQ(readingsFor(81, 201), 0);
    EXPECT_EQ(readingsFor(1, 40), 0);
    EXPECT_EQ(readingsFor(41, 41), 1);
}

}  // namespace
}  // namespace exiv2_wp::internal
