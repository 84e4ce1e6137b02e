#include "exiv2_wrapper/runner/read_call.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "exiv2_wrapper/platform/quoting.h"
#include "exiv2_wrapper/runner/process_runner.h"
#include "runner/literal_parts.h"
#include "support/case_name.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::LiteralPart;
using test_support::LiteralParts;
using test_support::literalTakeParts;
using test_support::printPart;

namespace fs = std::filesystem;

// The parts of an output that is all there, as the library takes them.
LiteralParts takeParts(std::string_view output, std::size_t files) {
    LiteralParts result;
    while (result.parts.size() < files) {
        FilePart part;
        const PartState state = takePart(output, result.parts.size(), part);
        if (state != PartState::whole) {
            result.isMalformed = state == PartState::malformed;
            break;
        }
        result.parts.push_back({part.printAll.isSuccess, std::string(part.printAll.text),
                                part.summary.isSuccess, std::string(part.summary.text)});
    }
    return result;
}

// ---- one part

struct Line {
    std::string name;
    std::string output;
    PartState state;
};

void PrintTo(const Line& line, std::ostream* stream) {
    *stream << line.output;
}

class PartOfTheCall : public ::testing::TestWithParam<Line> {};

TEST_P(PartOfTheCall, IsTakenWhenItIsWhole) {
    std::string_view rest = GetParam().output;
    FilePart part;
    EXPECT_EQ(takePart(rest, 1, part), GetParam().state);
    EXPECT_EQ(rest.size(), GetParam().state == PartState::whole ? 0 : GetParam().output.size());
}

INSTANTIATE_TEST_SUITE_P(
    , PartOfTheCall,
    ::testing::Values(
        Line{"Both", "1 0 3 0 4\nabcdefg", PartState::whole},
        Line{"Failures", "1 255 0 4294967295 0\n", PartState::whole},
        Line{"LeadingZeros", "01 00 03 000 4\nabcdefg", PartState::whole},
        Line{"Nothing", "", PartState::unfinished},
        Line{"TheLinesBeginning", "1 0 3 ", PartState::unfinished},
        Line{"TheLineWithoutItsEnd", "1 0 3 0 4", PartState::unfinished},
        Line{"TheLineAlone", "1 0 3 0 4\n", PartState::unfinished},
        Line{"OneByteTooFew", "1 0 3 0 4\nabcdef", PartState::unfinished},
        Line{"HugeSizes", "1 0 18446744073709551615 0 18446744073709551615\nab",
             PartState::unfinished},
        Line{"AnotherPosition", "2 0 3 0 4\nabcdefg", PartState::malformed},
        Line{"FourNumbers", "1 0 3 0\nabcdefg", PartState::malformed},
        Line{"SixNumbers", "1 0 3 0 4 0\nabcdefg", PartState::malformed},
        Line{"NoNumbers", "\n", PartState::malformed},
        Line{"TwoBlanks", "1  0 3 0 4\nabcdefg", PartState::malformed},
        Line{"ABlankInFront", " 1 0 3 0 4\nabcdefg", PartState::malformed},
        Line{"ABlankAtTheEnd", "1 0 3 0 4 \nabcdefg", PartState::malformed},
        Line{"ACarriageReturn", "1 0 3 0 4\r\nabcdefg", PartState::malformed},
        Line{"ASign", "1 0 +3 0 4\nabcdefg", PartState::malformed},
        Line{"ANegativeNumber", "1 -1 3 0 4\nabcdefg", PartState::malformed},
        Line{"AHexadecimalNumber", "1 0 0x3 0 4\nabcdefg", PartState::malformed},
        Line{"ATooLargeNumber", "1 0 18446744073709551616 0 4\nabc", PartState::malformed},
        Line{"AnotherText", "File name", PartState::malformed},
        Line{"ATooLongLine", std::string(100, '0') + "1 0 3 0 4\nabcdefg", PartState::malformed},
        Line{"ALineThatDoesNotEnd", std::string(105, '1'), PartState::malformed}),
    test_support::caseName<Line>);

TEST(PartsOfTheCall, AreTheFilesOutputsByteForByte) {
    const std::vector<LiteralPart> parts = {
        {true, "Exif.Image.Make Ascii 5 Maker\n", true, "Lens name : x\n"},
        {false, "", false, ""},
        {true, std::string("0 0 1 0 1\n\0\r\n\xFF", 14), true, "2 0 0 0 0\n"}};
    std::string output;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        output += printPart(i, parts[i]);
    }
    EXPECT_EQ(takeParts(output, 3), (LiteralParts{parts, false}));
}

// Changed at random places, output is read as the literal version reads it.
TEST(PartsOfTheCall, AreThoseOfTheLiteralVersion) {
    std::mt19937 random(1);
    const std::string letters = "0123456789 \n-+x";
    for (int round = 0; round < 20'000; ++round) {
        std::string output;
        for (std::size_t i = 0; i < 3; ++i) {
            output +=
                printPart(i, {random() % 2 == 0, std::string(random() % 12, '1'), true, "2 0\n"});
        }
        for (auto change = random() % 3; change > 0; --change) {
            output[random() % output.size()] = letters[random() % letters.size()];
        }
        output.resize(random() % (output.size() + 1));
        ASSERT_EQ(takeParts(output, 3), literalTakeParts(output, 3)) << output;
    }
}

// ---- the call

