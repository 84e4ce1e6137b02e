#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <ostream>

#include "exiftool/scripted_service.h"
#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "exiv2_wrapper/exiftool/process_channel.h"
#include "support/log_capture.h"

/// What the start of the long-lived tool asks of the platform, in which order, and what it does
/// when that fails.
namespace exiftool::internal {
namespace {

using test_support::LogCapture;
using test_support::LogLine;
using test_support::plainLine;
using test_support::ScriptedService;
using test_support::service;
using test_support::stepFailureLine;

using Calls = std::vector<std::string>;

const Calls kStart = {"make output pipe",
                      "make input pipe",
                      "keep output read end from children",
                      "keep input write end from children",
                      "start tools/exiftool.exe -stay_open true -@ - from input read end to output "
                      "write end",
                      "close output write end",
                      "close input read end",
                      "create job",
                      "kill job with host",
                      "assign tool to job"};
const Calls kQuit = {"write -stay_open\nfalse\n to input write end", "close output read end",
                     "close input write end"};

Calls joined(Calls first, const Calls& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class ServiceStart : public ::testing::Test {
protected:
    void SetUp() override { service() = {}; }

    LogCapture log;
    ProcessChannel channel;
};

TEST_F(ServiceStart, TakesItsStepsInOrderAndLetsGoOfProcessAndThread) {
    EXPECT_TRUE(channel.start("tools"));
    EXPECT_EQ(service().calls, joined(kStart, {"close process and thread"}));
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST_F(ServiceStart, AsksNothingWithoutADirectory) {
    EXPECT_FALSE(channel.start({}));
    EXPECT_EQ(service().calls, Calls{});
}

TEST_F(ServiceStart, LooksForTheShortPathOfOneThatIsNotAsciiBeforeAllElse) {
    service().shortPath = "SHORT/EXIFTOOL.EXE";
    EXPECT_TRUE(channel.start(u8"t\u00F6\u00F6ls"));
    ASSERT_GT(service().calls.size(), 5U);
    EXPECT_EQ(service().calls[0], "short path of t\xC3\xB6\xC3\xB6ls/exiftool.exe");
    EXPECT_EQ(service().calls[1], "make output pipe");
    EXPECT_TRUE(service().calls[5].starts_with("start SHORT/EXIFTOOL.EXE -stay_open"));
}

TEST_F(ServiceStart, TakesTheCharactersUpTo7FForAscii) {
    EXPECT_TRUE(channel.start("tools\x7F"));
    EXPECT_EQ(service().calls.front(), "make output pipe");
}

TEST_F(ServiceStart, TakesTheCharactersFrom80OnForOthers) {
    EXPECT_TRUE(channel.start(u8"tools\u0080"));
    EXPECT_EQ(service().calls.front(), "short path of tools\xC2\x80/exiftool.exe");
}

TEST_F(ServiceStart, KeepsAPathThatHasNoShortForm) {
    EXPECT_TRUE(channel.start(u8"t\u00F6\u00F6ls"));
    ASSERT_GT(service().calls.size(), 5U);
    EXPECT_TRUE(service().calls[5].starts_with("start t\xC3\xB6\xC3\xB6ls/exiftool.exe -stay"));
}

// A step of the start, what it asks of the platform, and whether a tool runs by then.
struct Step {
    const char* name;
    const char* logName;
    std::string call;
    bool isToolStarted;
};

void PrintTo(const Step& step, std::ostream* stream) {
    *stream << step.logName;
}

class ServiceStartWithoutStep : public ServiceStart, public ::testing::WithParamInterface<Step> {
protected:
    static constexpr std::uint32_t kError = 5;

    // All calls up to the failing one, and those that end a tool that runs already.
    static Calls expectedCalls() {
        const auto failing = std::find(kStart.begin(), kStart.end(), GetParam().call);
        const Calls made(kStart.begin(), failing + 1);
        return GetParam().isToolStarted ? joined(made, kQuit) : made;
    }
};

TEST_P(ServiceStartWithoutStep, FailsAndNamesIt) {
    service().failingCall = GetParam().call;
    service().error = kError;
    EXPECT_FALSE(channel.start("tools"));
    EXPECT_EQ(service().calls, expectedCalls());
    EXPECT_EQ(log.lines(), std::vector<LogLine>{stepFailureLine(GetParam().logName, kError)});
}

TEST_P(ServiceStartWithoutStep, NeverAnswers) {
    service().failingCall = GetParam().call;
    service().error = kError;
    ExiftoolProcess process("tools");
    service().calls.clear();
    EXPECT_FALSE(process.isRunning());
    EXPECT_EQ(process.execute({"-ver"}), "");
    process.stop();
    EXPECT_EQ(service().calls, Calls{});
}

const std::array<Step, 8> kSteps = {{
    {"OutputPipe", "CreatePipe OUT", kStart[0], false},
    {"InputPipe", "CreatePipe IN", kStart[1], false},
    {"OutputEnd", "SetHandleInformation OUT", kStart[2], false},
    {"InputEnd", "SetHandleInformation IN", kStart[3], false},
    {"Process", "CreateProcessW", kStart[4], false},
    {"Job", "CreateJobObjectA", kStart[7], true},
    {"LimitOfTheJob", "SetInformationJobObject", kStart[8], true},
    {"ToolInTheJob", "AssignProcessToJobObject", kStart[9], true},
}};

INSTANTIATE_TEST_SUITE_P(, ServiceStartWithoutStep, ::testing::ValuesIn(kSteps),
                         [](const auto& step) { return step.param.name; });

class Service : public ::testing::Test {
protected:
    Service() {
        service() = {};
        process = std::make_unique<ExiftoolProcess>("tools");
        service().calls.clear();
    }

    LogCapture log;
    std::unique_ptr<ExiftoolProcess> process;
};

TEST_F(Service, IsToldToQuitAndItsJobIsNotClosed) {
    process->stop();
    EXPECT_EQ(service().calls, joined(kQuit, {"await quit"}));
}

TEST_F(Service, IsAskedForLifeBeforeItsFirstRequestOnly) {
    const std::string request =
        "write -charset\nfilename=utf8\n-ver\n-execute\n to input write end";
    EXPECT_EQ(process->execute({"-ver"}), "");
    EXPECT_EQ(process->execute({"-ver"}), "");
    EXPECT_EQ(service().calls, (Calls{"count active processes", request, request}));
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST_F(Service, WhoseLifeCannotBeLearntIsToldNothing) {
    service().failingCall = "count active processes";
    service().error = 6;
    EXPECT_EQ(process->execute({"-ver"}), "");
    EXPECT_EQ(process->execute({"-ver"}), "");
    EXPECT_EQ(service().calls, Calls{"count active processes"});
    EXPECT_EQ(log.lines(),
              (std::vector<LogLine>{stepFailureLine("QueryInformationJobObject", 6),
                                    plainLine(3, "exiftool process could not start")}));
}

}  // namespace
}  // namespace exiftool::internal
