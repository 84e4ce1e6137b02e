#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "exiv2_wrapper/exiftool/process_channel.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace exiftool::internal {
namespace {

using test_support::ToolDirectory;

// The path by which the tool in this folder is started.
std::filesystem::path startPathIn(std::string_view folderPrefix) {
    ToolDirectory tool("exiftool.exe", folderPrefix);
    ProcessChannel channel;
    if (!channel.start(tool.path()) || !tool.waitForEvents("name", 1)) {
        return {};
    }
    const std::filesystem::path path = tool.startPaths().front();
    EXPECT_TRUE(std::filesystem::equivalent(path, tool.toolPath())) << path;
    return path;
}

bool isAscii(const std::filesystem::path& path) {
    return std::ranges::all_of(path.native(), [](wchar_t unit) { return unit < 0x80; });
}

TEST(ExiftoolOnWindows, IsStartedByTheShortPathOfAFolderThatIsNotAscii) {
    const std::filesystem::path path = startPathIn("Bilder-\xC3\xA4\xC3\xB6-\xE5\x86\x99-");
    EXPECT_FALSE(path.empty());
    EXPECT_TRUE(isAscii(path)) << path;
}

TEST(ExiftoolOnWindows, IsStartedByTheLongPathOfAFolderThatIsAscii) {
    const std::filesystem::path path = startPathIn("a-folder-with-a-long-name-");
    EXPECT_TRUE(path.parent_path().filename().native().starts_with(L"a-folder-with-a-long-name-"))
        << path;
}

// Not quoted, so Windows tries the path's first word as a program before the whole of it.
TEST(ExiftoolOnWindows, IsStartedByAnUnquotedPathThoughItsFolderHasBlanks) {
    const test_support::LogCapture log;  // the other program may have ended before it is in the job
    const ToolDirectory other("a.exe");
    const std::filesystem::path folder = other.path() / "a folder";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(other.toolPath(), folder / "exiftool.exe");

    ProcessChannel channel;
    static_cast<void>(channel.start(folder));

    EXPECT_TRUE(other.waitForCalls(1));
    const std::vector<test_support::Arguments> expected = {
        {L"folder\\exiftool.exe", L"-stay_open", L"true", L"-@", L"-"}};
    EXPECT_EQ(other.calls(), expected);
}

}  // namespace
}  // namespace exiftool::internal
