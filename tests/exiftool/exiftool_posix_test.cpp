#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <set>
#include <thread>

#include "exiftool/host_program.h"
#include "exiftool/processes.h"
#include "exiv2_wrapper/exiftool/process_channel.h"
#include "exiv2_wrapper/exiftool/request_protocol.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "support/log_capture.h"
#include "support/this_process.h"
#include "support/tool_directory.h"
#include "support/wait_until.h"

namespace exiftool::internal {
namespace {

using test_support::hasChildren;
using test_support::native;
using test_support::ToolDirectory;

std::size_t countEntries(const std::filesystem::path& folder) {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder)) {
        ++count;
    }
    return count;
}

std::set<std::string> descriptorsOf(unsigned long processId) {
    std::set<std::string> descriptors;
    for (const auto& entry :
         std::filesystem::directory_iterator("/proc/" + std::to_string(processId) + "/fd")) {
        descriptors.insert(entry.path().filename().string());
    }
    return descriptors;
}

const std::set<std::string> kStandardDescriptors = {"0", "1", "2"};

// A program that has just been started opens its libraries for a moment.
std::set<std::string> settledDescriptorsOf(unsigned long processId) {
    std::set<std::string> descriptors;
    static_cast<void>(test_support::waitUntil([&] {
        descriptors = descriptorsOf(processId);
        return descriptors == kStandardDescriptors;
    }));
    return descriptors;
}

// The members of a process group, without those that have ended.
std::set<unsigned long> livingGroupOf(unsigned long processId) {
    const pid_t group = ::getpgid(static_cast<pid_t>(processId));
    std::set<unsigned long> members;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos) {
            const unsigned long id = std::stoul(name);
            if (::getpgid(static_cast<pid_t>(id)) == group && test_support::isProcessAlive(id)) {
                members.insert(id);
            }
        }
    }
    return members;
}

class ExiftoolOnPosix : public ::testing::Test {
protected:
    // Starts the tool and sees it answer.
    void start() {
        ASSERT_TRUE(channel->start(tool.path()));
        channel->write(frameRequest({"hello"}));
        ASSERT_EQ(readAnswer(*channel), "{ready}\n");
        toolId = tool.processIds().at(0);
    }

    void stop() {
        channel->write(kQuitRequest);
        channel->close();
    }

    ToolDirectory tool{"exiftool.exe"};
    std::unique_ptr<ProcessChannel> channel = std::make_unique<ProcessChannel>();
    unsigned long toolId = 0;
};

TEST_F(ExiftoolOnPosix, GivesToolAndGuardNoDescriptorButTheStandardOnes) {
    const int leaky = ::open("/dev/null", O_RDONLY);  // what a careless host leaves inheritable
    start();
    ::close(leaky);

    const auto group = livingGroupOf(toolId);
    EXPECT_EQ(group.size(), 2U);
    for (const unsigned long member : group) {
        EXPECT_EQ(settledDescriptorsOf(member), kStandardDescriptors) << member;
    }
}

// What a program sees that the host starts by its own means.
std::string descriptorsOfAnotherProgram() {
    FILE* const listing = ::popen("ls /proc/self/fd", "r");
    std::string output;
    for (int byte = std::fgetc(listing); byte != EOF; byte = std::fgetc(listing)) {
        output += static_cast<char>(byte);
    }
    ::pclose(listing);
    return output;
}

TEST_F(ExiftoolOnPosix, KeepsItsChannelFromOtherProgramsOfTheHost) {
    const std::string before = descriptorsOfAnotherProgram();
    EXPECT_NE(before, "");
    start();
    EXPECT_EQ(descriptorsOfAnotherProgram(), before);
}

TEST_F(ExiftoolOnPosix, LeavesNoProcessAndNoDescriptorBehind) {
    const std::size_t before = countEntries("/proc/self/fd");
    for (int i = 0; i < 50; ++i) {
        ProcessChannel once;
        ASSERT_TRUE(once.start(tool.path()));
        once.write(kQuitRequest);
        once.close();
    }
    EXPECT_EQ(countEntries("/proc/self/fd"), before);
    EXPECT_FALSE(hasChildren());
}

TEST_F(ExiftoolOnPosix, LeavesNothingBehindWhenThereIsNoTool) {
    test_support::LogCapture log;
    const std::size_t before = countEntries("/proc/self/fd");
    {
        ProcessChannel none;
        ASSERT_FALSE(none.start(tool.path() / "nowhere"));
        EXPECT_FALSE(hasChildren());
    }
    EXPECT_EQ(countEntries("/proc/self/fd"), before);
}

TEST_F(ExiftoolOnPosix, WaitsUntilTheToolHasQuit) {
    start();
    stop();
    EXPECT_FALSE(test_support::isProcessAlive(toolId));
    EXPECT_EQ(tool.countQuits(), 1U);
    EXPECT_FALSE(hasChildren());
}

TEST_F(ExiftoolOnPosix, LeavesAToolAloneThatTakesItsTimeToQuit) {
    tool.live({.ignoreQuit = true});
    start();
    stop();
    EXPECT_TRUE(test_support::isProcessAlive(toolId));
    EXPECT_EQ(livingGroupOf(toolId).size(), 2U);  // it is guarded still

    test_support::killProcess(toolId);
    channel.reset();
    EXPECT_FALSE(hasChildren());
}

