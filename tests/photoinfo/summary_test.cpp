#include <algorithm>

#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

namespace fs = std::filesystem;

constexpr auto kWholePhoto =
    "Exif.Image.Make                              Ascii       6  Canon\n"
    "Exif.Image.Model                             Ascii      13  Canon EOS 6D\n"
    "Exif.Image.Orientation                       Short       1  6\n"
    "Exif.Image.BitsPerSample                     Short       1  8\n"
    "Exif.Photo.ExposureTime                      Rational    1  1/250\n"
    "Exif.Photo.FNumber                           Rational    1  56/10\n"
    "Exif.Photo.ISOSpeedRatings                   Short       1  200\n"
    "Exif.Photo.DateTimeOriginal                  Ascii      20  2025:09:14 19:12:08\n"
    "Exif.Photo.OffsetTime                        Ascii       7  +02:00\n"
    "Exif.Photo.ExposureBiasValue                 SRational   1  1/3\n"
    "Exif.Photo.MeteringMode                      Short       1  3\n"
    "Exif.Photo.LightSource                       Short       1  9\n"
    "Exif.Photo.WhiteBalance                      Short       1  0\n"
    "Exif.Photo.FocalLength                       Rational    1  35/1\n"
    "Exif.Photo.FocalLengthIn35mmFilm             Short       1  56\n"
    "Exif.Photo.LensSpecification                 Rational    4  24/1 105/1 4/1 56/10\n"
    "Exif.Photo.LensMake                          Ascii       6  Tamron\n"
    "Exif.Photo.LensModel                         Ascii      23  EF24-105mm f/4L IS USM\n"
    "Xmp.xmp.Rating                               XmpText     2  -1\n";

class PhotoinfoSummary : public PhotoinfoTest {};

TEST_F(PhotoinfoSummary, ShowsAnAlignedTable) {
    tool.answerMetadata(kWholePhoto);
    const auto photo = tool.makeFile("photo.jpg");

    const ProgramResult expected = {0,
                                    shown(photo) +
                                        "\n"
                                        "  Camera maker        Canon\n"
                                        "  Camera model        Canon EOS 6D\n"
                                        "  Lens maker          Tamron\n"
                                        "  Lens model          EF24-105mm f/4L IS USM\n"
                                        "  Lens focal length   24-105 mm\n"
                                        "  Lens aperture       f/4-5.6\n"
                                        "  Exposure time       1/250 s\n"
                                        "  F-number            f/5.6\n"
                                        "  ISO                 200\n"
                                        "  Exposure bias       +0.33 EV\n"
                                        "  Focal length        35 mm\n"
                                        "  35 mm equivalent    56 mm\n"
                                        "  Metering            spot\n"
                                        "  Light source        fine weather\n"
                                        "  White balance       automatic\n"
                                        "  Taken               2025:09:14 19:12:08\n"
                                        "  Taken (ISO 8601)    2025-09-14T19:12:08+02:00\n"
                                        "  Orientation         turn right by 90 degrees\n"
                                        "  Bits per sample     8\n"
                                        "  Rating              rejected\n",
                                    ""};
    EXPECT_EQ(summary({photo.native()}), expected);
}

TEST_F(PhotoinfoSummary, ShowsUnknownValuesAsUnknown) {
    tool.answerMetadata("Exif.Image.Artist  Ascii  4  Ada\n");
    const auto photo = tool.makeFile("photo.jpg");

    const ProgramResult expected = {0,
                                    shown(photo) +
                                        "\n"
                                        "  Camera maker        unknown\n"
                                        "  Camera model        unknown\n"
                                        "  Lens maker          unknown\n"
                                        "  Lens model          unknown\n"
                                        "  Lens focal length   unknown\n"
                                        "  Lens aperture       unknown\n"
                                        "  Exposure time       unknown\n"
                                        "  F-number            unknown\n"
                                        "  ISO                 unknown\n"
                                        "  Exposure bias       unknown\n"
                                        "  Focal length        unknown\n"
                                        "  35 mm equivalent    unknown\n"
                                        "  Metering            unknown\n"
                                        "  Light source        unknown\n"
                                        "  White balance       unknown\n"
                                        "  Taken               unknown\n"
                                        "  Taken (ISO 8601)    unknown\n"
                                        "  Orientation         unknown\n"
                                        "  Bits per sample     unknown\n"
                                        "  Rating              none\n",
                                    ""};
    EXPECT_EQ(summary({photo.native()}), expected);
}

