#include <gtest/gtest.h>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/runner/tool_location.h"
#include "runner/scripted_platform.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

/// What the runner asks of the platform, in which order, and what it does when that fails.
namespace exiv2_wp::internal {
namespace {

using test_support::failureLine;
using test_support::kInitializeSignature;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::native;
using test_support::platform;
using test_support::ScriptedPlatform;
using test_support::TemporaryDirectory;

using Calls = std::vector<std::string>;

class RunOnAPlatform : public ::testing::Test {
protected:
    void SetUp() override {
        platform() = {};
        exiv2ExecutablePath = "exiv2.exe";
    }
    void TearDown() override { exiv2ExecutablePath.clear(); }

    bool run() { return runExiv2Cli({native("pr"), native("photo.jpg")}, output); }

    LogCapture log;
    std::string output = "before";
};

TEST_F(RunOnAPlatform, TakesItsStepsInOrder) {
    platform().reads = {"some ", "text"};
    EXPECT_TRUE(run());
    EXPECT_EQ(output, "some text");
    const Calls expected = {"make pipe",
                            "keep read end from children",
                            "start exiv2.exe pr photo.jpg into write end",
                            "close write end",
                            "read at most 8192 from read end",
                            "read at most 8192 from read end",
                            "read at most 8192 from read end",
                            "close read end",
                            "wait for process",
                            "close process and thread"};
    EXPECT_EQ(platform().calls, expected);
}

TEST_F(RunOnAPlatform, FailsWithoutAPipe) {
    platform().makePipeError = 1;
    EXPECT_FALSE(run());
    EXPECT_EQ(output, "");
    EXPECT_EQ(platform().calls, Calls{"make pipe"});
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST_F(RunOnAPlatform, ClosesBothEndsOfAPipeThatChildrenWouldInherit) {
    platform().keepFromChildrenError = 1;
    EXPECT_FALSE(run());
    EXPECT_EQ(output, "");
    const Calls expected = {"make pipe", "keep read end from children", "close write end",
                            "close read end"};
    EXPECT_EQ(platform().calls, expected);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST_F(RunOnAPlatform, ClosesBothEndsOfThePipeOfAToolThatDoesNotStart) {
    platform().startRunError = 2;
    EXPECT_FALSE(run());
    EXPECT_EQ(output, "");
    const Calls expected = {"make pipe", "keep read end from children",
                            "start exiv2.exe pr photo.jpg into write end", "close write end",
                            "close read end"};
    EXPECT_EQ(platform().calls, expected);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST_F(RunOnAPlatform, FailsForAnExitCodeBeyondAByte) {
    platform().exitCode = 0xC0000005;
    EXPECT_FALSE(run());
}

TEST_F(RunOnAPlatform, AsksNothingWhenNoToolIsKnown) {
    exiv2ExecutablePath.clear();
    EXPECT_FALSE(run());
    EXPECT_EQ(platform().calls, Calls{});
}

class InitializeOnAPlatform : public ::testing::Test {
protected:
    void SetUp() override {
        platform() = {};
        exiv2ExecutablePath.clear();
    }
    void TearDown() override { exiv2ExecutablePath.clear(); }

    LogCapture log;
};

TEST_F(InitializeOnAPlatform, FailsWithoutADirectoryWhenTheLibrarysIsUnknown) {
    EXPECT_FALSE(initialize({}));
    const LogLine startUp = {static_cast<vesk::LogMessageType>(6),
                             vesk::LogLiteral{"exiv2 init with path "}, std::wstring()};
    const LogLine failure =
        failureLine(kInitializeSignature,
                    "Exiv2 initialization failed: empty path and could not determine library "
                    "directory");
    EXPECT_EQ(log.lines(), (std::vector<LogLine>{startUp, failure}));
}

TEST_F(InitializeOnAPlatform, KeepsTheEarlierToolWhenTheLibrarysDirectoryIsUnknown) {
    exiv2ExecutablePath = "earlier/exiv2.exe";
    EXPECT_FALSE(initialize({}));
    EXPECT_EQ(exiv2ExecutablePath, "earlier/exiv2.exe");
}

TEST_F(InitializeOnAPlatform, LooksBesideTheLibrarysFile) {
    const TemporaryDirectory folder;
    folder.makeFile("exiv2.exe");
    platform().libraryFile = folder.path() / "exiv2_wrapper.dll";
    EXPECT_TRUE(initialize({}));
    EXPECT_EQ(exiv2ExecutablePath, folder.path() / "exiv2.exe");
}

}  // namespace
}  // namespace exiv2_wp::internal
