#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "exiv2_wrapper/runner/tool_location.h"
#include "faults/posix_calls.h"
#include "support/case_name.h"
#include "support/log_capture.h"
#include "support/this_process.h"
#include "support/tool_directory.h"

/// Every call that the library makes to a POSIX system fails once, at each of its uses, while it
/// runs real programs.
namespace exiv2_wp::internal {
namespace {

using exiftool::internal::ExiftoolProcess;
using test_support::caseName;
using test_support::countCalls;
using test_support::countOpenHandles;
using test_support::FailingCall;
using test_support::forgetCalls;
using test_support::hasChildren;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::plainLine;
using test_support::stepFailureLine;
using test_support::TinyTransfers;
using test_support::ToolDirectory;

struct Call {
    std::string name;
    int error;
};

void PrintTo(const Call& call, std::ostream* stream) {
    *stream << call.name << " fails with error " << call.error;
}

class CallTest : public ::testing::TestWithParam<Call> {
protected:
    void SetUp() override {
        forgetCalls();
        before = countOpenHandles();
    }

    void expectNothingLeft() const {
        EXPECT_EQ(countOpenHandles(), before);
        EXPECT_FALSE(hasChildren());
    }

    LogCapture log;
    std::size_t before = 0;
};

// ---- one run after the other

class RunCall : public CallTest {
protected:
    void SetUp() override {
        exiv2ExecutablePath = "/bin/echo";
        CallTest::SetUp();
    }
    void TearDown() override { exiv2ExecutablePath.clear(); }

    bool run() { return runExiv2Cli({"text"}, output); }

    void expectAGoodRun() {
        EXPECT_TRUE(run());
        EXPECT_EQ(output, "text\n");
        expectNothingLeft();
    }

    // How often a run uses the call.
    int countUses(const std::string& call) {
        forgetCalls();
        EXPECT_TRUE(run());
        return countCalls(call);
    }

    std::string output;
};

TEST_P(RunCall, FailsTheRunAtEachOfItsUsesAndLeavesNothing) {
    const int uses = countUses(GetParam().name);
    EXPECT_GT(uses, 0);
    for (int number = 1; number <= uses; ++number) {
        SCOPED_TRACE(number);
        {
            const FailingCall failing(GetParam().name, number, GetParam().error);
            EXPECT_FALSE(run());
        }
        expectNothingLeft();
        expectAGoodRun();
    }
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

INSTANTIATE_TEST_SUITE_P(, RunCall,
                         ::testing::Values(Call{"pipe2", EMFILE}, Call{"posix_spawn", EAGAIN},
                                           Call{"posix_spawn_file_actions_init", ENOMEM},
                                           Call{"posix_spawn_file_actions_adddup2", ENOMEM},
                                           Call{"posix_spawn_file_actions_addclosefrom_np", ENOMEM},
                                           Call{"posix_spawnattr_init", ENOMEM},
                                           Call{"posix_spawnattr_setflags", EINVAL},
                                           Call{"posix_spawnattr_setsigmask", EINVAL},
                                           Call{"posix_spawnattr_setsigdefault", EINVAL},
                                           Call{"waitpid", ECHILD}),
                         caseName<Call>);

// Whether the tool still got rid of its text, and so succeeded, depends on who was faster.
TEST_F(RunCall, EndsTheOutputWhereAReadFails) {
    {
        const FailingCall failing("read", 1, EIO);
        (void)run();
        EXPECT_EQ(output, "");
    }
    expectNothingLeft();
    expectAGoodRun();
}

TEST_F(RunCall, SucceedsThoughTheOutputsEndCantBeRead) {
    const FailingCall failing("read", 2, EIO);
    expectAGoodRun();
}

TEST_F(RunCall, IsRepeatedWhenASignalInterruptsIt) {
    for (const char* const call : {"read", "waitpid"}) {
        const int uses = countUses(call);
        for (int number = 1; number <= uses; ++number) {
            const FailingCall failing(call, number, EINTR, 3);
            expectAGoodRun();
            EXPECT_EQ(countCalls(call), uses + 3) << call << " " << number;
        }
    }
}

TEST_F(RunCall, ReadsTheOutputByteByByte) {
    const TinyTransfers tiny;
    expectAGoodRun();
}

// Another thread may close a file in the wrong moment, but not always.
TEST_F(RunCall, StartsAgainWhenADescriptorHasGoneMeanwhile) {
    const FailingCall failing("posix_spawn", 1, EBADF, 5);
    expectAGoodRun();
    EXPECT_EQ(countCalls("posix_spawn"), 6);
}

TEST_F(RunCall, GivesUpStartingAfterFiftyAttempts) {
    const FailingCall failing("posix_spawn", 1, EBADF, 1000);
    EXPECT_FALSE(run());
    EXPECT_EQ(countCalls("posix_spawn"), 50);
    expectNothingLeft();
}

// Closes this process's standard input until it dies.
class ClosedInput {
public:
    ClosedInput() : saved_(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 100)) { ::close(STDIN_FILENO); }
    ClosedInput(const ClosedInput&) = delete;
    ClosedInput& operator=(const ClosedInput&) = delete;
    ~ClosedInput() {
        ::dup2(saved_, STDIN_FILENO);
        ::close(saved_);
    }

private:
    int saved_;
};

// The first use moves a pipe's end off the closed descriptor's number; without it there is no run.
// The others ask whether the standard descriptors are open, and take a failure for a no.
TEST_F(RunCall, FailsWhenAPipeCantLeaveAClosedStandardDescriptor) {
    const ClosedInput closed;
    before = countOpenHandles();
    const int uses = countUses("fcntl");
    EXPECT_EQ(uses, 3);
    for (int number = 1; number <= uses; ++number) {
        {
            const FailingCall failing("fcntl", number, EMFILE);
            EXPECT_EQ(run(), number != 1) << number;
        }
        expectNothingLeft();
        expectAGoodRun();
    }
}

// ---- the long-lived tool

class ServiceCall : public CallTest {
protected:
    ServiceCall() {
        tool.answerRequest("-Lens", {.answer = {.output = "Lens: a\n"}});
        live();  // brings to life what the system makes once
    }

