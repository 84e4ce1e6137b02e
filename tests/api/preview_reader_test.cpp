#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "api/preview_fixture.h"

namespace exiv2_wp {
namespace {

using test_support::Arguments;
using test_support::failureLine;
using test_support::LogLine;
using test_support::native;
using Told = std::vector<std::string>;

// ---- what the tool is asked

class PreviewRequest : public PhotoWithPreview {
protected:
    [[nodiscard]] Arguments request() const { return tool.calls().back(); }
};

TEST_F(PreviewRequest, AsksForTheLargerSizeTwice) {
    read(640, 480, "jpg");
    EXPECT_EQ(request(), (Arguments{native("-ep"), file.native(), native("640"), native("640"),
                                    native("jpg")}));
}

TEST_F(PreviewRequest, AsksForTheSecondSizeWhenItIsLarger) {
    read(-5, 2147483647, "jpg");
    EXPECT_EQ(request(), (Arguments{native("-ep"), file.native(), native("2147483647"),
                                    native("2147483647"), native("jpg")}));
}

TEST_F(PreviewRequest, AsksForOnePixelAtLeast) {
    read(0, 0, "jpg");
    EXPECT_EQ(request(),
              (Arguments{native("-ep"), file.native(), native("1"), native("1"), native("jpg")}));
}

TEST_F(PreviewRequest, TakesAMissingFormatFromTheExtensionAsItIsWritten) {
    file = tool.makeFile("photo.tar.NEF");
    read(1, 1);
    EXPECT_EQ(request(),
              (Arguments{native("-ep"), file.native(), native("1"), native("1"), native("NEF")}));
}

TEST_F(PreviewRequest, OfAFileWithoutExtensionNamesNoFormat) {
    file = tool.makeFile(".photo");
    read(1, 1);
    EXPECT_EQ(request(), (Arguments{native("-ep"), file.native(), native("1"), native("1")}));
}

TEST_F(PreviewRequest, OfAFileThatEndsInADotNamesNoFormat) {
    file /= "photo.";
    read(1, 1);
    EXPECT_EQ(request(), (Arguments{native("-ep"), file.native(), native("1"), native("1")}));
}

TEST_F(PreviewRequest, PassesAFormatBeyondAsciiOn) {
    tool.answer({"-ep"}, {.output = "1 1 0 0 0 0\nx"});
    read(1, 1, "\xC3\xA4");
    EXPECT_EQ(request().back(), std::filesystem::path(u8"\u00E4").native());
}

TEST_F(PreviewRequest, PassesAnExtensionBeyondAsciiOn) {
    file = tool.makeFile("photo.\xC3\xA4");
    read(1, 1);
    EXPECT_EQ(request().back(), std::filesystem::path(u8"\u00E4").native());
}

TEST_F(PreviewRequest, RaisesARangeErrorForAMalformedFormat) {
    EXPECT_THROW(read(1, 1, "\xFF"), std::range_error);
    EXPECT_EQ(tool.countCalls("-ep"), 0U);
}

// ---- what the host is told

class Preview : public PhotoWithPreview {};

TEST_F(Preview, IsHandedOverPlainInModeZero) {
    toolPrints("160 120 0 0 3 4\nJPEG");
    EXPECT_TRUE(read());
    EXPECT_EQ(told, (Told{"size 160 120 640", "plain JPEG 3 4"}));
}

TEST_F(Preview, IsHandedOverWithItsSizeInModeOne) {
    toolPrints("2000 1000 0 1 20 30\nRAW");
    EXPECT_TRUE(read());
    EXPECT_EQ(told, (Told{"size 2000 1000 640", "sized RAW 2000 950 20 30 640"}));
}

TEST_F(Preview, OfOnePixelIsHandedOver) {
    toolPrints("1 1 0 0 0 0\nJPEG");
    EXPECT_TRUE(read());
    EXPECT_EQ(told, (Told{"size 1 1 640", "plain JPEG 0 0"}));
}

TEST_F(Preview, WithANotificationTellsItBetweenSizeAndBytes) {
    toolPrints("160 120 5 0 0 0\nJPEG");
    read();
    EXPECT_EQ(told, (Told{"size 160 120 640", "notify 5", "plain JPEG 0 0"}));
}

TEST_F(Preview, WithTheLeastNotificationTellsIt) {
    toolPrints("160 120 1 0 0 0\nJPEG");
    read();
    EXPECT_EQ(told, (Told{"size 160 120 640", "notify 1", "plain JPEG 0 0"}));
}

TEST_F(Preview, WithANegativeNotificationTellsNone) {
    toolPrints("160 120 -5 0 0 0\nJPEG");
    read();
    EXPECT_EQ(told, (Told{"size 160 120 640", "plain JPEG 0 0"}));
}

TEST_F(Preview, OfAnyBytesIsHandedOverWhole) {
    const std::string payload("\xFF\xD8\0\0\r\n \x80", 8);
    toolPrints("160 120 0 0 0 0\r\n" + payload);
    read();
    EXPECT_EQ(told, (Told{"size 160 120 640", "plain " + payload + " 0 0"}));
}

TEST_F(Preview, BehindWhiteSpaceLosesItsOwn) {
    toolPrints("160 120 0 0 0 0\n\n\t JPEG ");
    read();
    EXPECT_EQ(told, (Told{"size 160 120 640", "plain JPEG  0 0"}));
}

TEST_F(Preview, LogsNothing) {
    toolPrints("160 120 0 0 0 0\nJPEG");
    read();
    EXPECT_TRUE(log.lines().empty());
}

struct Rows {
    const char* name;
    const char* header;  // behind the width
    const char* told;    // height and offsets
};

constexpr std::array<Rows, 5> kRows = {{
    {"OffsetsThatLeaveSome", "1000 0 1 20 30", "950 20 30"},
    {"OffsetsThatLeaveNone", "1000 0 1 600 600", "0 600 600"},
    {"OffsetsThatLeaveOne", "1000 0 1 999 0", "1 999 0"},
    {"NegativeOffsets", "1000 0 1 -20 -30", "1050 -20 -30"},
    // 1000 + 2^31 - 1 in 32 bits is negative.
    {"OffsetsThatWrapAround", "1000 0 1 -2147483647 0", "0 -2147483647 0"},
}};

class PreviewRows : public PhotoWithPreview, public ::testing::WithParamInterface<Rows> {};

TEST_P(PreviewRows, AreWhatLiesBetween) {
    toolPrints(std::string("9 ") + GetParam().header + "\nRAW");
    EXPECT_TRUE(read());
    EXPECT_EQ(told.back(), std::string("sized RAW 9 ") + GetParam().told + " 640");
}

INSTANTIATE_TEST_SUITE_P(, PreviewRows, ::testing::ValuesIn(kRows),
                         [](const auto& rows) { return rows.param.name; });

// ---- failures

struct Failure {
    const char* name;
    const char* output;
    const char* message;
    TopBottomOffset offset;
};

void PrintTo(const Failure& failure, std::ostream* stream) {
    *stream << ::testing::PrintToString(failure.output);
}

constexpr TopBottomOffset kUntouched = {-7, -7};

constexpr std::array<Failure, 10> kFailures = {{
    {"AnUnreadableHeader", "160 120 0 0 JPEG", "Exiv2 failed to extract param for ", kUntouched},
    {"NoOutput", "", "Exiv2 failed to extract param for ", kUntouched},
    {"AWidthOfZero", "0 120 0 0 3 4\nJPEG", "Exiv2 incorrect preview size extracted for ", {3, 4}},
    {"ANegativeWidth",
     "-1 120 0 0 3 4\nJPEG",
     "Exiv2 incorrect preview size extracted for ",
     {3, 4}},
    {"AHeightOfZero", "160 0 0 0 3 4\nJPEG", "Exiv2 incorrect preview size extracted for ", {3, 4}},
    {"ANegativeHeight",
     "160 -1 0 0 3 -4\nJPEG",
     "Exiv2 incorrect preview size extracted for ",
     {3, -4}},
    {"AModeAboveOne", "160 120 0 2 3 4\nJPEG", "Exiv2 incorrect format extracted for ", {3, 4}},
    {"AModeBelowZero", "160 120 0 -1 3 4", "Exiv2 incorrect format extracted for ", {3, 4}},
    {"NothingBehindTheHeader",
     "160 120 0 0 3 4",
     "Exiv2 failed to handle output size for ",
     {3, 4}},
    {"ALineFeedAloneBehindTheHeader",
     "160 120 0 0 3 4\n",
     "Exiv2 incorrect blob size for ",
     {3, 4}},
}};

class PreviewFailure : public PhotoWithPreview, public ::testing::WithParamInterface<Failure> {};

TEST_P(PreviewFailure, IsLoggedAndTellsTheHostNothingFor) {
    toolPrints(GetParam().output);
    EXPECT_FALSE(read());
    EXPECT_EQ(log.lines(),
              (std::vector<LogLine>{failureLine(kPreviewSignature, GetParam().message, file)}));
    EXPECT_EQ(told, Told());
    EXPECT_EQ(offset.top, GetParam().offset.top);
    EXPECT_EQ(offset.bottom, GetParam().offset.bottom);
}

TEST_P(PreviewFailure, IsRememberedFor) {
    toolPrints(GetParam().output);
    EXPECT_FALSE(read());
    log.clear();
    EXPECT_FALSE(read());
    EXPECT_EQ(tool.countCalls("-ep"), 1U);
    EXPECT_TRUE(log.lines().empty());
}

INSTANTIATE_TEST_SUITE_P(, PreviewFailure, ::testing::ValuesIn(kFailures),
                         [](const auto& failure) { return failure.param.name; });

TEST_F(Preview, OfAFailedRunIsLoggedAndRemembered) {
    tool.answer({"-ep"}, {.output = "160 120 0 0 3 4\nJPEG", .exitCode = 1});
    EXPECT_FALSE(read());
    EXPECT_FALSE(read());
    EXPECT_EQ(tool.countCalls("-ep"), 1U);
    EXPECT_EQ(log.lines(), (std::vector<LogLine>{failureLine(
                               kPreviewSignature, "Exiv2 failed run -ep cli command for ", file)}));
    EXPECT_EQ(offset.top, -7);
}

TEST_F(Preview, OfADngWithoutOneFailsInSilenceAndIsRemembered) {
    file = tool.makeFile("photo.DNG");
    toolPrints("none");
    EXPECT_FALSE(read());
    EXPECT_FALSE(read());
    EXPECT_EQ(tool.countCalls("-ep"), 1U);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(Preview, OfAFormatCalledDngWithoutOneFailsInSilence) {
    toolPrints("none");
    EXPECT_FALSE(read(640, 480, "dNg"));
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(Preview, OfAFormatThatBeginsWithDngIsLogged) {
    toolPrints("none");
    EXPECT_FALSE(read(640, 480, "dngx"));
    EXPECT_FALSE(read(640, 481, "dn"));
    EXPECT_EQ(log.lines().size(), 2U);
}

TEST_F(Preview, OfADngWithAWrongSizeIsLogged) {
    toolPrints("0 0 0 0 0 0\nJPEG");
    EXPECT_FALSE(read(640, 480, "dng"));
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST_F(Preview, ThatTheHostRefusesIsAskedForAgain) {
    toolPrints("160 120 0 0 3 4\nJPEG");
    hostAnswer = false;
    EXPECT_FALSE(read());
    hostAnswer = true;
    EXPECT_TRUE(read());
    EXPECT_EQ(tool.countCalls("-ep"), 2U);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(Preview, ThatFailedIsAskedForInAnotherSize) {
    EXPECT_FALSE(read(640, 480));
    EXPECT_FALSE(read(480, 640));
    EXPECT_EQ(tool.countCalls("-ep"), 2U);
}

// Both ask the tool for 640, but the key is made of the sizes as they were passed.
TEST_F(Preview, ThatFailedIsRememberedBySizesAsPassed) {
    EXPECT_FALSE(read(640, 480));
    EXPECT_FALSE(read(640, 479));
    EXPECT_EQ(tool.countCalls("-ep"), 2U);
}

TEST_F(Preview, ThatFailedIsRememberedWhateverTheFormat) {
    EXPECT_FALSE(read(640, 480, "jpg"));
    EXPECT_FALSE(read(640, 480, "nef"));
    EXPECT_EQ(tool.countCalls("-ep"), 1U);
}

TEST_F(Preview, ThatFailedIsRememberedForAPathInOtherLetterCase) {
    EXPECT_FALSE(read());
    file = file.parent_path() / "PHOTO.JPG";
    EXPECT_FALSE(read());
    EXPECT_EQ(tool.countCalls("-ep"), 1U);
}

// The sizes stand where the path's first characters were, so one failure covers both.
TEST_F(Preview, ThatFailedIsRememberedForAPathThatDiffersOnlyInItsBeginning) {
    const std::filesystem::path root = file.root_path();
    const std::filesystem::path rest = file.relative_path().filename();
    file = root / "one" / tool.path().filename() / rest;
    EXPECT_FALSE(read());
    file = root / "two" / tool.path().filename() / rest;
    EXPECT_FALSE(read());
    EXPECT_EQ(tool.countCalls("-ep"), 1U);
}

// ---- callbacks that are missing

TEST_F(Preview, NeedsTheCallbacksThatItCalls) {
    toolPrints("160 120 1 0 0 0\nJPEG");
    const auto onSize = [](int, int, int) {};
    const auto onNotify = [](int) {};
    EXPECT_THROW(readExiv2Thumbnail(file, "", 1, 1, offset, nullptr, onNotify, nullptr, nullptr),
                 std::bad_function_call);
    EXPECT_THROW(readExiv2Thumbnail(file, "", 1, 1, offset, onSize, nullptr, nullptr, nullptr),
                 std::bad_function_call);
    EXPECT_THROW(readExiv2Thumbnail(file, "", 1, 1, offset, onSize, onNotify, nullptr, nullptr),
                 std::bad_function_call);
}

TEST_F(Preview, NeedsNoCallbackThatItDoesNotCall) {
    toolPrints("160 120 0 0 0 0\nJPEG");
    EXPECT_TRUE(readExiv2Thumbnail(
        file, "", 1, 1, offset, [](int, int, int) {}, nullptr,
        [](const unsigned char*, std::uint64_t, const TopBottomOffset&) { return true; }, nullptr));
}

// ---- several threads

TEST_F(Preview, AskedForTwiceAtOnceMayRunTheToolTwice) {
    tool.answer({"-ep"}, {.exitCode = 1, .gate = "go"});
    std::array<bool, 2> results = {true, true};
    {
        const auto ask = [this](bool& result) {
            TopBottomOffset own;
            result =
                readExiv2Thumbnail(file, "", 640, 480, own, nullptr, nullptr, nullptr, nullptr);
        };
        std::jthread first(ask, std::ref(results[0]));
        std::jthread second(ask, std::ref(results[1]));
        EXPECT_TRUE(tool.waitForCalls(3));  // the first call was --version
        tool.openGate("go");
    }
    EXPECT_EQ(results, (std::array<bool, 2>{false, false}));
    EXPECT_FALSE(read());
    EXPECT_EQ(tool.countCalls("-ep"), 2U);
}

}  // namespace
}  // namespace exiv2_wp
