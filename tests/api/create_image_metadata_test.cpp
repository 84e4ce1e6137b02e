#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/exported_text.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace exiv2_wp {
namespace {

using namespace std::string_literals;
using test_support::failureLine;
using test_support::kReadExifMetadataSignature;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::ToolDirectory;
using test_support::toText;

class CreateImageMetadata : public ::testing::Test {
protected:
    LogCapture log;
    ToolDirectory tool;
    std::filesystem::path photo = tool.makeFile("photo.jpg");
    std::vector<SExivMetadataInfo> answers;

    void SetUp() override { ASSERT_TRUE(initialize(tool.path())); }

    void ask(const std::filesystem::path& file) {
        createImageMetadata(file,
                            [this](const SExivMetadataInfo& info) { answers.push_back(info); });
    }

    [[nodiscard]] std::vector<LogLine> failures() const { return log.linesOfType(3); }
};

TEST_F(CreateImageMetadata, CallsBackOnceWithTheSummary) {
    tool.answerMetadata(
        "Exif.Image.Make   Ascii     6  Canon\n"
        "Exif.Photo.ExposureTime Rational 1 1/125\n"
        "Xmp.xmp.Rating    XmpText   1  3\n",
        "Lens name : not part of it\n");

    ask(photo);

    ASSERT_EQ(answers.size(), 1U);
    SExivMetadataInfo expected;
    expected.exposureTime = 1.0F / 125;
    expected.lensFocalMin = expected.lensFocalMax = 0;
    expected.lensApertureAtFocalMin = expected.lensApertureAtFocalMax = 0;
    expected.cameraMaker = "Canon";
    expected.rating = 3;
    EXPECT_EQ(toText(answers.front()), toText(expected));
    EXPECT_EQ(failures(), std::vector<LogLine>());
}

TEST_F(CreateImageMetadata, CallsBackOnTheCallingThreadBeforeItReturns) {
    tool.answerMetadata("Exif.Image.Make Ascii 6 Canon\n");
    std::thread::id thread;

    createImageMetadata(photo,
                        [&](const SExivMetadataInfo&) { thread = std::this_thread::get_id(); });

    EXPECT_EQ(thread, std::this_thread::get_id());
}

TEST_F(CreateImageMetadata, AnswersEachCallFromTwoToolRunsInAll) {
    tool.answerMetadata("Exif.Image.Make Ascii 6 Canon\n");

    ask(photo);
    ask(photo);

    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(toText(answers[0]), toText(answers[1]));
    EXPECT_EQ(tool.countCalls("-PXEkycv"), 1U);
    EXPECT_EQ(tool.countCalls("pr"), 1U);
}

// As for a missing, a damaged or an unreadable file, and for a directory.
TEST_F(CreateImageMetadata, DoesNotCallBackWhenTheToolFailsAndRemembersThat) {
    tool.answer({"-PXEkycv"}, {.output = "Exif.Image.Make Ascii 6 Canon\n", .exitCode = 1});

    ask(photo);
    ask(photo);

    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(log.lines().back(), failureLine(kReadExifMetadataSignature,
                                              "Exiv2 failed run -PXEkycv cli command for ", photo));
    EXPECT_EQ(failures().size(), 1U);
    EXPECT_EQ(tool.countCalls("-PXEkycv"), 1U);
    EXPECT_EQ(tool.countCalls("pr"), 0U);
}

TEST_F(CreateImageMetadata, AsksTheToolAboutPathsThatAreNoFiles) {
    tool.answer({"-PXEkycv"}, {.exitCode = 255});
    const std::filesystem::path missing = tool.path() / "missing.jpg";

    for (const std::filesystem::path& path : {tool.path(), missing, std::filesystem::path()}) {
        ask(path);
        EXPECT_EQ(failures().back(),
                  failureLine(kReadExifMetadataSignature,
                              "Exiv2 failed run -PXEkycv cli command for ", path));
        EXPECT_EQ(tool.calls().back().back(), path.native());
    }
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(failures().size(), 3U);
}

TEST_F(CreateImageMetadata, TakesAnEmptyOutputForAFileWithoutMetadata) {
    tool.answerMetadata("", "");

    ask(photo);

    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers.front().cameraMaker, "");
    EXPECT_EQ(failures(), std::vector<LogLine>());
}

TEST_F(CreateImageMetadata, DoesNotCallBackForAnOutputWithoutAnyEntry) {
    tool.answerMetadata("no entry\n");

    ask(photo);

    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(
        failures(),
        (std::vector<LogLine>{failureLine(kReadExifMetadataSignature,
                                          "Exiv2 failed to parse PrintAll output for ", photo)}));
    EXPECT_EQ(tool.countCalls("pr"), 0U);
}

