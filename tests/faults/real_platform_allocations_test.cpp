#include <gtest/gtest.h>

#include <string>

#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "faults/failing_allocations.h"
#include "support/log_capture.h"
#include "support/this_process.h"
#include "support/tool_directory.h"

/// Memory runs out at every allocation while real programs are started.
namespace exiv2_wp::internal {
namespace {

using exiftool::internal::ExiftoolProcess;
using test_support::countOpenHandles;
using test_support::failEachAllocation;
using test_support::hasChildren;
using test_support::kHandlesKeptForThreads;
using test_support::LogCapture;
using test_support::native;
using test_support::runsOutOfMemory;
using test_support::ToolDirectory;

TEST(ExhaustedMemoryInARun, LeavesNoHandleAndNoChild) {
    const LogCapture log;
    ToolDirectory tool;
    tool.answer({"pr"}, {.output = std::string(20'000, 'x')});
    ASSERT_TRUE(initialize(tool.path()));
    const std::vector<NativeString> arguments = {native("pr"), native("a photo with a long name")};
    std::string output;
    ASSERT_TRUE(runExiv2Cli(arguments, output));
    const std::size_t before = countOpenHandles();

    bool hasRaised = false;
    const int failures = failEachAllocation(
        [&] { output = {}; },
        [&] { hasRaised = runsOutOfMemory([&] { (void)runExiv2Cli(arguments, output); }); },
        [&] {
            EXPECT_TRUE(hasRaised);
            EXPECT_FALSE(hasChildren());
        });
    EXPECT_GT(failures, 0);
    EXPECT_LE(countOpenHandles(), before + kHandlesKeptForThreads);
    EXPECT_EQ(output, std::string(20'000, 'x'));
}

// What was started by then is ended by whoever has started it.
TEST(ExhaustedMemoryInTheLongLivedToolsStart, LeavesNoHandleAndNoChild) {
    const LogCapture log;
    ToolDirectory tool("exiftool.exe");
    ExiftoolProcess(tool.path()).stop();
    const std::size_t before = countOpenHandles();

    bool hasRaised = false;
    const int failures = failEachAllocation([] {},
                                            [&] {
                                                hasRaised = runsOutOfMemory([&] {
                                                    ExiftoolProcess process(tool.path());
                                                    const test_support::SafeAllocations safe;
                                                    process.stop();
                                                });
                                            },
                                            [&] {
                                                EXPECT_TRUE(hasRaised);
                                                EXPECT_FALSE(hasChildren());
                                            });
    EXPECT_GT(failures, 0);
    EXPECT_LE(countOpenHandles(), before + kHandlesKeptForThreads);
}

}  // namespace
}  // namespace exiv2_wp::internal
