#include <windows.h>

#include <gtest/gtest.h>
#include <shellapi.h>

#include <clocale>
#include <fstream>

#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/platform/quoting.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/runner/tool_location.h"
#include "platform/awkward_arguments.h"
#include "support/log_capture.h"
#include "support/this_process.h"
#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::awkwardArguments;
using test_support::countOpenHandles;
using test_support::LogCapture;
using test_support::native;
using test_support::randomArguments;
using test_support::ToolDirectory;

// ---- quoting, against the system's own splitting

std::vector<std::wstring> splitBySystem(const std::wstring& commandLine) {
    int count = 0;
    wchar_t** const split = CommandLineToArgvW(commandLine.c_str(), &count);
    std::vector<std::wstring> arguments(split, split + count);
    LocalFree(split);
    return arguments;
}

std::vector<std::wstring> withTool(std::vector<std::wstring> arguments, const std::wstring& tool) {
    arguments.insert(arguments.begin(), tool);
    return arguments;
}

TEST(CommandLineToArgv, BringsAwkwardArgumentsBack) {
    const std::wstring tool = L"C:\\my tools\\exiv2.exe";
    EXPECT_EQ(splitBySystem(buildCommandLine(tool, awkwardArguments())),
              withTool(awkwardArguments(), tool));
}

TEST(CommandLineToArgv, BringsRandomArgumentsBack) {
    constexpr unsigned kRounds = 500;
    for (unsigned seed = 0; seed < kRounds; ++seed) {
        const std::vector<std::wstring> arguments = randomArguments(seed);
        ASSERT_EQ(splitBySystem(buildCommandLine(L"exiv2.exe", arguments)),
                  withTool(arguments, L"exiv2.exe"));
    }
}

// ---- the tool as it is started

class StartedTool : public ::testing::Test {
protected:
    void TearDown() override { exiv2ExecutablePath.clear(); }

    LogCapture log;
    ToolDirectory tool;
    std::string output;
};

// Its path is narrowed and read as UTF-8 again, which only a UTF-8 code page survives.
TEST_F(StartedTool, IsFoundInAFolderBeyondAsciiOnlyWhereNarrowTextIsUtf8) {
    const ToolDirectory oddTool("exiv2.exe", "B\xC3\xA4r-");
    exiv2ExecutablePath = oddTool.toolPath();
    const bool isUtf8 = narrowPath(L"\u00E4") == "\xC3\xA4";
    EXPECT_EQ(runExiv2Cli({native("--version")}, output), isUtf8);
    EXPECT_EQ(oddTool.calls().size(), isUtf8 ? 1U : 0U);
}

// A tool in a folder of a similar name is another one.
TEST_F(StartedTool, IsNotTakenFromAFolderWhoseNameLooksAlike) {
    const std::filesystem::path plain = tool.path() / "a";
    std::filesystem::create_directory(plain);
    std::filesystem::copy_file(tool.toolPath(), plain / "exiv2.exe");
    std::filesystem::copy(tool.path() / "exiv2.exe.d", plain / "exiv2.exe.d",
                          std::filesystem::copy_options::recursive);
    const std::filesystem::path accented = tool.path() / L"\u0101";
    std::filesystem::create_directory(accented);
    static_cast<void>(std::ofstream(accented / "exiv2.exe"));  // no program

    exiv2ExecutablePath = plain / "exiv2.exe";
    EXPECT_TRUE(runExiv2Cli({native("--version")}, output));
    exiv2ExecutablePath = accented / "exiv2.exe";
    EXPECT_FALSE(runExiv2Cli({native("--version")}, output));
}

TEST_F(StartedTool, LeavesNoHandleBehind) {
    exiv2ExecutablePath = tool.toolPath();
    ASSERT_TRUE(runExiv2Cli({native("--version")}, output));
    const std::size_t before = countOpenHandles();
    for (int i = 0; i < 50; ++i) {
        ASSERT_TRUE(runExiv2Cli({native("--version")}, output));
    }
    EXPECT_EQ(countOpenHandles(), before);
}

TEST_F(StartedTool, LeavesNoHandleBehindWhenItDoesNotStart) {
    exiv2ExecutablePath = tool.path() / "missing.exe";
    ASSERT_FALSE(runExiv2Cli({native("--version")}, output));
    const std::size_t before = countOpenHandles();
    for (int i = 0; i < 200; ++i) {
        ASSERT_FALSE(runExiv2Cli({native("--version")}, output));
    }
    EXPECT_EQ(countOpenHandles(), before);
}

}  // namespace
}  // namespace exiv2_wp::internal
