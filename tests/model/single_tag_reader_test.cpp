#include "exiv2_wrapper/model/single_tag_reader.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::Arguments;
using test_support::failureLine;
using test_support::LogLine;
using test_support::native;

constexpr auto kSignature =
    "bool __cdecl exiv2_wp::`anonymous-namespace'::readCliTagValueByPrintFlags(const class "
    "std::filesystem::path &,const char *,const class std::basic_string<char,struct "
    "std::char_traits<char>,class std::allocator<char> > &,class std::basic_string<char,struct "
    "std::char_traits<char>,class std::allocator<char> > &)";

constexpr auto kKey = "Exif.Image.Orientation";

class SingleTag : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(initialize(tool.path()));
        log.clear();
    }

    test_support::LogCapture log;
    test_support::ToolDirectory tool;
    std::filesystem::path file = tool.makeFile("photo.jpg");
    std::string value = "before";
};

TEST_F(SingleTag, AsksForTheKeyWithTheFlags) {
    tool.answer({"--key"}, {.output = "Exif.Image.Orientation 1\n"});
    EXPECT_TRUE(readCliTagValueByPrintFlags(file, kKey, "kt", value));
    const std::vector<Arguments> expected = {
        {native("--version")},
        {native("--key"), native(kKey), native("--Print"), native("kt"), file.native()}};
    EXPECT_EQ(tool.calls(), expected);
}

TEST_F(SingleTag, AnEmptyKeyIsAskedForToo) {
    tool.answer({"--key", ""}, {.output = " all of it \n"});
    EXPECT_TRUE(readCliTagValueByPrintFlags(file, "", "kt", value));
    EXPECT_EQ(value, "all of it");
}

TEST_F(SingleTag, AKeyBeyondAsciiReachesTheToolWhole) {
    tool.answer({"--key", "Xmp.x.\xC3\xA4\xF0\x9F\x93\xB7"}, {.output = "1"});
    EXPECT_TRUE(readCliTagValueByPrintFlags(file, "Xmp.x.\xC3\xA4\xF0\x9F\x93\xB7", "kt", value));
}

TEST_F(SingleTag, AFailedRunIsLoggedAndLeavesTheValue) {
    tool.answer({"--key"}, {.output = "Exif.Image.Orientation 1\n", .exitCode = 1});
    EXPECT_FALSE(readCliTagValueByPrintFlags(file, kKey, "kt", value));
    EXPECT_EQ(value, "before");
    EXPECT_EQ(log.lines(), (std::vector<LogLine>{failureLine(
                               kSignature, "Exiv2 failed run --key cli command for ", file)}));
}

TEST_F(SingleTag, AnOutputOfWhiteSpaceIsLoggedAndLeavesTheValue) {
    tool.answer({"--key"}, {.output = " \t\r\n\v\f"});
    EXPECT_FALSE(readCliTagValueByPrintFlags(file, kKey, "kt", value));
    EXPECT_EQ(value, "before");
    EXPECT_EQ(log.lines(), (std::vector<LogLine>{failureLine(kSignature, "Exiv2 empty output.")}));
}

TEST_F(SingleTag, AnOutputOfTheKeyAloneFailsInSilence) {
    tool.answer({"--key"}, {.output = "Exif.Image.Orientation  \n"});
    EXPECT_FALSE(readCliTagValueByPrintFlags(file, kKey, "kt", value));
    EXPECT_EQ(value, "");
    EXPECT_TRUE(log.lines().empty());
}

struct BadText {
    const char* name;
    const char* key;
    const char* flags;
};

constexpr std::array<BadText, 3> kBadTexts = {{
    {"AStrayByteInTheKey", "Xmp.\xFF", "kt"},
    {"ACutOffSequenceInTheKey", "Xmp.\xC3", "kt"},
    {"AStrayByteInTheFlags", "Exif.Image.Make", "k\x80"},
}};

class SingleTagTexts : public SingleTag, public ::testing::WithParamInterface<BadText> {};

TEST_P(SingleTagTexts, RaiseARangeErrorBeforeAnyRunFor) {
    EXPECT_THROW(static_cast<void>(
                     readCliTagValueByPrintFlags(file, GetParam().key, GetParam().flags, value)),
                 std::range_error);
    EXPECT_EQ(tool.countCalls("--key"), 0U);
}

INSTANTIATE_TEST_SUITE_P(, SingleTagTexts, ::testing::ValuesIn(kBadTexts),
                         [](const auto& text) { return text.param.name; });

struct Output {
    const char* name;
    const char* output;
    const char* value;
};

constexpr std::array<Output, 7> kOutputs = {{
    {"TheKeyBlanksAndANumber", "Exif.Image.Orientation       1\n", "1"},
    {"WhiteSpaceInFrontOfTheKey", "\r\n  Exif.Image.Orientation 1", "1"},
    {"SeveralWordsAndLines", "Exif.Image.Orientation\ttop, left\r\n  two \r\n",
     "top, left\r\n  two"},
    {"AWarningInFrontOfTheKey", "Warning: odd\nExif.Image.Orientation 1\n",
     "Warning: odd\nExif.Image.Orientation 1"},
    {"TheKeyTwice", "Exif.Image.Orientation Exif.Image.Orientation 1", "Exif.Image.Orientation 1"},
    {"TheKeyInOtherLetterCase", "exif.image.orientation 1", "exif.image.orientation 1"},
    {"ALongerKeyThatBeginsWithIt", "Exif.Image.Orientation2 1", "2 1"},
}};

class SingleTagOutputs : public SingleTag, public ::testing::WithParamInterface<Output> {};

TEST_P(SingleTagOutputs, GiveTheValueBehindTheKeyFor) {
    tool.answer({"--key"}, {.output = GetParam().output});
    EXPECT_TRUE(readCliTagValueByPrintFlags(file, kKey, "kt", value));
    EXPECT_EQ(value, GetParam().value);
    EXPECT_TRUE(log.lines().empty());
}

INSTANTIATE_TEST_SUITE_P(, SingleTagOutputs, ::testing::ValuesIn(kOutputs),
                         [](const auto& output) { return output.param.name; });

}  // namespace
}  // namespace exiv2_wp::internal
