#include <gtest/gtest.h>

#include "exiftool/host_program.h"
#include "exiftool/processes.h"
#include "support/tool_directory.h"

namespace test_support {
namespace {

const std::string kEmptyDirectory = "log|3|exiftool initialization: exiftoolDir is empty\n";
const std::string kMarkerLine = "log|0|readTags: ignoring line: |{ready}\n";

class ExiftoolLife : public ::testing::Test {
protected:
    ToolDirectory tool{"exiftool.exe"};
    ToolDirectory otherTool{"exiftool.exe"};
    std::string directory = tool.path().string();
    std::string otherDirectory = otherTool.path().string();
    std::string ready = (tool.path() / "ready").string();
    std::string go = (tool.path() / "go").string();
};

TEST_F(ExiftoolLife, IsStartedByTheFirstInitialize) {
    EXPECT_EQ(runHost({"init", directory, "tags", "a.jpg", "-Make"}).output,
              "init 1\n" + kMarkerLine + "tags\n");
    EXPECT_EQ(tool.calls().size(), 1U);
}

TEST_F(ExiftoolLife, IsStartedOnceByThreadsThatInitialiseAtTheSameMoment) {
    EXPECT_EQ(runHost({"init-by-eight-threads", directory, "tags", "a.jpg", "-Make"}).output,
              "init 1\ninit 1\ninit 1\ninit 1\ninit 1\ninit 1\ninit 1\ninit 1\n" + kMarkerLine +
                  "tags\n");
    EXPECT_EQ(tool.calls().size(), 1U);
}

TEST_F(ExiftoolLife, IgnoresTheDirectoryOfALaterInitialize) {
    EXPECT_EQ(
        runHost({"init", directory, "init", otherDirectory, "init", "", "tags", "a.jpg", "-Make"})
            .output,
        "init 1\ninit 1\ninit 1\n" + kMarkerLine + "tags\n");
    EXPECT_EQ(tool.calls().size(), 1U);
    EXPECT_EQ(otherTool.calls().size(), 0U);
}

TEST_F(ExiftoolLife, NeverBeginsWhenTheFirstDirectoryIsEmpty) {
    EXPECT_EQ(runHost({"init", "", "init", directory}).output,
              kEmptyDirectory + "init 0\ninit 0\n");
    EXPECT_EQ(tool.calls().size(), 0U);
}

TEST_F(ExiftoolLife, NeverBeginsWhenTheFirstDirectoryHasNoTool) {
    TemporaryDirectory empty;
    EXPECT_EQ(runHost({"init", empty.path().string(), "init", directory}).output,
              "log|3|exiftool |CreateProcessW| error: |2\ninit 0\ninit 0\n");
    EXPECT_EQ(tool.calls().size(), 0U);
}

TEST_F(ExiftoolLife, NeverBeginsWhenUninitializeCameFirst) {
    EXPECT_EQ(runHost({"uninit", "init", directory}).output, kEmptyDirectory + "uninit\ninit 0\n");
    EXPECT_EQ(tool.calls().size(), 0U);
}

TEST_F(ExiftoolLife, NeverBeginsWhenAReaderCameFirst) {
    EXPECT_EQ(runHost({"tags", "a.jpg", "-Make", "init", directory}).output,
              kEmptyDirectory + "tags\ninit 0\n");
    EXPECT_EQ(runHost({"lens", "a.jpg", "init", directory}).output,
              kEmptyDirectory + "lens \ninit 0\n");
    EXPECT_EQ(runHost({"copy", "a.jpg", "b.jpg", "init", directory}).output,
              kEmptyDirectory + "copy 0\ninit 0\n");
}

// The host stays until the tool has read what it was sent: on Windows the tool goes with the host.
TEST_F(ExiftoolLife, IsAskedToQuitOnceByTwoUninitializes) {
    std::future<ProgramResult> host =
        startHost({"init", directory, "uninit", "uninit", "wait", go});
    EXPECT_TRUE(tool.waitForEvents("quit", 1));
    tool.makeFile("go");
    EXPECT_EQ(host.get().output, "init 1\nuninit\nuninit\n");
    EXPECT_EQ(tool.countQuits(), 1U);
}

TEST_F(ExiftoolLife, AnswersNothingAndStartsNothingAfterUninitialize) {
    std::future<ProgramResult> host = startHost(
        {"init", directory, "uninit", "tags", "a.jpg", "-Make", "init", directory, "wait", go});
    EXPECT_TRUE(tool.waitForEvents("quit", 1));
    tool.makeFile("go");
    EXPECT_EQ(host.get().output, "init 1\nuninit\ntags\ninit 0\n");
    EXPECT_EQ(tool.calls().size(), 1U);
    EXPECT_EQ(tool.requests().size(), 0U);
}

TEST_F(ExiftoolLife, EndsWithAHostThatEnds) {
    tool.live({.ignoreQuit = true});
    runHost({"init", directory, "tags", "a.jpg", "-Make"});
    ASSERT_EQ(tool.processIds().size(), 1U);
    EXPECT_TRUE(ends(tool.processIds()[0]));
}

TEST_F(ExiftoolLife, EndsWithAHostThatIsKilled) {
    std::future<ProgramResult> host =
        startHost({"init", directory, "tags", "a.jpg", "-Make", "wait", go, "die"});
    ASSERT_TRUE(tool.waitForEvents("request", 1));
    const unsigned long toolId = tool.processIds()[0];
    EXPECT_TRUE(isProcessAlive(toolId));

    tool.makeFile("go");

    EXPECT_NE(host.get().exitCode, 0);
    EXPECT_TRUE(endsInTime(toolId));
}

TEST_F(ExiftoolLife, ReturnsWhenTheToolIsKilledInTheMiddleOfARequest) {
    tool.answerRequest("slow.jpg", {.answer = {.gate = "never"}});
    std::future<ProgramResult> host = startHost({"init", directory, "tags", "slow.jpg", "-Make"});
    ASSERT_TRUE(tool.waitForEvents("request", 1));
    const unsigned long toolId = tool.processIds()[0];

    killProcess(toolId);

    EXPECT_EQ(host.get().output, "init 1\ntags\n");
    EXPECT_TRUE(ends(toolId));
}

TEST_F(ExiftoolLife, IsOverWhenTheFirstRequestFindsTheToolDead) {
    tool.live({.exitAtStart = true});
    std::future<ProgramResult> host = startHost({"init", directory, "wait", go, "tags", "a.jpg",
                                                 "-Make", "lens", "a.jpg", "init", directory});
    ASSERT_TRUE(tool.waitForCalls(1));
    EXPECT_TRUE(ends(tool.processIds()[0]));
    tool.makeFile("go");
    EXPECT_EQ(host.get().output,
              "init 1\nlog|3|exiftool process could not start\ntags\nlens \ninit 0\n");
}

TEST_F(ExiftoolLife, OutlivesTheThreadThatInitialised) {
    tool.answerRequest("a.jpg", {.answer = {.output = "Make: Canon\n"}});
    EXPECT_EQ(runHost({"init-in-a-thread-that-ends", directory, "tags", "a.jpg", "-Make", "tags",
                       "a.jpg", "-Make"})
                  .output,
              "init 1\n" + kMarkerLine + "tags Make=Canon\n" + kMarkerLine + "tags Make=Canon\n");
}

TEST_F(ExiftoolLife, LeavesTheHostAliveWhenTheToolIsKilledBetweenRequests) {
    std::future<ProgramResult> host =
        startHost({"init", directory, "tags", "a.jpg", "-Make", "touch", ready, "wait", go, "tags",
                   "b.jpg", "-Make", "tags", "c.jpg", "-Make", "uninit"});
    ASSERT_TRUE(waitForFile(ready));
    killProcess(tool.processIds()[0]);
    ASSERT_TRUE(ends(tool.processIds()[0]));
    tool.makeFile("go");

    const ProgramResult run = host.get();
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.output.ends_with("tags\ntags\nuninit\n")) << run.output;
}

TEST_F(ExiftoolLife, ReturnsWhatAToolWroteThatDiesInTheMiddleOfAnAnswer) {
    tool.answerRequest(
        "a.jpg", {.answer = {.output = "Make: Canon\nModel: EO"}, .ready = false, .exit = true});
    EXPECT_EQ(
        runHost({"init", directory, "tags", "a.jpg", "-Make", "tags", "b.jpg", "-Make"}).output,
        "init 1\ntags Make=Canon Model=EO\ntags\n");
}

TEST_F(ExiftoolLife, ReturnsWhatAToolWroteThatClosesItsOutputAndStays) {
    tool.answerRequest(
        "a.jpg", {.answer = {.output = "Make: Canon\n"}, .ready = false, .closeOutput = true});
    const ProgramResult run =
        runHost({"init", directory, "tags", "a.jpg", "-Make", "tags", "b.jpg", "-Make"});
    EXPECT_EQ(run.output, "init 1\ntags Make=Canon\ntags\n");
    EXPECT_EQ(run.exitCode, 0);
}

}  // namespace
}  // namespace test_support
