#include <gtest/gtest.h>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/model/metadata_cache.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::Arguments;
using test_support::failureLine;
using test_support::kReadExifMetadataSignature;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::ToolDirectory;

TEST(MalformedFileNames, AreThoseOfDifferentFiles) {
    const LogCapture log;
    ToolDirectory tool;
    tool.answerMetadata("Exif.Image.Make Ascii 5 Maker\n");
    ASSERT_TRUE(initialize(tool.path()));
    const std::filesystem::path first = tool.makeFile("\xFF.jpg");
    const std::filesystem::path second = tool.makeFile("\xFE.jpg");

    const auto firstRecord = readExifMetadataFromCliCached(first);
    EXPECT_NE(readExifMetadataFromCliCached(second), firstRecord);

    const std::vector<Arguments> calls = tool.calls();
    ASSERT_EQ(calls.size(), 5U);
    EXPECT_EQ(calls[1], (Arguments{"-PXEkycv", "-q", first.native()}));
    EXPECT_EQ(calls[3], (Arguments{"-PXEkycv", "-q", second.native()}));
}

TEST(TooLongFileName, IsRememberedAsAFailure) {
    const LogCapture log;
    const ToolDirectory tool;
    ASSERT_TRUE(initialize(tool.path()));
    const std::filesystem::path file = tool.path() / std::string(200000, 'x');
    EXPECT_EQ(readExifMetadataFromCliCached(file), nullptr);
    EXPECT_EQ(readExifMetadataFromCliCached(file), nullptr);
    EXPECT_EQ(tool.calls().size(), 1U);  // the start-up check
    EXPECT_EQ(log.linesOfType(3),
              std::vector<LogLine>{failureLine(
                  kReadExifMetadataSignature, "Exiv2 failed run -PXEkycv cli command for ", file)});
}

}  // namespace
}  // namespace exiv2_wp::internal