class ReadCall : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(initialize(tool.path()));
        tool.answerMetadata("entries\n", "summary\n");
    }

    // The files whose parts come, of so many files.
    ReadCallResult call(std::size_t count) {
        std::vector<const fs::path*> list;
        for (std::size_t i = 0; i < count; ++i) {
            list.push_back(&files[i]);
        }
        return runReadCall(list, [this](const FilePart& part) {
            parts.push_back({part.printAll.isSuccess, std::string(part.printAll.text),
                             part.summary.isSuccess, std::string(part.summary.text)});
        });
    }

    test_support::LogCapture log;
    test_support::ToolDirectory tool;
    const std::vector<fs::path> files = {tool.path() / "a.jpg", tool.path() / "b.jpg",
                                         tool.path() / "c.jpg"};
    std::vector<LiteralPart> parts;
};

TEST_F(ReadCall, IsAnsweredForEveryFile) {
    tool.knowReadCall();
    const ReadCallResult result = call(3);
    EXPECT_EQ(result.asked, 3U);
    EXPECT_EQ(result.answered, 3U);
    EXPECT_EQ(parts, std::vector<LiteralPart>(3, {true, "entries\n", true, "summary\n"}));
    EXPECT_FALSE(isReadCallRefused());
}

TEST_F(ReadCall, StopsAtThePhotoThatBringsTheToolDown) {
    tool.knowReadCall();
    const test_support::ToolDirectory other;
    ASSERT_TRUE(initialize(tool.path()));
    (void)call(1);
    tool.answer({"--read"}, {.output = "0 0 1 0 1\nab1 0 5 0", .signal = 9});
    const ReadCallResult result = call(3);
    EXPECT_EQ(result.asked, 3U);
    EXPECT_EQ(result.answered, 1U);
    EXPECT_FALSE(isReadCallRefused());
}

struct Tool {
    std::string name;
    test_support::Answer answer;
    bool isRefused;
};

void PrintTo(const Tool& tool, std::ostream* stream) {
    *stream << tool.name;
}

class FirstReadCall : public ReadCall, public ::testing::WithParamInterface<Tool> {};

TEST_P(FirstReadCall, TellsWhetherTheToolKnowsIt) {
    tool.answer({"--read"}, GetParam().answer);
    EXPECT_EQ(call(2).asked, 2U);
    EXPECT_EQ(isReadCallRefused(), GetParam().isRefused);
    EXPECT_EQ(call(2).asked, GetParam().isRefused ? 0U : 2U);
    ASSERT_TRUE(initialize(tool.path()));
    EXPECT_EQ(call(2).asked, 2U);
}

INSTANTIATE_TEST_SUITE_P(
    , FirstReadCall,
    ::testing::Values(
        Tool{"Stock", {.output = "a.jpg  File name : a.jpg\n", .exitCode = 255}, true},
        Tool{"Silent", {.exitCode = 1}, true}, Tool{"SilentAndContent", {.exitCode = 0}, true},
        Tool{"Answering", {.output = "0 0 1 0 1\nab1 0 0 0 0\n"}, false},
        Tool{"Failing", {.output = "0 0 1 0 1\nab", .exitCode = 1}, false},
        Tool{"Torn", {.output = "0 0", .exitCode = 1}, false},
        Tool{"BroughtDown", {.signal = 9}, false}),
    test_support::caseName<Tool>);

TEST_F(ReadCall, IsNotMadeForANameThatBeginsLikeAnOption) {
    tool.knowReadCall();
    const fs::path option = "-a.jpg";
    const std::vector<const fs::path*> behind = {&files[0], &option, &files[1]};
    EXPECT_EQ(runReadCall(behind, [](const FilePart&) {}).asked, 1U);
    const std::vector<const fs::path*> inFront = {&option, &files[1]};
    EXPECT_EQ(runReadCall(inFront, [](const FilePart&) {}).asked, 0U);
    EXPECT_EQ(tool.countCalls("--read"), 1U);
}

TEST_F(ReadCall, IsNotMadeForANameThatNoCommandLineHolds) {
    tool.knowReadCall();
    const fs::path longName = tool.path() / std::string(100'000, 'x');
    const std::vector<const fs::path*> list = {&longName};
    EXPECT_EQ(runReadCall(list, [](const FilePart&) {}).asked, 0U);
}

TEST_F(ReadCall, IsMadeForNamesThatFillTheLongestCommandLine) {
    tool.knowReadCall();
    const std::size_t room = kLongestCommandLine<fs::path::value_type> -
                             commandLineRoom(tool.toolPath().native()) -
                             commandLineRoom(asciiArgument("--read"));
    const fs::path longest = std::string(room - 1, 'x');
    const fs::path tooLong = std::string(room, 'x');
    const std::vector<const fs::path*> list = {&longest, &files[0]};
    EXPECT_EQ(runReadCall(list, [](const FilePart&) {}).asked, 1U);
    const std::vector<const fs::path*> listOfTooLong = {&tooLong, &files[0]};
    EXPECT_EQ(runReadCall(listOfTooLong, [](const FilePart&) {}).asked, 0U);
}

TEST_F(ReadCall, LetsAnExceptionPassAndLeavesTheToolKnown) {
    tool.knowReadCall();
    const std::vector<const fs::path*> list = {&files[0], &files[1]};
    const auto raise = [](const FilePart&) { throw std::runtime_error("enough"); };
    EXPECT_THROW((void)runReadCall(list, raise), std::runtime_error);
    EXPECT_EQ(call(2).answered, 2U);
}

}  // namespace
}  // namespace exiv2_wp::internal
