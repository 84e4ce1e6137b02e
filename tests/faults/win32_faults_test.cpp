#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "faults/win32_calls.h"
#include "support/case_name.h"
#include "support/log_capture.h"
#include "support/this_process.h"
#include "support/tool_directory.h"

/// Every call that the library makes to Windows fails once, at each of its uses, while it runs real
/// programs.
namespace exiv2_wp::internal {
namespace {

using exiftool::internal::ExiftoolProcess;
using test_support::caseName;
using test_support::countCalls;
using test_support::countOpenHandles;
using test_support::FailingCall;
using test_support::forgetCalls;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::native;
using test_support::plainLine;
using test_support::stepFailureLine;
using test_support::ToolDirectory;

constexpr unsigned kError = 1450;  // too few resources

// ---- one run after the other

struct Call {
    std::string name;
    int uses;  ///< by one run
};

void PrintTo(const Call& call, std::ostream* stream) {
    *stream << call.name;
}

class RunCall : public ::testing::TestWithParam<Call> {
protected:
    void SetUp() override {
        tool.answer({"pr"}, {.output = "text"});
        ASSERT_TRUE(initialize(tool.path()));
        ASSERT_TRUE(run());
        log.clear();
        before = countOpenHandles();
        forgetCalls();
    }

    bool run() { return runExiv2Cli({native("pr")}, output); }

    void expectAGoodRun() {
        EXPECT_TRUE(run());
        EXPECT_EQ(output, "text");
        EXPECT_EQ(countOpenHandles(), before);
    }

    LogCapture log;
    ToolDirectory tool;
    std::string output;
    std::size_t before = 0;
};

TEST_P(RunCall, FailsTheRunAtEachOfItsUsesAndLeavesNoHandle) {
    expectAGoodRun();
    EXPECT_EQ(countCalls(GetParam().name), GetParam().uses);
    for (int number = 1; number <= GetParam().uses; ++number) {
        {
            const FailingCall failing(GetParam().name, number, kError);
            EXPECT_FALSE(run());
        }
        EXPECT_EQ(countOpenHandles(), before);
        expectAGoodRun();
    }
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

INSTANTIATE_TEST_SUITE_P(, RunCall,
                         ::testing::Values(Call{"CreatePipe", 1}, Call{"SetHandleInformation", 1},
                                           Call{"CreateProcessW", 1},
                                           Call{"GetExitCodeProcess", 1}),
                         caseName<Call>);

TEST_F(RunCall, EndsTheOutputWhereAReadFails) {
    {
        const FailingCall failing("ReadFile", 1, kError);
        (void)run();
        EXPECT_EQ(output, "");
    }
    EXPECT_EQ(countOpenHandles(), before);
    expectAGoodRun();
}

TEST_F(RunCall, SucceedsThoughTheOutputsEndCantBeRead) {
    const FailingCall failing("ReadFile", 2, kError);
    expectAGoodRun();
}

// ---- the long-lived tool

struct Step {
    std::string name;  ///< as the log calls it, without blanks
    std::string call;
    int number;
    std::string loggedStep;
};

void PrintTo(const Step& step, std::ostream* stream) {
    *stream << step.loggedStep;
}

class ServiceCall : public ::testing::TestWithParam<Step> {
protected:
    void SetUp() override {
        tool.answerRequest("-Lens", {.answer = {.output = "Lens: a\n"}});
        forgetCalls();
        live();
        before = countOpenHandles();
    }

    // A life of the tool. Returns its answer to one request.
    std::string live() {
        ExiftoolProcess process(tool.path());
        std::string answer = process.execute({"-Lens"});
        process.stop();
        jobs += countCalls("CreateJobObjectA");
        forgetCalls();
        return answer;
    }

    // The job handle stays open by intent, until this process ends.
    void expectNothingLeftButJobs() const {
        EXPECT_LE(countOpenHandles(), before + static_cast<std::size_t>(jobs));
    }

    LogCapture log;
    ToolDirectory tool{"exiftool.exe"};
    std::size_t before = 0;
    int jobs = 0;
};

TEST_P(ServiceCall, FailsTheStartAndIsNamed) {
    jobs = 0;
    {
        const FailingCall failing(GetParam().call, GetParam().number, kError);
        EXPECT_EQ(live(), "");
    }
    const LogLine line = stepFailureLine(GetParam().loggedStep, kError);
    ASSERT_FALSE(log.lines().empty());
    EXPECT_EQ(log.lines().front(), line);
    expectNothingLeftButJobs();
    EXPECT_EQ(live(), "Lens: a\n{ready}\n");
    expectNothingLeftButJobs();
}

INSTANTIATE_TEST_SUITE_P(
    , ServiceCall,
    ::testing::Values(
        Step{"CreatePipeOut", "CreatePipe", 1, "CreatePipe OUT"},
        Step{"CreatePipeIn", "CreatePipe", 2, "CreatePipe IN"},
        Step{"SetHandleInformationOut", "SetHandleInformation", 1, "SetHandleInformation OUT"},
        Step{"SetHandleInformationIn", "SetHandleInformation", 2, "SetHandleInformation IN"},
        Step{"CreateProcessW", "CreateProcessW", 1, "CreateProcessW"},
        Step{"CreateJobObjectA", "CreateJobObjectA", 1, "CreateJobObjectA"},
        Step{"SetInformationJobObject", "SetInformationJobObject", 1, "SetInformationJobObject"},
        Step{"AssignProcessToJobObject", "AssignProcessToJobObject", 1, "AssignProcessToJobObject"},
        Step{"QueryInformationJobObject", "QueryInformationJobObject", 1,
             "QueryInformationJobObject"}),
    caseName<Step>);

// The tool is tied to the host by its job alone, so without one it is asked to quit at once.
TEST_F(ServiceCall, AsksAToolWithoutAJobToQuit) {
    const FailingCall failing("AssignProcessToJobObject", 1, kError);
    EXPECT_EQ(live(), "");
    EXPECT_TRUE(tool.waitForEvents("quit", 2));  // one of the life before
}

TEST_F(ServiceCall, EndsTheAnswerWhereAReadFails) {
    ExiftoolProcess process(tool.path());
    {
        const FailingCall failing("ReadFile", 1, kError);
        EXPECT_EQ(process.execute({"-Lens"}), "");
    }
    EXPECT_TRUE(process.isRunning());
}

}  // namespace
}  // namespace exiv2_wp::internal
