#include "exiv2_wrapper/exiftool/metadata_copy.h"

#include <gtest/gtest.h>

#include <limits>

#include "exiftool/running_tool.h"
#include "support/comma_locale.h"
#include "support/log_capture.h"

namespace exiftool {
namespace {

using internal::makeCopyRequest;
using test_support::inRequest;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::RequestCapture;
using test_support::runningTool;
using test_support::uniqueFile;

const std::string kPixels =
    "-Orientation=1\n-ThumbnailImage=\n-ExifImageWidth=\n-ExifImageHeight=\n-ExtraSamples=\n"
    "--exif:ColorSpace\n";

class CopyRequest : public ::testing::Test {
protected:
    // The request between the pixel lines and the destination: what the parameters add.
    [[nodiscard]] std::string addedBy(const ExportMetadataParameters& parameters) const {
        const std::string request = makeCopyRequest(source, destination, parameters);
        const std::string begin =
            "-TagsFromFile\n" + inRequest(source) + "\n-n\n-all:all\n" + kPixels;
        const std::string end = inRequest(destination) + "\n-overwrite_original";
        EXPECT_TRUE(request.starts_with(begin)) << request;
        EXPECT_TRUE(request.ends_with(end)) << request;
        return request.substr(begin.size(), request.size() - begin.size() - end.size());
    }

