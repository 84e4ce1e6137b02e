#include <gtest/gtest.h>

#include "exiv2_wrapper/exiftool/tag_reader.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/log_capture.h"

namespace exiftool {
namespace {

using test_support::LogCapture;
using test_support::LogLine;
using test_support::plainLine;

// The one test of this program that asks for the tool of the process, which then never runs. The
// first request says why, the others say nothing.
TEST(WithoutATool, EveryOperationAnswersNothingInSilence) {
    const LogCapture log;
    EXPECT_TRUE(readTags("photo.jpg", "-Make").empty());
    EXPECT_EQ(log.lines(),
              std::vector<LogLine>{plainLine(3, "exiftool initialization: exiftoolDir is empty")});
    EXPECT_EQ(getLensPrettyName("photo.jpg"), "");
    EXPECT_EQ(internal::getMakernotesSize("photo.jpg"), 0);
    EXPECT_FALSE(copyMetadata("photo.nef", "export.jpg", ExportMetadataParameters{}));
    EXPECT_EQ(log.lines().size(), 1U);
}

}  // namespace
}  // namespace exiftool
