#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <thread>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/runner/tool_location.h"
#include "support/case_name.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

/// Hosts that have closed standard descriptors. Each is a child process of the test, which does as
/// a host does and tells by its exit code how that went.
namespace exiv2_wp::internal {
namespace {

using test_support::LogCapture;
using test_support::ToolDirectory;

constexpr int kRightOutput = 0;
constexpr int kFailedRun = 1;
constexpr int kWrongOutput = 2;

struct Closed {
    const char* name;
    std::vector<int> descriptors;
};

int judge(const std::vector<NativeString>& arguments, std::string_view expected) {
    std::string output;
    if (!runExiv2Cli(arguments, output)) {
        return kFailedRun;
    }
    return output == expected ? kRightOutput : kWrongOutput;
}

class HostWithClosedDescriptors : public ::testing::TestWithParam<Closed> {
protected:
    // Runs `host` in a child that has closed the descriptors; `meanwhile` in the test itself.
    // Returns the child's exit code.
    int run(
        const std::function<int()>& host, const std::function<void()>& meanwhile = [] {}) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (const int descriptor : GetParam().descriptors) {
                ::close(descriptor);
            }
            ::_exit(host());
        }
        meanwhile();
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    LogCapture log;
    ToolDirectory tool;
};

TEST_P(HostWithClosedDescriptors, GetsTheToolsOutput) {
    ASSERT_TRUE(initialize(tool.path()));
    tool.answer({"show"}, {.output = "text"});
    EXPECT_EQ(run([] { return judge({"show"}, "text"); }), kRightOutput);
}

TEST_P(HostWithClosedDescriptors, HasNoEndOfAPipeInTheirPlace) {
    const auto host = [] {
        Pipe pipe;
        if (makePipe(pipe) != 0) {
            return kFailedRun;
        }
        const auto lowest = std::min(pipe.readEnd.value(), pipe.writeEnd.value());
        return lowest > STDERR_FILENO ? kRightOutput : kWrongOutput;
    };
    EXPECT_EQ(run(host), kRightOutput);
}

// The fourth descriptor is the one by which ls reads the folder.
TEST_P(HostWithClosedDescriptors, StartsAToolWithAllThreeOpen) {
    exiv2ExecutablePath = "/bin/ls";
    EXPECT_EQ(run([] { return judge({"/proc/self/fd"}, "0\n1\n2\n3\n"); }), kRightOutput);
}

TEST_P(HostWithClosedDescriptors, StartsAToolThatReadsAnEmptyInput) {
    if (GetParam().descriptors.front() != STDIN_FILENO) {
        return;  // the input is the test's own then
    }
    exiv2ExecutablePath = "/bin/cat";
    EXPECT_EQ(run([] { return judge({}, ""); }), kRightOutput);
}

// A file that the host has opened for itself is no standard stream, though it has the number of
// one.
TEST_P(HostWithClosedDescriptors, KeepsItsOwnFilesFromTheTool) {
    exiv2ExecutablePath = "/bin/sh";
    const std::string file = tool.makeFile("own file", "");
    const auto host = [&file] {
        while (::open(file.c_str(), O_RDWR | O_CLOEXEC) < STDERR_FILENO) {
        }
        return judge({"-c", "readlink /proc/self/fd/0 /proc/self/fd/2 | grep -c 'own file'; true"},
                     "0\n");
    };
    EXPECT_EQ(run(host), kRightOutput);
}

// Another thread's file gets a closed descriptor's number, and may lose it again between the
// library's look at it and the tool's start.
TEST_P(HostWithClosedDescriptors, StartsToolsWhileOtherThreadsOpenFiles) {
    exiv2ExecutablePath = "/bin/echo";
    const auto host = [] {
        std::atomic<bool> isOver = false;
        std::thread other([&isOver] {
            while (!isOver) {
                ::close(::open("/dev/null", O_RDWR));  // without close-on-exec on purpose
            }
        });
        int result = kRightOutput;
        for (int i = 0; i < 300 && result == kRightOutput; ++i) {
            result = judge({"text"}, "text\n");
        }
        isOver = true;
        other.join();
        return result;
    };
    EXPECT_EQ(run(host), kRightOutput);
}

// While the tool runs, the host prints on the descriptors that it has closed.
TEST_P(HostWithClosedDescriptors, DoesNotPrintIntoTheToolsOutput) {
    Pipe toHost;
    Pipe fromHost;
    ASSERT_EQ(makePipe(toHost), 0U);
    ASSERT_EQ(makePipe(fromHost), 0U);
    ASSERT_TRUE(initialize(tool.path()));
    tool.answer({"show"}, {.output = "text", .gate = "printed"});

    const auto printWhenTold = [&] {
        char told = 0;
        (void)!::read(static_cast<int>(toHost.readEnd.value()), &told, 1);
        for (const int descriptor : GetParam().descriptors) {
            (void)!::write(descriptor, "printed by the host", 19);
        }
        (void)!::write(static_cast<int>(fromHost.writeEnd.value()), &told, 1);
    };
    const auto host = [&] {
        std::thread printer(printWhenTold);
        const int result = judge({"show"}, "text");
        printer.join();
        return result;
    };
    const auto letItPrint = [&] {
        char told = 'x';
        EXPECT_TRUE(tool.waitForCalls(2));
        (void)!::write(static_cast<int>(toHost.writeEnd.value()), &told, 1);
        fromHost.writeEnd.close();
        EXPECT_EQ(::read(static_cast<int>(fromHost.readEnd.value()), &told, 1), 1);
        tool.openGate("printed");
    };
    EXPECT_EQ(run(host, letItPrint), kRightOutput);
}

INSTANTIATE_TEST_SUITE_P(ClosedStreams, HostWithClosedDescriptors,
                         ::testing::Values(Closed{"Input", {0}}, Closed{"Output", {1}},
                                           Closed{"Error", {2}}, Closed{"InputAndOutput", {0, 1}},
                                           Closed{"InputAndError", {0, 2}},
                                           Closed{"OutputAndError", {1, 2}},
                                           Closed{"All", {0, 1, 2}}),
                         test_support::caseName<Closed>);

}  // namespace
}  // namespace exiv2_wp::internal