TEST_F(PhotoinfoSummary, WritesJsonWithEveryField) {
    tool.answerMetadata(kWholePhoto);
    const auto photo = tool.makeFile("photo.jpg");

    const ProgramResult result = summary({photo.native(), native("--json")});

    const Json expected = Json::array({{{"file", shown(photo)},
                                        {"summary",
                                         {{"iso", 200.0},
                                          {"exposureTime", 0.004},
                                          {"focalLength", 35.0},
                                          {"fNumber", 5.6},
                                          {"focalLength35mm", 56.0},
                                          {"exposureBias", 0.33333334},
                                          {"isApple", false},
                                          {"lensFocalMin", 24.0},
                                          {"lensFocalMax", 105.0},
                                          {"lensApertureAtFocalMin", 4.0},
                                          {"lensApertureAtFocalMax", 5.6},
                                          {"bitsPerSample", 8},
                                          {"orientation", 6},
                                          {"meteringMode", 3},
                                          {"lightSource", 9},
                                          {"whiteBalance", 0},
                                          {"cameraMaker", "Canon"},
                                          {"cameraModel", "Canon EOS 6D"},
                                          {"lensMaker", "Tamron"},
                                          {"lensModel", "EF24-105mm f/4L IS USM"},
                                          {"dateTimeOriginal", "2025:09:14 19:12:08"},
                                          {"dateTimeIso", "2025-09-14T19:12:08+02:00"},
                                          {"rating", -1.0}}},
                                        {"error", nullptr}}});
    EXPECT_EQ(result, (ProgramResult{0, expected.dump(2) + "\n", ""}));
}

TEST_F(PhotoinfoSummary, WritesUnknownValuesAsNullInJson) {
    tool.answerMetadata("Exif.Image.Artist  Ascii  4  Ada\n");
    const auto photo = tool.makeFile("photo.jpg");

    const ProgramResult result = summary({photo.native(), native("--json")});

    const Json document = Json::parse(result.output);
    for (const auto& [name, value] : document.at(0).at("summary").items()) {
        if (name == "isApple") {
            EXPECT_EQ(value, Json(false));
        } else {
            EXPECT_TRUE(value.is_null()) << name << " is " << value;
        }
    }
}

TEST_F(PhotoinfoSummary, TakesMinusOneEvForABias) {
    tool.answerMetadata("Exif.Photo.ExposureBiasValue  SRational  1  -1/1\n");
    const auto photo = tool.makeFile("photo.jpg");

    const ProgramResult result = summary({photo.native()});

    EXPECT_NE(result.output.find("  Exposure bias       -1 EV\n"), std::string::npos);
}

TEST_F(PhotoinfoSummary, SaysThatAFileHasNoMetadata) {
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(summary({photo.native()}),
              (ProgramResult{0, shown(photo) + "\n  no metadata\n", ""}));
    const Json expected =
        Json::array({{{"file", shown(photo)}, {"summary", nullptr}, {"error", nullptr}}});
    EXPECT_EQ(summary({photo.native(), native("--json")}),
              (ProgramResult{0, expected.dump(2) + "\n", ""}));
}

TEST_F(PhotoinfoSummary, AnswersTheOtherFilesWhenOneIsMissing) {
    const auto missing = tool.path() / "missing.jpg";
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(summary({missing.native(), photo.native()}),
              (ProgramResult{4, shown(photo) + "\n  no metadata\n",
                             "photoinfo: " + shown(missing) + ": no such file\n"}));
}

TEST_F(PhotoinfoSummary, TellsOfAMissingFileInJsonToo) {
    const auto missing = tool.path() / "missing.jpg";

    const ProgramResult result = summary({missing.native(), native("--json")});

    const Json expected =
        Json::array({{{"file", shown(missing)}, {"summary", nullptr}, {"error", "no such file"}}});
    EXPECT_EQ(result, (ProgramResult{4, expected.dump(2) + "\n",
                                     "photoinfo: " + shown(missing) + ": no such file\n"}));
}

TEST_F(PhotoinfoSummary, TellsAFolderFromAPhoto) {
    EXPECT_EQ(summary({scratch.path().native()}),
              (ProgramResult{
                  4, "", "photoinfo: " + shown(scratch.path()) + ": is a folder, not a photo\n"}));
}

TEST_F(PhotoinfoSummary, ShowsAnEmptyFileNameAsSuch) {
    EXPECT_EQ(summary({native("")}), (ProgramResult{4, "", "photoinfo: \"\": no such file\n"}));
}

TEST_F(PhotoinfoSummary, ReportsAnAnswerThatIsNotUnderstood) {
    tool.answerMetadata("Exif.Image.Make  Ascii  6  Canon\n", "Focal length    :\n");
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(summary({photo.native()}),
              (ProgramResult{4, "",
                             "photoinfo: " + shown(photo) +
                                 ": exiv2 describes it in a way that is not understood\n"}));
}

