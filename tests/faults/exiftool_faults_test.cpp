#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiftool/exiftool_process.h"
#include "faults/memory_platform.h"
#include "support/case_name.h"
#include "support/log_capture.h"

/// Every step that the long-lived tool's side asks of the platform fails once, from the start to
/// the quit.
namespace exiftool::internal {
namespace {

using test_support::caseName;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::memoryPlatform;
using test_support::MemoryPlatform;
using test_support::plainLine;
using test_support::stepFailureLine;

using Texts = std::vector<std::string>;

constexpr auto kAnswer = "Lens: a\n{ready}\n";

const Texts kSteps = {"make pipe",
                      "make pipe",
                      "keep end from children",
                      "keep end from children",
                      "start service",
                      "create job",
                      "limit job",
                      "assign to job",
                      "count processes",
                      "write",
                      "read",
                      "write",
                      "read",
                      "write"};

struct Fault {
    std::string name;
    int step;
    bool isStarted;
    Texts answers;  ///< to two requests
    std::vector<LogLine> lines;
};

void PrintTo(const Fault& fault, std::ostream* stream) {
    *stream << "step " << fault.step;
}

class ExiftoolFault : public ::testing::TestWithParam<Fault> {
protected:
    void SetUp() override {
        memoryPlatform().reset();
        memoryPlatform().answerRequests(kAnswer);
    }

    // A life of the tool: whether it starts, two requests, the quit.
    void live() {
        ExiftoolProcess process("folder");
        isStarted = process.isRunning();
        answers = {process.execute({"-Lens"}), process.execute({"-Lens"})};
        process.stop();
        EXPECT_FALSE(process.isRunning());
        EXPECT_EQ(process.execute({"-Lens"}), "");
    }

    LogCapture log;
    bool isStarted = false;
    Texts answers;
};

TEST_F(ExiftoolFault, CanBeInFourteenPlaces) {
    live();
    EXPECT_EQ(answers, (Texts{kAnswer, kAnswer}));
    EXPECT_EQ(memoryPlatform().steps(), kSteps);
}

TEST_P(ExiftoolFault, IsLoggedAndLeavesNothingBehind) {
    memoryPlatform().failAt(GetParam().step);
    live();
    EXPECT_EQ(isStarted, GetParam().isStarted);
    EXPECT_EQ(answers, GetParam().answers);
    EXPECT_EQ(log.lines(), GetParam().lines);
    EXPECT_EQ(memoryPlatform().countOpen(), 0U);
    EXPECT_EQ(memoryPlatform().misuses(), Texts{});
}

TEST_P(ExiftoolFault, DoesNotTouchTheNextTool) {
    memoryPlatform().failAt(GetParam().step);
    live();
    memoryPlatform().failAt(0);
    live();
    EXPECT_TRUE(isStarted);
    EXPECT_EQ(answers, (Texts{kAnswer, kAnswer}));
}

Fault notStarted(const std::string& name, int step, const std::string& loggedStep) {
    return {name, step, false, {"", ""}, {stepFailureLine(loggedStep, MemoryPlatform::kError)}};
}

// A request that doesn't reach the tool, or whose answer can't be read, is answered by nothing: the
// tool is gone, which is noticed on the first request alone.
INSTANTIATE_TEST_SUITE_P(
    , ExiftoolFault,
    ::testing::Values(notStarted("NoOutputPipe", 1, "CreatePipe OUT"),
                      notStarted("NoInputPipe", 2, "CreatePipe IN"),
                      notStarted("InheritableOutputEnd", 3, "SetHandleInformation OUT"),
                      notStarted("InheritableInputEnd", 4, "SetHandleInformation IN"),
                      notStarted("NoProcess", 5, "CreateProcessW"),
                      notStarted("NoJob", 6, "CreateJobObjectA"),
                      notStarted("JobWithoutLimit", 7, "SetInformationJobObject"),
                      notStarted("ProcessWithoutJob", 8, "AssignProcessToJobObject"),
                      Fault{"NoCountOfProcesses",
                            9,
                            true,
                            {"", ""},
                            {stepFailureLine("QueryInformationJobObject", MemoryPlatform::kError),
                             plainLine(3, "exiftool process could not start")}},
                      Fault{"FirstRequestNotWritten", 10, true, {"", ""}, {}},
                      Fault{"FirstAnswerNotRead", 11, true, {"", ""}, {}},
                      Fault{"SecondRequestNotWritten", 12, true, {kAnswer, ""}, {}},
                      Fault{"SecondAnswerNotRead", 13, true, {kAnswer, ""}, {}},
                      Fault{"QuitNotWritten", 14, true, {kAnswer, kAnswer}, {}}),
    caseName<Fault>);

}  // namespace
}  // namespace exiftool::internal
