#include "exiv2_wrapper/runner/process_runner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <thread>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/runner/tool_location.h"
#include "platform/awkward_arguments.h"
#include "support/log_capture.h"
#include "support/read_file.h"
#include "support/this_process.h"
#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::Arguments;
using test_support::awkwardArguments;
using test_support::failureLine;
using test_support::kRunExiv2CliSignature;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::native;
using test_support::randomArguments;
using test_support::readFile;
using test_support::RedirectedStreams;
using test_support::ToolDirectory;

class ProcessRunner : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(initialize(tool.path()));
        log.clear();
    }

    bool show() { return runExiv2Cli({native("show")}, output); }

    // The arguments of the run behind the one that start-up makes.
    Arguments receivedArguments() const {
        const std::vector<Arguments> calls = tool.calls();
        return calls.size() == 2 ? calls.back() : Arguments{native("not one call")};
    }

    LogCapture log;
    ToolDirectory tool;
    std::string output = "before";
};

TEST_F(ProcessRunner, SucceedsWhenTheToolEndsWithExitCode0) {
    tool.answer({"show"}, {.output = "some text"});
    EXPECT_TRUE(show());
    EXPECT_EQ(output, "some text");
}

TEST_F(ProcessRunner, KeepsTheOutputOfAFailedRun) {
    tool.answer({"show"}, {.output = "some text", .exitCode = 1});
    EXPECT_FALSE(show());
    EXPECT_EQ(output, "some text");
}

TEST_F(ProcessRunner, ClearsTheOutputOfAnEarlierRun) {
    tool.answer({"show"}, {});
    EXPECT_TRUE(show());
    EXPECT_EQ(output, "");
}

TEST_F(ProcessRunner, PassesNoArgumentWhenThereIsNone) {
    EXPECT_FALSE(runExiv2Cli({}, output));
    EXPECT_EQ(receivedArguments(), Arguments{});
}

TEST_F(ProcessRunner, PassesEmptyAndBlankArguments) {
    const Arguments arguments = {native("show"), native(""), native("a b"), native("")};
    EXPECT_FALSE(runExiv2Cli(arguments, output));
    EXPECT_EQ(receivedArguments(), arguments);
}

TEST_F(ProcessRunner, PassesAwkwardArgumentsUnchanged) {
    Arguments arguments;
    for (const std::wstring& argument : awkwardArguments()) {
        arguments.emplace_back(argument.begin(), argument.end());
    }
    EXPECT_FALSE(runExiv2Cli(arguments, output));
    EXPECT_EQ(receivedArguments(), arguments);
}

TEST_F(ProcessRunner, PassesRandomArgumentsUnchanged) {
    Arguments arguments;
    constexpr unsigned kRounds = 200;
    for (unsigned seed = 0; seed < kRounds; ++seed) {
        for (const std::wstring& argument : randomArguments(seed)) {
            arguments.emplace_back(argument.begin(), argument.end());
        }
    }
    EXPECT_FALSE(runExiv2Cli(arguments, output));
    EXPECT_EQ(receivedArguments(), arguments);
}

TEST_F(ProcessRunner, PassesFileNamesBeyondAscii) {
    const std::filesystem::path file = u8"B\u00E4r \u5199\u771F \U0001F4F7.jpg";
    EXPECT_FALSE(runExiv2Cli({native("pr"), file.native()}, output));
    EXPECT_EQ(receivedArguments(), (Arguments{native("pr"), file.native()}));
}

TEST_F(ProcessRunner, CapturesNothingOfStandardError) {
    const std::filesystem::path empty = tool.makeFile("empty", "");
    tool.answer({"show"}, {.error = "a warning"});
    const RedirectedStreams streams(empty, tool.path() / "error");
    EXPECT_TRUE(show());
    EXPECT_EQ(output, "");
}

TEST_F(ProcessRunner, JudgesARunThatWritesToStandardErrorByItsExitCode) {
    const std::filesystem::path empty = tool.makeFile("empty", "");
    tool.answer({"show"}, {.error = "an error", .exitCode = 1});
    const RedirectedStreams streams(empty, tool.path() / "error");
    EXPECT_FALSE(show());
    EXPECT_EQ(output, "");
}

TEST_F(ProcessRunner, GivesTheToolTheHostsStandardError) {
    const std::filesystem::path empty = tool.makeFile("empty", "");
    tool.answer({"show"}, {.output = "text", .error = "a warning"});
    {
        const RedirectedStreams streams(empty, tool.path() / "error");
        EXPECT_TRUE(show());
    }
    EXPECT_EQ(readFile(tool.path() / "error"), "a warning");
}