    // A life of the tool. Returns its answer to one request.
    std::string live() {
        ExiftoolProcess process(tool.path());
        std::string answer = process.execute({"-Lens"});
        process.stop();
        return answer;
    }

    int countUses(const std::string& call) {
        forgetCalls();
        EXPECT_EQ(live(), kAnswer);
        return countCalls(call);
    }

    void expectAGoodLife() {
        EXPECT_EQ(live(), kAnswer);
        expectNothingLeft();
    }

    static constexpr auto kAnswer = "Lens: a\n{ready}\n";
    ToolDirectory tool{"exiftool.exe"};
};

TEST_P(ServiceCall, FailsTheStartAtEachOfItsUsesAndLeavesNothing) {
    const int uses = countUses(GetParam().name);
    EXPECT_GT(uses, 0);
    for (int number = 1; number <= uses; ++number) {
        SCOPED_TRACE(number);
        log.clear();
        {
            const FailingCall failing(GetParam().name, number, GetParam().error);
            EXPECT_EQ(live(), "");
        }
        const auto error = static_cast<unsigned>(GetParam().error);
        EXPECT_EQ(log.lines(), std::vector<LogLine>{stepFailureLine("CreateProcessW", error)});
        expectNothingLeft();
    }
    expectAGoodLife();
}

INSTANTIATE_TEST_SUITE_P(, ServiceCall,
                         ::testing::Values(Call{"posix_spawn", EAGAIN},
                                           Call{"posix_spawn_file_actions_init", ENOMEM},
                                           Call{"posix_spawn_file_actions_adddup2", ENOMEM},
                                           Call{"posix_spawn_file_actions_addopen", ENOMEM},
                                           Call{"posix_spawn_file_actions_addclosefrom_np", ENOMEM},
                                           Call{"posix_spawnattr_init", ENOMEM},
                                           Call{"posix_spawnattr_setflags", EINVAL},
                                           Call{"posix_spawnattr_setpgroup", EINVAL},
                                           Call{"posix_spawnattr_setsigmask", EINVAL},
                                           Call{"posix_spawnattr_setsigdefault", EINVAL}),
                         caseName<Call>);

TEST_F(ServiceCall, NamesThePipeThatCouldNotBeMade) {
    const std::vector<std::string> steps = {"CreatePipe OUT", "CreatePipe IN", "CreateProcessW"};
    ASSERT_EQ(countUses("pipe2"), 3);
    for (int number = 1; number <= 3; ++number) {
        log.clear();
        {
            const FailingCall failing("pipe2", number, EMFILE);
            EXPECT_EQ(live(), "");
        }
        const std::string& step = steps[static_cast<std::size_t>(number - 1)];
        EXPECT_EQ(log.lines(), std::vector<LogLine>{stepFailureLine(step, EMFILE)});
        expectNothingLeft();
    }
}

TEST_F(ServiceCall, IsRepeatedWhenASignalInterruptsIt) {
    for (const char* const call : {"read", "write", "waitpid"}) {
        const int uses = countUses(call);
        for (int number = 1; number <= uses; ++number) {
            SCOPED_TRACE(call);
            const FailingCall failing(call, number, EINTR, 3);
            expectAGoodLife();
        }
    }
}

TEST_F(ServiceCall, MovesRequestsAndAnswersByteByByte) {
    const TinyTransfers tiny;
    EXPECT_EQ(live(), "Lens: a\n{ready}");  // the line feed would be for the next answer
    expectNothingLeft();
}

TEST_F(ServiceCall, EndsTheToolThoughTheQuitCantBeWritten) {
    const int uses = countUses("write");
    const FailingCall failing("write", uses, EPIPE);
    expectAGoodLife();
}

TEST_F(ServiceCall, TakesAToolForDeadThatItCantAskAbout) {
    {
        const FailingCall failing("waitid", 1, ECHILD);
        EXPECT_EQ(live(), "");
    }
    EXPECT_EQ(log.lines(), std::vector<LogLine>{plainLine(3, "exiftool process could not start")});
    expectNothingLeft();
    expectAGoodLife();
}

TEST_F(ServiceCall, LeavesNothingWhenSomebodyElseHasWaitedForItsChildren) {
    const int uses = countUses("waitpid");
    EXPECT_EQ(uses, 2);
    for (int number = 1; number <= uses; ++number) {
        const FailingCall failing("waitpid", number, ECHILD);
        expectAGoodLife();
    }
}

}  // namespace
}  // namespace exiv2_wp::internal
