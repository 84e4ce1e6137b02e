#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

// A program of its own: what is remembered belongs to the whole process.
namespace exiv2_wp {
namespace {

constexpr int kFailures = 1001;

bool askFor(int photo, const std::filesystem::path& directory) {
    TopBottomOffset offset;
    return readExiv2Thumbnail(
        directory / (std::to_string(photo) + ".jpg"), "", 640, 480, offset, [](int, int, int) {},
        nullptr, [](const unsigned char*, std::uint64_t, const TopBottomOffset&) { return true; },
        nullptr);
}

// Before a tool is found every request fails, without any run. With a tool that answers, only a
// request that has been forgotten gets its preview; that isn't remembered, so asking changes
// nothing.
TEST(PreviewLimit, AThousandFailuresAndOneMoreLeave801) {
    const test_support::LogCapture log;
    test_support::ToolDirectory tool;
    tool.answer({"-ep"}, {.output = "160 120 0 0 0 0\nJPEG"});
    for (int photo = 0; photo < kFailures; ++photo) {
        ASSERT_FALSE(askFor(photo, tool.path()));
    }
    ASSERT_TRUE(initialize(tool.path()));

    int forgotten = 0;
    for (int photo = 0; photo < kFailures; ++photo) {
        forgotten += askFor(photo, tool.path()) ? 1 : 0;
    }

    EXPECT_EQ(forgotten, kFailures - 801);
    EXPECT_EQ(tool.countCalls("-ep"), 200U);
    EXPECT_FALSE(askFor(kFailures - 1, tool.path()));
}

}  // namespace
}  // namespace exiv2_wp