TEST_F(PhotoinfoSummary, LetsNoEscapeCharacterThroughToTheTerminal) {
    tool.answerMetadata("Exif.Photo.DateTimeOriginal  Ascii  9  a\x1B[31m\xC2\x9B\xFF\n");
    const auto photo = tool.makeFile("photo.jpg");

    const ProgramResult result = summary({photo.native()});

    EXPECT_NE(
        result.output.find("  Taken               a\xEF\xBF\xBD[31m\xEF\xBF\xBD\xEF\xBF\xBD\n"),
        std::string::npos)
        << result.output;
}

TEST_F(PhotoinfoSummary, WritesPlainAsciiJsonForMalformedText) {
    tool.answerMetadata("Exif.Photo.DateTimeOriginal  Ascii  9  a\x1B\xC3\xBC\xC2\x9B\xFF\n");
    const auto photo = tool.makeFile("photo.jpg");

    const ProgramResult result = summary({photo.native(), native("--json")});

    EXPECT_TRUE(std::all_of(result.output.begin(), result.output.end(),
                            [](char c) { return c == '\n' || (c >= ' ' && c < '\x7F'); }));
    EXPECT_EQ(Json::parse(result.output).at(0).at("summary").at("dateTimeOriginal"),
              "a\x1B\xC3\xBC\xC2\x9B\xEF\xBF\xBD");
}

TEST_F(PhotoinfoSummary, TakesFileNamesOfAllLanguages) {
    tool.answerMetadata("Exif.Image.Make  Ascii  6  Canon\n");
    const auto photo = tool.makeFile(
        "S\xC3\xBC"
        "den \xE5\x86\x99\xE7\x9C\x9F.jpg");

    const ProgramResult result = summary({photo.native()});

    EXPECT_EQ(result.output.substr(0, result.output.find('\n')), shown(photo));
    EXPECT_EQ(result.exitCode, 0);
}

TEST_F(PhotoinfoSummary, TakesAFileNameInBracketsForOneFile) {
    EXPECT_EQ(summary({native("[a,b]")}),
              (ProgramResult{4, "", "photoinfo: ./[a,b]: no such file\n"}));
}

TEST_F(PhotoinfoSummary, TakesTheNameOfACommandForAFileBehindTheCommand) {
    EXPECT_EQ(summary({native("summary")}),
              (ProgramResult{4, "", "photoinfo: summary: no such file\n"}));
}

TEST_F(PhotoinfoSummary, AsksTheToolOnlyAboutFilesThatCanBeRead) {
    (void)summary({native("missing.jpg"), scratch.path().native()});

    EXPECT_EQ(tool.calls(), std::vector<Arguments>{{native("--version")}});
}

TEST_F(PhotoinfoSummary, DropsTheMessagesOfTheTool) {
    tool.answer({"-PXEkycv"}, {.error = "a \x1B[31m warning"});
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(summary({photo.native()}).error, "");
}

TEST_F(PhotoinfoSummary, ShowsTheLogAndTheMessagesOfTheToolWhenAsked) {
    tool.answer({"-PXEkycv"}, {.error = "a warning\n", .exitCode = 1});
    const auto photo = tool.makeFile("photo.jpg");

    const std::string error = summary({photo.native(), native("--verbose")}).error;

    EXPECT_NE(error.find("[6] exiv2 init with path "), std::string::npos) << error;
    EXPECT_NE(error.find("a warning\n"), std::string::npos) << error;
}

// ---- several photos

class SeveralPhotos : public PhotoinfoTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(SeveralPhotos, AreReadByOneRunOfAToolThatCan) {
    tool.knowReadCall();
    tool.answerMetadata("Exif.Image.Orientation  Short  1  6\nXmp.dc.title  LangAlt  1  A\n");
    const fs::path first = tool.makeFile("a.jpg");
    const fs::path second = tool.makeFile("b.jpg");

    const ProgramResult result =
        photoinfo({native(GetParam()), first.native(), (tool.path() / "missing.jpg").native(),
                   second.native()});

    EXPECT_EQ(result.exitCode, 4);
    EXPECT_NE(result.output.find(shown(second)), std::string::npos);
    EXPECT_NE(result.error.find("missing.jpg: no such file"), std::string::npos);
    const std::vector<Arguments> expected = {{native("--version")},
                                             {native("--read"), first.native(), second.native()}};
    EXPECT_EQ(tool.calls(), expected);
}

TEST_P(SeveralPhotos, AreNotReadAheadWhenThereIsOne) {
    tool.knowReadCall();
    tool.answerMetadata("Exif.Image.Orientation  Short  1  6\n");

    EXPECT_EQ(photoinfo({native(GetParam()), tool.makeFile("a.jpg").native()}).exitCode, 0);

    EXPECT_EQ(tool.countCalls("--read"), 0U);
}

INSTANTIATE_TEST_SUITE_P(Of, SeveralPhotos,
                         ::testing::Values("summary", "info", "batch", "orientation", "xmp"),
                         [](const auto& row) { return std::string(row.param); });

}  // namespace
}  // namespace test_support
