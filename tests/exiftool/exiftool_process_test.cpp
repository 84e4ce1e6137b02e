#include "exiv2_wrapper/exiftool/exiftool_process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>

#include "exiftool/scripted_channel.h"
#include "exiv2_wrapper/exiftool/process_channel.h"
#include "exiv2_wrapper/exiftool/request_protocol.h"
#include "support/latch.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace exiftool::internal {
namespace {

using test_support::LogCapture;
using test_support::LogLine;
using test_support::native;
using test_support::plainLine;
using test_support::stepFailureLine;
using test_support::ToolDirectory;

const std::vector<std::string> kRequest = {"-ver"};

TEST(ExiftoolProcess, SendsARequestAndReturnsItsAnswer) {
    ChannelRecord record;
    ExiftoolProcess process(std::make_unique<ScriptedChannel>(
        std::vector<std::string>{"12.57\r\n{ready}\r\n"}, &record));

    EXPECT_EQ(process.execute(kRequest), "12.57\n{ready}\n");
    EXPECT_EQ(record.written, "-charset\nfilename=utf8\n-ver\n-execute\n");
}

TEST(ExiftoolProcess, AsksOnceWhetherTheToolIsAlive) {
    ChannelRecord record;
    ExiftoolProcess process(std::make_unique<ScriptedChannel>(
        std::vector<std::string>{"a\n{ready}\n", "b\n{ready}\n"}, &record));

    EXPECT_EQ(process.execute(kRequest), "a\n{ready}\n");
    EXPECT_EQ(process.execute(kRequest), "b\n{ready}\n");
    EXPECT_EQ(record.livenessQueries, 1U);
}

TEST(ExiftoolProcess, NeverRunsAgainWhenTheFirstRequestFindsTheToolDead) {
    LogCapture log;
    ChannelRecord record;
    auto channel =
        std::make_unique<ScriptedChannel>(std::vector<std::string>{"a\n{ready}\n"}, &record);
    channel->active = 0;
    ExiftoolProcess process(std::move(channel));

    EXPECT_EQ(process.execute(kRequest), "");
    EXPECT_EQ(process.execute(kRequest), "");
    process.stop();

    EXPECT_FALSE(process.isRunning());
    EXPECT_EQ(record.written, "");
    EXPECT_EQ(log.lines(), std::vector<LogLine>{plainLine(3, "exiftool process could not start")});
}

TEST(ExiftoolProcess, NeverRunsAgainWhenItCantLearnWhetherTheToolIsAlive) {
    LogCapture log;
    auto channel = std::make_unique<ScriptedChannel>(std::vector<std::string>{"a\n{ready}\n"});
    channel->livenessError = 6;
    ExiftoolProcess process(std::move(channel));

    EXPECT_EQ(process.execute(kRequest), "");
    EXPECT_EQ(process.execute(kRequest), "");

    const std::vector<LogLine> expected = {stepFailureLine("QueryInformationJobObject", 6),
                                           plainLine(3, "exiftool process could not start")};
    EXPECT_EQ(log.lines(), expected);
}

TEST(ExiftoolProcess, ReturnsWhatWasReadWhenTheToolDiesLater) {
    LogCapture log;
    ExiftoolProcess process(
        std::make_unique<ScriptedChannel>(std::vector<std::string>{"a\n{ready}\n", "half"}));

    EXPECT_EQ(process.execute(kRequest), "a\n{ready}\n");
    EXPECT_EQ(process.execute(kRequest), "half");
    EXPECT_EQ(process.execute(kRequest), "");

    EXPECT_TRUE(process.isRunning());
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST(ExiftoolProcess, WritesTheQuitRequestOnce) {
    ChannelRecord record;
    ExiftoolProcess process(std::make_unique<ScriptedChannel>(std::vector<std::string>{}, &record));

    process.stop();
    process.stop();

    EXPECT_EQ(record.written, "-stay_open\nfalse\n");
    EXPECT_EQ(record.closes, 1U);
    EXPECT_FALSE(process.isRunning());
}

TEST(ExiftoolProcess, AnswersNothingOnceItIsStopped) {
    LogCapture log;
    ChannelRecord record;
    ExiftoolProcess process(
        std::make_unique<ScriptedChannel>(std::vector<std::string>{"a\n{ready}\n"}, &record));

    process.stop();

    EXPECT_EQ(process.execute(kRequest), "");
    EXPECT_EQ(record.written, "-stay_open\nfalse\n");
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

// Holds a request back until the test lets it go.
class GatedChannel final : public ToolChannel {
public:
    test_support::Latch isUnderWay{1};
    test_support::Latch mayEnd{1};

    void write(std::string_view) override {}
    std::size_t read(std::span<char>) override {
        isUnderWay.count_down();
        mayEnd.wait();
        return 0;
    }
    exiv2_wp::internal::ErrorCode countActiveProcesses(std::uint32_t& count) override {
        count = 1;
        return 0;
    }
    void close() override {}
};

// With a tool that hangs, it would never be told otherwise.
TEST(ExiftoolProcess, TellsWhetherItRunsWhileARequestIsUnderWay) {
    auto owned = std::make_unique<GatedChannel>();
    GatedChannel& channel = *owned;
    ExiftoolProcess process(std::move(owned));
    std::thread request([&process] { EXPECT_EQ(process.execute(kRequest), ""); });
    channel.isUnderWay.wait();

    std::future<bool> isRunning =
        std::async(std::launch::async, [&process] { return process.isRunning(); });
    EXPECT_EQ(isRunning.wait_for(std::chrono::minutes(1)), std::future_status::ready);

    channel.mayEnd.count_down();
    request.join();
    EXPECT_TRUE(isRunning.get());
}

TEST(ExiftoolProcess, IsLeftAloneAtUnloadWhileARequestIsUnderWay) {
    auto owned = std::make_unique<GatedChannel>();
    GatedChannel& channel = *owned;
    ExiftoolProcess process(std::move(owned));
    std::thread request([&process] { EXPECT_EQ(process.execute(kRequest), ""); });
    channel.isUnderWay.wait();

    EXPECT_FALSE(process.stopAtUnload());

    channel.mayEnd.count_down();
    request.join();
    EXPECT_TRUE(process.isRunning());
    EXPECT_TRUE(process.stopAtUnload());
    EXPECT_FALSE(process.isRunning());
}

TEST(ProcessChannel, StartsTheToolWithItsFourArguments) {
    ToolDirectory tool("exiftool.exe");
    ProcessChannel channel;

    ASSERT_TRUE(channel.start(tool.path()));
    ASSERT_TRUE(tool.waitForCalls(1));

    const std::vector<test_support::Arguments> expected = {
        {native("-stay_open"), native("true"), native("-@"), native("-")}};
    EXPECT_EQ(tool.calls(), expected);
}

TEST(ProcessChannel, CarriesRequestsAndAnswers) {
    ToolDirectory tool("exiftool.exe");
    tool.answerRequest("one", {.answer = {.output = "out\n", .error = "err\n"}});
    ProcessChannel channel;
    ASSERT_TRUE(channel.start(tool.path()));

    channel.write(frameRequest({"one"}));
    const std::string answer = readAnswer(channel);

    EXPECT_EQ(answer, "err\nout\n{ready}\n");  // both outputs come through one pipe
}

TEST(ProcessChannel, FailsWithoutADirectory) {
    LogCapture log;
    ProcessChannel channel;

    EXPECT_FALSE(channel.start({}));
    EXPECT_EQ(log.lines(),
              std::vector<LogLine>{plainLine(3, "exiftool initialization: exiftoolDir is empty")});
}

TEST(ProcessChannel, NamesTheStepThatFindsNoTool) {
    constexpr std::uint32_t kNotFound = 2;  // the same number on both platforms
    LogCapture log;
    test_support::TemporaryDirectory empty;
    ProcessChannel channel;

    EXPECT_FALSE(channel.start(empty.path()));
    EXPECT_EQ(log.lines(), std::vector<LogLine>{stepFailureLine("CreateProcessW", kNotFound)});
}

TEST(ProcessChannel, StartsAToolWhoseDirectoryHasBlanks) {
    ToolDirectory tool("exiftool.exe", "a folder with blanks ");
    ProcessChannel channel;

    ASSERT_TRUE(channel.start(tool.path()));
    EXPECT_TRUE(tool.waitForCalls(1));
}

TEST(ProcessChannel, StartsAToolWhoseDirectoryIsNotAscii) {
    ToolDirectory tool("exiftool.exe", "Bilder-\xC3\xA4\xC3\xB6-\xE5\x86\x99-");
    ProcessChannel channel;

    ASSERT_TRUE(channel.start(tool.path()));
    EXPECT_TRUE(tool.waitForCalls(1));
}

TEST(ProcessChannel, CountsNoProcessOnceTheToolHasEnded) {
    ToolDirectory tool("exiftool.exe");
    tool.live({.exitAtStart = true});
    ProcessChannel channel;
    ASSERT_TRUE(channel.start(tool.path()));

    char byte = 0;
    EXPECT_EQ(channel.read({&byte, 1}), 0U);  // its outputs close when it ends
    std::uint32_t active = 1;
    while (active != 0) {
        ASSERT_EQ(channel.countActiveProcesses(active), 0U);
    }
}

TEST(ProcessChannel, CountsTheToolWhileItRuns) {
    ToolDirectory tool("exiftool.exe");
    ProcessChannel channel;
    ASSERT_TRUE(channel.start(tool.path()));

    std::uint32_t active = 0;
    EXPECT_EQ(channel.countActiveProcesses(active), 0U);
    EXPECT_EQ(active, 1U);
}

}  // namespace
}  // namespace exiftool::internal
