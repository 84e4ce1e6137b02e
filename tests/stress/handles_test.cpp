#include <gtest/gtest.h>

#include <string>

#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/runner/tool_location.h"
#include "stress/quick_tools.h"
#include "support/this_process.h"

/// No handle, descriptor or child stays behind, however often the tools run.
namespace exiv2_wp::internal {
namespace {

using exiftool::internal::ExiftoolProcess;
using test_support::countOpenHandles;
using test_support::hasChildren;
using test_support::QuickTools;

// A single handle that stays behind shows; how many there are only makes a rare one likelier.
constexpr int kTimes = HANDLES_RUNS;

class Handles : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(initialize(tools.path())); }

    bool run(const char* file) {
        std::string output;
        return runExiv2Cli({asciiArgument("pr"), asciiArgument(file)}, output);
    }

    QuickTools tools;
};

TEST_F(Handles, AreAllClosedAfterManyRuns) {
    const std::size_t before = countOpenHandles();
    for (int i = 0; i < kTimes; ++i) {
        ASSERT_TRUE(run("photo.nef"));
    }
    EXPECT_EQ(countOpenHandles(), before);
    EXPECT_FALSE(hasChildren());
}

TEST_F(Handles, AreAllClosedAfterManyFailedRuns) {
    const std::size_t before = countOpenHandles();
    for (int i = 0; i < kTimes; ++i) {
        ASSERT_FALSE(run("failing.nef"));
    }
    EXPECT_EQ(countOpenHandles(), before);
    EXPECT_FALSE(hasChildren());
}

TEST_F(Handles, AreAllClosedAfterManyRunsOfNoTool) {
    exiv2ExecutablePath = tools.path() / "missing.exe";
    const std::size_t before = countOpenHandles();
    for (int i = 0; i < kTimes; ++i) {
        ASSERT_FALSE(run("photo.nef"));
    }
    EXPECT_EQ(countOpenHandles(), before);
    EXPECT_FALSE(hasChildren());
}

// On Windows the job's handle stays open by intent, until this process ends: closing it would end a
// tool that is still at quitting.
TEST_F(Handles, AreAllClosedButForTheJobsWhenTheLongLivedToolHasEnded) {
    const auto live = [this] {
        ExiftoolProcess process(tools.path());
        EXPECT_NE(process.execute({"a line"}), "");
        process.stop();
    };
    live();
    const std::size_t before = countOpenHandles();
    constexpr std::size_t kLives = 20;
    for (std::size_t i = 0; i < kLives; ++i) {
        live();
    }
    EXPECT_EQ(countOpenHandles(), before + kLives * HANDLES_KEPT_A_LIFE);
    EXPECT_FALSE(hasChildren());
}

}  // namespace
}  // namespace exiv2_wp::internal