TEST_F(CreateImageMetadata, TakesAnOutputThatIsNotUtf8) {
    tool.answerMetadata(
        "\xFF\xFE \x80 \xC3\nExif.Image.Make Ascii 6 Canon\xFF\nExif.Photo.LensModel Ascii 1 \xE2\n"
        "Exif.Photo.DateTimeOriginal Ascii 1 \x80\xFF\n",
        "Lens name : \xFF\n");

    ask(photo);

    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers.front().cameraMaker, "Unknown Camera Maker");
    EXPECT_EQ(answers.front().lensModel, "");
    EXPECT_EQ(answers.front().dateTimeOriginal, "\x80\xFF");
    EXPECT_EQ(answers.front().dateTimeIso, "");
}

TEST_F(CreateImageMetadata, TakesNulBytesInTheOutput) {
    tool.answerMetadata(
        "\0\0 \0 \0\0\nExif.Image.Make Ascii 6 Can\0on\nExif.Photo.FNumber Ascii 1 4\0005\n"s,
        "Focal length : \0005\n"s);

    ask(photo);

    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers.front().cameraMaker, "Can\0on"s);
    EXPECT_EQ(answers.front().fNumber, 4);
}

constexpr std::size_t kMebibyte = 1024UL * 1024;

TEST_F(CreateImageMetadata, TakesAnOutputOf64MebibytesInManyLines) {
    const std::string line = "Exif.Image.Make Ascii 6 Canon: and then some more of it      .\n";
    std::string lines;
    while (lines.size() < kMebibyte) {
        lines += line;
    }
    tool.answer({"-PXEkycv"}, {.output = lines, .repeat = 64});
    tool.answer({"pr"}, {.output = lines, .repeat = 64});

    ask(photo);

    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers.front().cameraMaker, "Canon: and then some more of it      .");
}

TEST_F(CreateImageMetadata, TakesAnOutputOf64MebibytesInOneLine) {
    tool.answer({"-PXEkycv"}, {.output = std::string(kMebibyte, 'x') + " \t 12", .repeat = 64});
    tool.answer({"pr"}, {.output = std::string(kMebibyte, ' '), .repeat = 64});

    ask(photo);

    EXPECT_EQ(answers.size(), 1U);
    EXPECT_EQ(failures(), std::vector<LogLine>());
}

TEST_F(CreateImageMetadata, TakesALensModelOfAMillionDigits) {
    const std::string digits(kMebibyte, '7');
    tool.answerMetadata("Exif.Photo.LensSpecification Rational 2 24/1 70/1\n" +
                        "Exif.Photo.LensModel Ascii 1 "s + digits + "-70mm and 24-" + digits +
                        "mm and 18-55mm\n");

    ask(photo);

    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers.front().lensFocalMin, 0);  // the first match counts, and it is out of range
    EXPECT_EQ(answers.front().lensFocalMax, 0);
}

TEST_F(CreateImageMetadata, RaisesBadFunctionCallForAnEmptyCallbackThatHasToBeCalled) {
    tool.answerMetadata("Exif.Image.Make Ascii 6 Canon\n");

    EXPECT_THROW(createImageMetadata(photo, {}), std::bad_function_call);

    ask(photo);
    EXPECT_EQ(answers.size(), 1U);
    EXPECT_EQ(tool.countCalls("-PXEkycv"), 1U);
}

TEST_F(CreateImageMetadata, NeedsNoCallbackForAFileWithoutMetadata) {
    tool.answer({"-PXEkycv"}, {.exitCode = 1});

    EXPECT_NO_THROW(createImageMetadata(photo, {}));
}

TEST_F(CreateImageMetadata, LetsTheCallbacksExceptionPass) {
    tool.answerMetadata("Exif.Image.Make Ascii 6 Canon\n");

    EXPECT_THROW(createImageMetadata(
                     photo, [](const SExivMetadataInfo&) { throw std::runtime_error("mine"); }),
                 std::runtime_error);

    ask(photo);
    EXPECT_EQ(answers.size(), 1U);
}

TEST_F(CreateImageMetadata, RaisesOutOfRangeForASummaryLineThatEndsInItsColonAndRemembersNothing) {
    tool.answerMetadata("Exif.Image.Make Ascii 6 Canon\n", "Lens name       :\n");

    EXPECT_THROW(ask(photo), std::out_of_range);
    EXPECT_THROW(ask(photo), std::out_of_range);

    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(tool.countCalls("pr"), 2U);
}

}  // namespace
}  // namespace exiv2_wp
