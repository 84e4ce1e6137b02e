#include "exiv2_wrapper/runner/tool_location.h"

#include <gtest/gtest.h>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/text/path_text.h"
#include "support/current_directory.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::Arguments;
using test_support::CurrentDirectory;
using test_support::failureLine;
using test_support::kInitializeSignature;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::native;
using test_support::TemporaryDirectory;
using test_support::ToolDirectory;

constexpr auto kNotADirectory = "Exiv2 initialization failed: path is not a directory: ";
constexpr auto kNotFound = "Exiv2 initialization failed: executable not found: ";
constexpr auto kCannotExecute = "Exiv2 initialization failed: cannot execute ";

LogLine startUpLine(const std::filesystem::path& directory) {
    return {static_cast<vesk::LogMessageType>(6), vesk::LogLiteral{"exiv2 init with path "},
            widePath(directory)};
}

std::vector<LogLine> failedStart(const std::filesystem::path& directory, const char* message,
                                 const std::filesystem::path& path) {
    return {startUpLine(directory), failureLine(kInitializeSignature, message, path)};
}

// Whether a tool was found earlier decides what a failure leaves; each test begins without one.
class Initialize : public ::testing::Test {
protected:
    void SetUp() override { exiv2ExecutablePath.clear(); }

    void useAnEarlierTool() {
        ASSERT_TRUE(initialize(earlierTool.path()));
        log.clear();
    }

    LogCapture log;
    ToolDirectory earlierTool;
    TemporaryDirectory folder;
};

TEST_F(Initialize, KeepsThePathOfAToolThatAnswersVersion) {
    const ToolDirectory tool;
    EXPECT_TRUE(initialize(tool.path()));
    EXPECT_EQ(exiv2ExecutablePath, tool.path() / "exiv2.exe");
    EXPECT_EQ(tool.calls(), std::vector<Arguments>{{native("--version")}});
    EXPECT_EQ(log.lines(), std::vector<LogLine>{startUpLine(tool.path())});
}

TEST_F(Initialize, IgnoresWhatTheToolPrints) {
    ToolDirectory tool;
    tool.answer({"--version"}, {.output = "no version at all\n"});
    EXPECT_TRUE(initialize(tool.path()));
}

TEST_F(Initialize, LooksBesideTheLibraryWhenThePathIsEmpty) {
    EXPECT_EQ(libraryDirectory(), libraryFile().parent_path());
    EXPECT_FALSE(initialize({}));
    EXPECT_EQ(log.lines(),
              failedStart(libraryDirectory(), kNotFound, libraryDirectory() / "exiv2.exe"));
}

TEST_F(Initialize, RefusesAFile) {
    const std::filesystem::path file = folder.makeFile("exiv2.exe");
    EXPECT_FALSE(initialize(file));
    EXPECT_EQ(log.lines(), failedStart(file, kNotADirectory, file));
    EXPECT_TRUE(exiv2ExecutablePath.empty());
}

TEST_F(Initialize, RefusesADirectoryThatDoesNotExist) {
    const std::filesystem::path missing = folder.path() / "missing";
    EXPECT_FALSE(initialize(missing));
    EXPECT_EQ(log.lines(), failedStart(missing, kNotADirectory, missing));
}

TEST_F(Initialize, KeepsTheEarlierToolWhenThePathIsNoDirectory) {
    useAnEarlierTool();
    EXPECT_FALSE(initialize(folder.makeFile("file")));
    EXPECT_EQ(exiv2ExecutablePath, earlierTool.toolPath());
}

TEST_F(Initialize, RefusesADirectoryWithoutTheTool) {
    useAnEarlierTool();
    EXPECT_FALSE(initialize(folder.path()));
    EXPECT_EQ(log.lines(), failedStart(folder.path(), kNotFound, folder.path() / "exiv2.exe"));
    EXPECT_TRUE(exiv2ExecutablePath.empty());
}

TEST_F(Initialize, RefusesADirectoryOfTheToolsName) {
    useAnEarlierTool();
    std::filesystem::create_directory(folder.path() / "exiv2.exe");
    EXPECT_FALSE(initialize(folder.path()));
    EXPECT_EQ(log.lines(), failedStart(folder.path(), kNotFound, folder.path() / "exiv2.exe"));
    EXPECT_TRUE(exiv2ExecutablePath.empty());
}

TEST_F(Initialize, RefusesAToolThatFailsVersion) {
    useAnEarlierTool();
    ToolDirectory tool;
    tool.answer({"--version"}, {.output = "exiv2 0.27\n", .exitCode = 1});
    EXPECT_FALSE(initialize(tool.path()));
    EXPECT_EQ(log.lines(), failedStart(tool.path(), kCannotExecute, tool.toolPath()));
    EXPECT_TRUE(exiv2ExecutablePath.empty());
}

TEST_F(Initialize, RefusesAFileThatIsNoProgram) {
    useAnEarlierTool();
    const std::filesystem::path file = folder.makeFile("exiv2.exe", "not a program");
    EXPECT_FALSE(initialize(folder.path()));
    EXPECT_EQ(log.lines(), failedStart(folder.path(), kCannotExecute, file));
    EXPECT_TRUE(exiv2ExecutablePath.empty());
}

TEST_F(Initialize, UsesTheSecondOfTwoDirectories) {
    useAnEarlierTool();
    ToolDirectory second;
    second.answer({"show"}, {.output = "second"});
    ASSERT_TRUE(initialize(second.path()));

    std::string output;
    EXPECT_TRUE(runExiv2Cli({native("show")}, output));
    EXPECT_EQ(output, "second");
    EXPECT_EQ(earlierTool.countCalls("show"), 0U);
}

TEST_F(Initialize, FindsTheToolAgainAfterAFailure) {
    EXPECT_FALSE(initialize(folder.path()));
    EXPECT_TRUE(initialize(earlierTool.path()));
    EXPECT_EQ(exiv2ExecutablePath, earlierTool.toolPath());
}

TEST_F(Initialize, TakesARelativeDirectory) {
    const CurrentDirectory current(earlierTool.path().parent_path());
    const std::filesystem::path relative = earlierTool.path().filename();
    EXPECT_TRUE(initialize(relative));
    EXPECT_EQ(exiv2ExecutablePath, relative / "exiv2.exe");
    EXPECT_EQ(log.lines(), std::vector<LogLine>{startUpLine(relative)});
}

TEST_F(Initialize, TakesTheCurrentDirectory) {
    const CurrentDirectory current(earlierTool.path());
    EXPECT_TRUE(initialize("."));
    EXPECT_EQ(earlierTool.countCalls("--version"), 1U);
}

TEST_F(Initialize, TakesADirectoryThatEndsInASeparator) {
    EXPECT_TRUE(initialize(earlierTool.path() / ""));
    EXPECT_EQ(exiv2ExecutablePath, earlierTool.toolPath());
}

TEST_F(Initialize, LogsTheDirectoryInItsWideForm) {
    const std::filesystem::path missing = folder.path() / u8"B\u00E4r \U0001F4F7";
    EXPECT_FALSE(initialize(missing));
    EXPECT_EQ(log.lines(), failedStart(missing, kNotADirectory, missing));
}

}  // namespace
}  // namespace exiv2_wp::internal