TEST_F(ExiftoolOnPosix, EndsAToolThatDoesntQuitWithItsOwner) {
    tool.live({.ignoreQuit = true});
    start();
    stop();
    channel.reset();
    EXPECT_EQ(tool.countQuits(), 1U);
    EXPECT_FALSE(test_support::isProcessAlive(toolId));
    EXPECT_FALSE(hasChildren());
}

TEST_F(ExiftoolOnPosix, EndsAToolThatDoesntQuitEvenWithoutItsGuard) {
    tool.live({.ignoreQuit = true});
    start();
    for (const unsigned long member : livingGroupOf(toolId)) {
        if (member != toolId) {
            test_support::killProcess(member);
        }
    }
    stop();
    channel.reset();
    EXPECT_FALSE(test_support::isProcessAlive(toolId));
    EXPECT_FALSE(hasChildren());
}

TEST_F(ExiftoolOnPosix, RaisesNoSigpipeAndLeavesTheHostsSettings) {
    struct sigaction before {};
    ::sigaction(SIGPIPE, nullptr, &before);
    sigset_t maskBefore;
    ::pthread_sigmask(SIG_SETMASK, nullptr, &maskBefore);
    start();
    test_support::killProcess(toolId);
    while (test_support::isProcessAlive(toolId)) {
        std::this_thread::yield();
    }

    channel->write(frameRequest({"hello"}));  // ends the process if it raises the signal
    EXPECT_EQ(readAnswer(*channel), "");

    struct sigaction after {};
    ::sigaction(SIGPIPE, nullptr, &after);
    sigset_t maskAfter;
    ::pthread_sigmask(SIG_SETMASK, nullptr, &maskAfter);
    sigset_t pending;
    ::sigpending(&pending);
    EXPECT_EQ(after.sa_handler, before.sa_handler);
    EXPECT_EQ(::sigismember(&maskAfter, SIGPIPE), ::sigismember(&maskBefore, SIGPIPE));
    EXPECT_EQ(::sigismember(&pending, SIGPIPE), 0);
}

TEST_F(ExiftoolOnPosix, LeavesASigpipeThatWasPendingToTheHost) {
    sigset_t sigpipe;
    ::sigemptyset(&sigpipe);
    ::sigaddset(&sigpipe, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &sigpipe, nullptr);
    ::pthread_kill(::pthread_self(), SIGPIPE);

    start();
    stop();

    sigset_t pending;
    ::sigpending(&pending);
    EXPECT_EQ(::sigismember(&pending, SIGPIPE), 1);
    int taken = 0;
    ::sigwait(&sigpipe, &taken);
    ::pthread_sigmask(SIG_UNBLOCK, &sigpipe, nullptr);
}

TEST_F(ExiftoolOnPosix, WorksInAHostThatIgnoresTheEndOfItsChildren) {
    const auto before = ::signal(SIGCHLD, SIG_IGN);
    start();
    stop();
    EXPECT_FALSE(test_support::isProcessAlive(toolId));
    EXPECT_EQ(::signal(SIGCHLD, before), SIG_IGN);
}

TEST_F(ExiftoolOnPosix, IsAskedToQuitWhenTheHostEnds) {
    EXPECT_EQ(test_support::runHost({"init", tool.path(), "tags", "a.jpg", "-Make"}).exitCode, 0);
    EXPECT_EQ(tool.countQuits(), 1U);
}

TEST_F(ExiftoolOnPosix, IsntEndedByACopyOfTheHostThatEnds) {
    tool.answerRequest("a.jpg", {.answer = {.output = "Make: Canon\n"}});
    EXPECT_EQ(
        test_support::runHost({"init", tool.path(), "fork-and-exit", "tags", "a.jpg", "-Make"})
            .output,
        "init 1\nlog|0|readTags: ignoring line: |{ready}\ntags Make=Canon\n");
    EXPECT_EQ(tool.countQuits(), 1U);
}

// A guard or a tool that kept the write end of a run's pipe would hold up that run for ever.
TEST_F(ExiftoolOnPosix, DelaysNoRunThatIsUnderWayWhileItStarts) {
    test_support::LogCapture log;
    ToolDirectory exiv2;
    exiv2.answer({"print"}, {.output = "done"});
    ASSERT_TRUE(exiv2_wp::initialize(exiv2.path()));
    std::atomic<bool> isOver = false;
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 16; ++i) {
        threads.emplace_back([&] {
            while (!isOver) {
                std::string output;
                const bool isRight =
                    exiv2_wp::internal::runExiv2Cli({native("print")}, output) && output == "done";
                failures += isRight ? 0 : 1;
            }
        });
    }
    std::vector<std::unique_ptr<ProcessChannel>> channels;
    for (int i = 0; i < 40; ++i) {  // all stay until the runs have ended
        channels.push_back(std::make_unique<ProcessChannel>());
        EXPECT_TRUE(channels.back()->start(tool.path()));
    }
    isOver = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const auto& started : channels) {
        started->write(kQuitRequest);
        started->close();
    }
    EXPECT_EQ(failures, 0);
    EXPECT_FALSE(hasChildren());
}

}  // namespace
}  // namespace exiftool::internal