TEST_F(ProcessRunner, GivesTheToolTheHostsStandardInput) {
    const std::filesystem::path input = tool.makeFile("input", "from the host");
    tool.answer({"show"}, {.echoInput = true});
    const RedirectedStreams streams(input, tool.path() / "error");
    EXPECT_TRUE(show());
    EXPECT_EQ(output, "from the host");
}

TEST_F(ProcessRunner, KeepsOutputLongerThanItsBufferWholeAndInOrder) {
    std::string text;
    for (int line = 0; line < 5000; ++line) {
        text += "line " + std::to_string(line) + "\n";
    }
    tool.answer({"show"}, {.output = text});
    EXPECT_TRUE(show());
    EXPECT_EQ(output, text);
}

TEST_F(ProcessRunner, KeepsOutputAsLongAsItsBuffer) {
    const std::string text(8192, 'x');
    tool.answer({"show"}, {.output = text});
    EXPECT_TRUE(show());
    EXPECT_EQ(output, text);
}

TEST_F(ProcessRunner, KeepsSixtyFourMegabytes) {
    std::string megabyte(1 << 20, '\0');
    for (std::size_t i = 0; i < megabyte.size(); ++i) {
        megabyte[i] = static_cast<char>(i * 31 + i / 251);
    }
    constexpr int kMegabytes = 64;
    tool.answer({"show"}, {.output = megabyte, .repeat = kMegabytes});
    ASSERT_TRUE(show());
    ASSERT_EQ(output.size(), kMegabytes * megabyte.size());
    for (std::size_t at = 0; at < output.size(); at += megabyte.size()) {
        ASSERT_EQ(output.compare(at, megabyte.size(), megabyte), 0) << at;
    }
}

TEST_F(ProcessRunner, KeepsEveryByteValue) {
    std::string bytes = "\r\n\x1A\n\r";
    for (int value = 0; value < 256; ++value) {
        bytes += static_cast<char>(value);
    }
    tool.answer({"show"}, {.output = bytes});
    EXPECT_TRUE(show());
    EXPECT_EQ(output, bytes);
}

TEST_F(ProcessRunner, FailsWhenTheToolEndsBySignal) {
    constexpr int kKill = 9;
    tool.answer({"show"}, {.output = "begun", .signal = kKill});
    EXPECT_FALSE(show());
    EXPECT_EQ(output, "begun");
}

class ProcessRunnerExitCode : public ProcessRunner, public ::testing::WithParamInterface<int> {};

TEST_P(ProcessRunnerExitCode, IsAFailure) {
    tool.answer({"show"}, {.exitCode = GetParam()});
    EXPECT_FALSE(show());
}

INSTANTIATE_TEST_SUITE_P(ProcessRunner, ProcessRunnerExitCode,
                         ::testing::Values(1, 2, 127, 128, 253, 255));