    std::filesystem::path source = uniqueFile("source.nef");
    std::filesystem::path destination = uniqueFile("export.tif");
};

TEST_F(CopyRequest, CopiesAllTagsAndDropsWhatDescribedTheSourcesPixels) {
    EXPECT_EQ(makeCopyRequest(source, destination, {}),
              "-TagsFromFile\n" + inRequest(source) + "\n-n\n-all:all\n" + kPixels +
                  inRequest(destination) + "\n-overwrite_original");
}

TEST_F(CopyRequest, MapsTagsToXmpForAPng) {
    for (const char* const name : {"export.png", "export.PNG", "export.Png"}) {
        destination = uniqueFile(name);
        EXPECT_EQ(makeCopyRequest(source, destination, {}),
                  "-TagsFromFile\n" + inRequest(source) +
                      "\n-n\n-all:all>xmp:all\n-serialnumber>xmp-aux:serialnumber\n"
                      "-lensmodel>xmp-aux:lens\n-flash\n" +
                      kPixels + inRequest(destination) + "\n-overwrite_original");
    }
}

TEST_F(CopyRequest, TakesNothingButPngForPng) {
    for (const char* const name : {"export.apng", "export.png.tif", "png", "export"}) {
        destination = uniqueFile(name);
        EXPECT_NE(makeCopyRequest(source, destination, {}).find("\n-all:all\n"), std::string::npos)
            << name;
    }
}

TEST_F(CopyRequest, WritesTheResolutionWhenAllThreePartsAreGiven) {
    EXPECT_EQ(addedBy({300, 240, 2, "", -100.0F}),
              "-XResolution=300\n-YResolution=240\n-ResolutionUnit=2\n");
    EXPECT_EQ(addedBy({1, 1, 1, "", -100.0F}),
              "-XResolution=1\n-YResolution=1\n-ResolutionUnit=1\n");
}

TEST_F(CopyRequest, WritesNoResolutionWhenAPartIsMissing) {
    EXPECT_EQ(addedBy({0, 300, 2, "", -100.0F}), "");
    EXPECT_EQ(addedBy({300, 0, 2, "", -100.0F}), "");
    EXPECT_EQ(addedBy({300, 300, 0, "", -100.0F}), "");
    EXPECT_EQ(addedBy({-300, 300, 2, "", -100.0F}), "");
}

TEST_F(CopyRequest, WritesTheSoftwareToTwoTags) {
    EXPECT_EQ(addedBy({0, 0, 0, "Editor \xC3\xA4 1.0", -100.0F}),
              "-exif:Software=Editor \xC3\xA4 1.0\n-CreatorTool=Editor \xC3\xA4 1.0\n");
}

TEST_F(CopyRequest, WritesNoSoftwareWhenItIsEmpty) {
    EXPECT_EQ(addedBy({0, 0, 0, "", -100.0F}), "");
}

struct RatingCase {
    const char* name;
    float rating;
    const char* line;
};

class CopyRating : public CopyRequest, public ::testing::WithParamInterface<RatingCase> {};

TEST_P(CopyRating, IsWritten) {
    EXPECT_EQ(addedBy({0, 0, 0, "", GetParam().rating}), GetParam().line);
}

const RatingCase kRatingCases[] = {
    {"Whole", 3.0F, "-Rating=3\n"},
    {"Half", 2.5F, "-Rating=2.5\n"},
    {"Zero", 0.0F, "-Rating=0\n"},
    {"Rejected", -1.0F, "-Rating=-1\n"},
    {"JustAboveTheLimit", -1.99999F, "-Rating=-1.99999\n"},
    {"TheLimitIsntWritten", -2.0F, ""},
    {"BelowTheLimitIsntWritten", -100.0F, ""},
    {"NotANumberIsntWritten", std::numeric_limits<float>::quiet_NaN(), ""},
    {"SixDigits", 3.14159265F, "-Rating=3.14159\n"},
    {"Large", 1e7F, "-Rating=1e+07\n"},
    {"Small", 0.00001F, "-Rating=1e-05\n"},
    {"Infinite", std::numeric_limits<float>::infinity(), "-Rating=inf\n"},
};

INSTANTIATE_TEST_SUITE_P(CopyRequest, CopyRating, ::testing::ValuesIn(kRatingCases),
                         [](const auto& testInfo) { return testInfo.param.name; });

TEST_F(CopyRequest, IsTheSameInALocaleWithADecimalComma) {
    const test_support::CommaLocale locale;
    EXPECT_EQ(addedBy({1200, 2400, 2, "", 2.5F}),
              "-XResolution=1200\n-YResolution=2400\n-ResolutionUnit=2\n-Rating=2.5\n");
}

TEST_F(CopyRequest, PutsItsPartsInOrder) {
    EXPECT_EQ(addedBy({300, 300, 2, "Editor", 4.0F}),
              "-XResolution=300\n-YResolution=300\n-ResolutionUnit=2\n-exif:Software=Editor\n"
              "-CreatorTool=Editor\n-Rating=4\n");
}

// ---- maker notes

struct MakernotesCase {
    const char* name;
    const char* destination;
    const char* answer;
    bool isDropped;
};

class CopyMakernotes : public ::testing::TestWithParam<MakernotesCase> {};

TEST_P(CopyMakernotes, FollowTheSizeRule) {
    const auto source = uniqueFile("source.nef");
    const auto destination = uniqueFile(GetParam().destination);
    runningTool().answerRequest(inRequest(source) + "\n-s3",
                                {.answer = {.output = GetParam().answer}});

    const std::string request = makeCopyRequest(source, destination, {});

    EXPECT_EQ(
        request.ends_with("--makernotes\n" + inRequest(destination) + "\n-overwrite_original"),
        GetParam().isDropped);
    EXPECT_EQ(request.find("--makernotes") != std::string::npos, GetParam().isDropped);
}

const MakernotesCase kMakernotesCases[] = {
    {"KeptAtTheLimit", "export.jpg", "(Binary data 60000 bytes)", false},
    {"DroppedAboveTheLimit", "export.jpg", "(Binary data 60001 bytes)", true},
    {"DroppedAboveTheLimitForJpeg", "export.JPEG", "(Binary data 60001 bytes)", true},
    {"DroppedForAWarning", "export.jpg", "Warning: bad maker notes", true},
    {"DroppedForAnUnusableNumber", "export.jpg", "99999999999", true},
    {"KeptWhenThereAreNone", "export.jpg", "", false},
    {"KeptInATiff", "export.tif", "(Binary data 60001 bytes)", false},
    {"KeptInAPng", "export.png", "(Binary data 60001 bytes)", false},
};

INSTANTIATE_TEST_SUITE_P(CopyRequest, CopyMakernotes, ::testing::ValuesIn(kMakernotesCases),
                         [](const auto& testInfo) { return testInfo.param.name; });

TEST(CopyMetadata, AsksForTheMakerNotesBeforeItSendsACopyToAJpeg) {
    const auto source = uniqueFile("source.nef");
    const auto destination = uniqueFile("export.jpg");
    RequestCapture capture;

    EXPECT_FALSE(copyMetadata(source, destination, ExportMetadataParameters{}));

    const std::vector<std::string> expected = {
        "-charset\nfilename=utf8\n" + inRequest(source) + "\n-s3\n-makernotes\n\n-execute\n",
        "-charset\nfilename=utf8\n-TagsFromFile\n" + inRequest(source) + "\n-n\n-all:all\n" +
            kPixels + inRequest(destination) + "\n-overwrite_original\n-execute\n"};
    EXPECT_EQ(capture.requests(), expected);
}

TEST(CopyMetadata, DoesntAskForTheMakerNotesOtherwise) {
    RequestCapture capture;
    static_cast<void>(copyMetadata(uniqueFile("source.nef"), uniqueFile("export.tif"),
                                   ExportMetadataParameters{}));
    EXPECT_EQ(capture.requests().size(), 1U);
}

TEST(CopyMetadata, NeverWritesARatingThroughTheTuple) {
    const auto source = uniqueFile("source.nef");
    const auto destination = uniqueFile("export.tif");
    RequestCapture capture;

    static_cast<void>(copyMetadata(source, destination,
                                   std::tuple<int, int, int, std::string>(300, 240, 2, "E")));

    EXPECT_EQ(capture.requests(),
              std::vector<std::string>{
                  "-charset\nfilename=utf8\n-TagsFromFile\n" + inRequest(source) +
                  "\n-n\n-all:all\n" + kPixels +
                  "-XResolution=300\n-YResolution=240\n-ResolutionUnit=2\n-exif:Software=E\n"
                  "-CreatorTool=E\n" +
                  inRequest(destination) + "\n-overwrite_original\n-execute\n"});
}

struct AnswerCase {
    const char* name;
    const char* answer;
    bool isSuccess;
};

class CopyAnswer : public ::testing::TestWithParam<AnswerCase> {};

TEST_P(CopyAnswer, Decides) {
    LogCapture log;
    const auto destination = uniqueFile("export.tif");
    runningTool().answerRequest(inRequest(destination), {.answer = {.output = GetParam().answer}});

    EXPECT_EQ(copyMetadata(uniqueFile("source.nef"), destination, ExportMetadataParameters{}),
              GetParam().isSuccess);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

const AnswerCase kAnswerCases[] = {
    {"Updated", "    1 image files updated\n", true},
    {"UpdatedWithAWarning", "Warning: x\n    1 image files updated\n", true},
    {"NoneUpdated", "    0 image files updated\n", false},
    {"TwoUpdated", "    2 image files updated\n", false},
    {"ElevenUpdatedHoldsTheSentence", "   11 image files updated\n", true},
    {"Refused", "Error: Not a valid TIFF - export.tif\n    0 image files updated\n", false},
    {"Silence", "", false},
};

INSTANTIATE_TEST_SUITE_P(CopyMetadata, CopyAnswer, ::testing::ValuesIn(kAnswerCases),
                         [](const auto& testInfo) { return testInfo.param.name; });

}  // namespace
}  // namespace exiftool
