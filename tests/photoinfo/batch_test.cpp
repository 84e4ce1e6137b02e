#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

constexpr auto kExposure =
    "Exif.Image.DateTime           Ascii     20  2025:09:15 08:11:52\n"
    "Exif.Image.Orientation        Short      1  8\n"
    "Exif.Photo.ApertureValue      Rational   1  6/1\n"
    "Exif.Photo.DateTimeOriginal   Ascii     20  2025:09:14 19:12:08\n"
    "Exif.Photo.ExposureBiasValue  SRational  1  -1/1\n"
    "Exif.Photo.ExposureProgram    Short      1  3\n"
    "Exif.Photo.ExposureTime       Rational   1  1/250\n"
    "Exif.Photo.FNumber            Rational   1  56/10\n"
    "Exif.Photo.FocalLength        Rational   1  35/1\n"
    "Exif.Photo.ISOSpeedRatings    Short      1  200\n"
    "Exif.Photo.ShutterSpeedValue  SRational  1  8/1\n";

class PhotoinfoBatch : public PhotoinfoTest {};

TEST_F(PhotoinfoBatch, ShowsTheValuesOfEachPhoto) {
    tool.answerMetadata(kExposure);
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(photoinfo({native("batch"), photo.native()}),
              (ProgramResult{0,
                             shown(photo) + "\n"
                                            "  Exposure time       1/250 s\n"
                                            "  F-number            f/5.6\n"
                                            "  ISO                 200\n"
                                            "  Exposure bias       -1 EV\n"
                                            "  Exposure program    aperture priority\n"
                                            "  Focal length        35 mm\n"
                                            "  Shutter (APEX)      8\n"
                                            "  Aperture (APEX)     6\n"
                                            "  Orientation         turn left by 90 degrees\n"
                                            "  Taken               2025:09:14 19:12:08\n"
                                            "  Changed             2025:09:15 08:11:52\n",
                             ""}));
}

TEST_F(PhotoinfoBatch, WritesJsonWithEveryField) {
    tool.answerMetadata(kExposure);
    const auto photo = tool.makeFile("photo.jpg");

    const Json expected = {{"apertureValue", 6.0},
                           {"fNumber", 5.6},
                           {"exposureProgram", 3},
                           {"focalLength", 35.0},
                           {"shutterSpeedValue", 8.0},
                           {"exposureBiasValue", -1.0},
                           {"isoSpeedRatings", 200},
                           {"exposureTime", 0.004},
                           {"orientation", 8},
                           {"dateTimeOriginal", "2025:09:14 19:12:08"},
                           {"dateTime", "2025:09:15 08:11:52"}};
    EXPECT_EQ(photoinfo({native("batch"), photo.native(), native("--json")}),
              jsonOfOne(photo, "values", expected));
}

TEST_F(PhotoinfoBatch, ShowsUnknownValuesAsUnknown) {
    tool.answerMetadata("Exif.Photo.ISOSpeedRatings  Short  1  200\n");
    const auto photo = tool.makeFile("photo.jpg");

    const Json document =
        Json::parse(photoinfo({native("batch"), photo.native(), native("--json")}).output);

    for (const auto& [name, value] : document.at(0).at("values").items()) {
        EXPECT_EQ(value, name == "isoSpeedRatings" ? Json(200) : Json()) << name;
    }
    EXPECT_NE(
        photoinfo({native("batch"), photo.native()}).output.find("  Exposure bias       unknown\n"),
        std::string::npos);
}

TEST_F(PhotoinfoBatch, SaysThatAFileHasNoExposureValues) {
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(photoinfo({native("batch"), photo.native()}),
              (ProgramResult{0, shown(photo) + "\n  no exposure values\n", ""}));
}

}  // namespace
}  // namespace test_support