TEST_F(ProcessRunner, LogsNothingWhenARunFails) {
    tool.answer({"show"}, {.exitCode = 1});
    EXPECT_FALSE(show());
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST_F(ProcessRunner, FailsWithoutALineWhenTheToolDoesNotStart) {
    exiv2ExecutablePath = tool.path() / "missing.exe";
    EXPECT_FALSE(show());
    EXPECT_EQ(output, "");
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST_F(ProcessRunner, FailsWithoutALineWhenTheToolIsNoProgram) {
    exiv2ExecutablePath = tool.makeFile("exiv2-text.exe", "not a program");
    EXPECT_FALSE(show());
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST_F(ProcessRunner, LogsAndLeavesTheOutputAloneWhenNoToolIsKnown) {
    exiv2ExecutablePath.clear();
    EXPECT_FALSE(show());
    EXPECT_EQ(output, "before");
    EXPECT_EQ(log.lines(), std::vector<LogLine>{failureLine(kRunExiv2CliSignature,
                                                            "Valid exiv2 executable not found")});
}

TEST_F(ProcessRunner, RunsOnManyThreadsAtOnce) {
    constexpr int kThreads = 16;
    for (int i = 0; i < kThreads; ++i) {
        tool.answer({"show", std::to_string(i)},
                    {.output = std::string(20000, static_cast<char>('a' + i))});
    }
    std::vector<std::string> outputs(kThreads);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&outputs, i] {
            EXPECT_TRUE(runExiv2Cli({native("show"), native(std::to_string(i))}, outputs[i]));
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::size_t i = 0; i < kThreads; ++i) {
        EXPECT_EQ(outputs[i], std::string(20000, static_cast<char>('a' + static_cast<char>(i))));
    }
}

// ---- reading along

class FollowedRun : public ProcessRunner {
protected:
    template <typename OnOutput>
    std::optional<std::uint32_t> follow(const OnOutput& onOutput) {
        return followExiv2Cli({native("show")}, bytes, onOutput);
    }

    ToolOutput bytes;
};

TEST_F(FollowedRun, ShowsTheOutputAsItArrivesAndItsExitCode) {
    tool.answer({"show"}, {.output = "begun", .exitCode = 3, .gateBehindOutput = "go"});
    std::string seen;
    const auto exitCode = follow([&] {
        seen = bytes.text();
        if (seen == "begun") {
            tool.openGate("go");
        }
        return true;
    });
    EXPECT_EQ(exitCode, std::optional(3U));
    EXPECT_EQ(seen, "begun");
}

TEST_F(FollowedRun, LeavesTheReaderTakeBytesOffTheFront) {
    tool.answer({"show"}, {.output = std::string(1000, 'x'), .repeat = 1000});
    std::size_t taken = 0;
    std::size_t most = 0;
    const auto exitCode = follow([&] {
        taken += bytes.text().size();
        most = std::max(most, bytes.text().size());
        bytes.dropFront(bytes.text().size());
        return true;
    });
    EXPECT_EQ(exitCode, std::optional(0U));
    EXPECT_EQ(taken, 1'000'000U);
    EXPECT_LE(most, 8192U);
}

TEST_F(FollowedRun, ClearsTheOutputOfAnEarlierRun) {
    tool.answer({"show"}, {.output = "text"});
    EXPECT_EQ(follow([] { return true; }), std::optional(0U));
    EXPECT_EQ(follow([] { return true; }), std::optional(0U));
    EXPECT_EQ(bytes.text(), "text");
}

TEST_F(FollowedRun, EndsWhenTheReaderHasEnough) {
    tool.answer({"show"}, {.output = std::string(1 << 20, 'x')});
    int calls = 0;
    (void)follow([&] {
        ++calls;
        return false;
    });
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(test_support::hasChildren());
}

TEST_F(FollowedRun, IsReapedWhenTheReaderRaises) {
    tool.answer({"show"}, {.output = std::string(1 << 20, 'x')});
    EXPECT_THROW((void)follow([]() -> bool { throw std::runtime_error("enough"); }),
                 std::runtime_error);
    EXPECT_FALSE(test_support::hasChildren());
}

TEST_F(FollowedRun, HasNoExitCodeWhenTheToolDoesNotStart) {
    exiv2ExecutablePath = tool.path() / "missing.exe";
    EXPECT_EQ(follow([] { return true; }), std::nullopt);
    exiv2ExecutablePath.clear();
    EXPECT_EQ(follow([] { return true; }), std::nullopt);
}

TEST_F(FollowedRun, TellsACrashFromAnExitCode) {
    tool.answer({"show"}, {.signal = 9});
    EXPECT_TRUE(isCrash(follow([] { return true; }).value()));
}

class ExitCodeOfItsOwn : public ::testing::TestWithParam<std::uint32_t> {};

TEST_P(ExitCodeOfItsOwn, IsNoCrash) {
    EXPECT_FALSE(isCrash(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(, ExitCodeOfItsOwn,
                         ::testing::Values(0U, 1U, 3U, 255U, 0x7FFFFFFFU, 0xFFFFFFFFU,
                                           0xFFFFFF00U));

class ExitCodeOfACrash : public ::testing::TestWithParam<std::uint32_t> {};

TEST_P(ExitCodeOfACrash, IsACrash) {
    EXPECT_TRUE(isCrash(GetParam()));
}

// The lowest; a signal; a breakpoint, an access violation, a C++ exception, a failed fast; the
// highest.
INSTANTIATE_TEST_SUITE_P(, ExitCodeOfACrash,
                         ::testing::Values(0x80000000U, kCrash + 11, 0x80000003U, 0xC0000005U,
                                           0xE06D7363U, 0xC0000409U, 0xFFFFFEFFU));

TEST(ProcessRunnerOfATool, RunsInAFolderWithBlanksInItsName) {
    const LogCapture log;
    ToolDirectory tool("exiv2.exe", "my tools ");
    tool.answer({"show"}, {.output = "text"});
    std::string output;
    ASSERT_TRUE(initialize(tool.path()));
    EXPECT_TRUE(runExiv2Cli({native("show")}, output));
    EXPECT_EQ(output, "text");
}

}  // namespace
}  // namespace exiv2_wp::internal
