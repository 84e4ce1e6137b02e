#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

class PhotoinfoInfo : public PhotoinfoTest {
protected:
    // A photo without a 35 mm equivalent of its own.
    std::filesystem::path makeSmallSensorPhoto() {
        tool.answerMetadata(
            "Exif.Image.Make                   Ascii     6  Canon\n"
            "Exif.Image.Model                  Ascii    13  Canon EOS 7D\n"
            "Exif.Image.BitsPerSample          Short     1  8\n"
            "Exif.Photo.FNumber                Rational  1  8/1\n"
            "Exif.Photo.FocalLength            Rational  1  50/1\n"
            "Exif.Photo.ExposureBiasValue      SRational 1  -1/3\n"
            "Exif.Photo.FocalPlaneXResolution  Rational  1  5616000/1459\n"
            "Exif.Photo.FocalPlaneYResolution  Rational  1  3744000/958\n",
            "Lens name       : EF 50mm f/2\n"
            "Focal length    : 50.0 mm\n"
            "Subject distance: 0\n");
        return tool.makeFile("photo.jpg");
    }
};

TEST_F(PhotoinfoInfo, ShowsTheLensAndHowItWasSet) {
    const auto photo = makeSmallSensorPhoto();

    EXPECT_EQ(photoinfo({native("info"), photo.native()}),
              (ProgramResult{0,
                             shown(photo) + "\n"
                                            "  Lens                EF 50mm f/2\n"
                                            "  Lens identifier     unknown\n"
                                            "  Focal length        50 mm\n"
                                            "  35 mm equivalent    80.5 mm\n"
                                            "  F-number            f/8\n"
                                            "  Subject distance    0.01 m\n"
                                            "  Focus distance      unknown\n"
                                            "  35 mm, as written   unknown\n"
                                            "  Focal plane across  3849.21\n"
                                            "  Focal plane down    3908.14\n"
                                            "  Exposure bias       -0.33 EV\n"
                                            "  Bits per sample     8\n"
                                            "  Raw in TIFF's form  no\n"
                                            "  Tags                8\n",
                             ""}));
}

TEST_F(PhotoinfoInfo, WritesJsonWithEveryField) {
    const auto photo = makeSmallSensorPhoto();

    const Json expected = {{"lens",
                            {{"lensName", "EF 50mm f/2"},
                             {"focalLength", 50.0},
                             {"focalLength35mm", 80.5},
                             {"subjectDistance", 0.01},
                             {"fNumber", 8.0},
                             {"lensId", nullptr}}},
                           {"metadata",
                            {{"focusDistance", nullptr},
                             {"focalLength35mm", nullptr},
                             {"focalPlaneXResolution", 3849.2117},
                             {"focalPlaneYResolution", 3908.1418},
                             {"exposureBias", -0.33333334},
                             {"bitsPerSample", 8}}},
                           {"isTiffRaw", false},
                           {"tagCount", 8}};
    EXPECT_EQ(photoinfo({native("info"), photo.native(), native("--json")}),
              jsonOfOne(photo, "info", expected));
}

TEST_F(PhotoinfoInfo, ShowsUnknownValuesAsUnknown) {
    tool.answerMetadata("Exif.Image.Artist  Ascii  4  Ada\n");
    const auto photo = tool.makeFile("photo.jpg");

    const ProgramResult result = photoinfo({native("info"), photo.native(), native("--json")});

    const Json info = Json::parse(result.output).at(0).at("info");
    for (const char* const part : {"lens", "metadata"}) {
        for (const auto& [name, value] : info.at(part).items()) {
            EXPECT_TRUE(value.is_null()) << name << " is " << value;
        }
    }
    EXPECT_NE(
        photoinfo({native("info"), photo.native()}).output.find("  35 mm equivalent    unknown\n"),
        std::string::npos);
}

TEST_F(PhotoinfoInfo, FindsTheCropFactorOfAModelWithoutItsMaker) {
    tool.answerMetadata(
        "Exif.Image.Make         Ascii     6  Canon\n"
        "Exif.Image.Model        Ascii     7  EOS 7D\n"
        "Exif.Photo.FocalLength  Rational  1  100/1\n",
        "Focal length    : 100.0 mm\n");
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_NE(
        photoinfo({native("info"), photo.native()}).output.find("  35 mm equivalent    161 mm\n"),
        std::string::npos);
}

TEST_F(PhotoinfoInfo, KnowsTheRawFilesThatLookLikeTiff) {
    tool.answerMetadata("Exif.Image.Model  Ascii  13  Canon EOS-1D\n");
    const auto photo = tool.makeFile("photo.tif");

    EXPECT_NE(
        photoinfo({native("info"), photo.native()}).output.find("  Raw in TIFF's form  yes\n"),
        std::string::npos);
}

TEST_F(PhotoinfoInfo, SaysThatAFileHasNoMetadata) {
    const auto photo = tool.makeFile("photo.jpg");

    EXPECT_EQ(photoinfo({native("info"), photo.native()}),
              (ProgramResult{0, shown(photo) + "\n  no metadata\n", ""}));
}

}  // namespace
}  // namespace test_support
