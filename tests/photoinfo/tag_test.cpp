#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

class PhotoinfoTag : public PhotoinfoTest {
protected:
    std::filesystem::path makePhoto(const std::string& printAll) {
        tool.answerMetadata(printAll);
        return tool.makeFile("photo.jpg");
    }
    void answerByFlags(const std::string& key, const char* flags, const std::string& value) {
        tool.answer({"--key", key, "--Print", flags}, {.output = key + "  " + value + "\n"});
    }
    [[nodiscard]] ProgramResult tag(const std::filesystem::path& photo, const char* key) const {
        return photoinfo({native("tag"), photo.native(), native(key)});
    }
    [[nodiscard]] ProgramResult tagJson(const std::filesystem::path& photo, const char* key) const {
        return photoinfo({native("tag"), photo.native(), native(key), native("--json")});
    }
};

TEST_F(PhotoinfoTag, ShowsEveryFormOfANumber) {
    const auto photo = makePhoto("Exif.Photo.ISOSpeedRatings  Short  2  200 40000\n");
    answerByFlags("Exif.Photo.ISOSpeedRatings", "kh", "00 c8 9c 40");
    answerByFlags("Exif.Photo.ISOSpeedRatings", "kt", "200 40000 and more");

    EXPECT_EQ(tag(photo, "Exif.Photo.ISOSpeedRatings"),
              (ProgramResult{0,
                             shown(photo) + "\n"
                                            "  Text                200 40000\n"
                                            "  Numbers             200 40000\n"
                                            "  16-bit numbers      200\n"
                                            "  Rationals           200/1 40000/1\n"
                                            "  Signed rationals    200/1 40000/1\n"
                                            "  Bytes of the dump   00 c8 9c 40\n"
                                            "  Interpreted         200 40000\n",
                             ""}));
}

TEST_F(PhotoinfoTag, WritesEveryFormOfARationalInJson) {
    const auto photo = makePhoto("Exif.Photo.ExposureBiasValue  SRational  1  -7/3\n");
    answerByFlags("Exif.Photo.ExposureBiasValue", "kh", "ff ff ff f9 00 00 00 03");
    answerByFlags("Exif.Photo.ExposureBiasValue", "kt", "-7/3 EV");

    const Json expected = {{"text", "-7/3"},
                           {"numbers", Json::array()},
                           {"shortNumbers", {-2}},
                           {"rationals", Json::array()},
                           {"signedRationals", Json::array({Json::array({-7, 3})})},
                           {"bytes", "fffffff900000003"},
                           {"interpreted", Json::array()}};
    EXPECT_EQ(tagJson(photo, "Exif.Photo.ExposureBiasValue"), jsonOfOne(photo, "tag", expected));
}

TEST_F(PhotoinfoTag, ShowsUnknownFormsAsUnknown) {
    const auto photo = makePhoto("Exif.Image.Artist  Ascii  4  Ada\n");

    const ProgramResult result = tag(photo, "Exif.Image.Artist");

    EXPECT_EQ(result.output, shown(photo) +
                                 "\n"
                                 "  Text                Ada\n"
                                 "  Numbers             unknown\n"
                                 "  16-bit numbers      unknown\n"
                                 "  Rationals           unknown\n"
                                 "  Signed rationals    unknown\n"
                                 "  Bytes of the dump   unknown\n"
                                 "  Interpreted         unknown\n");
    const Json tag = Json::parse(tagJson(photo, "Exif.Image.Artist").output).at(0).at("tag");
    EXPECT_EQ(tag.at("bytes"), Json());
}

TEST_F(PhotoinfoTag, CutsALongListShortInTheTableAlone) {
    std::string numbers;
    for (int i = 0; i < 20; ++i) {
        numbers += " " + std::to_string(i);
    }
    const auto photo = makePhoto("Exif.Canon.Notes  Short  20 " + numbers + "\n");

    EXPECT_NE(tag(photo, "Exif.Canon.Notes")
                  .output.find("  Numbers             0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 ... "
                               "(20 in all)\n"),
              std::string::npos);
    EXPECT_EQ(
        Json::parse(tagJson(photo, "Exif.Canon.Notes").output).at(0).at("tag").at("numbers").size(),
        20U);
}

TEST_F(PhotoinfoTag, SaysThatThereIsNoSuchTag) {
    const auto photo = makePhoto("Exif.Image.Artist  Ascii  4  Ada\n");

    EXPECT_EQ(tag(photo, "Exif.Image.artist"),
              (ProgramResult{0, shown(photo) + "\n  no such tag\n", ""}));
    EXPECT_EQ(tagJson(photo, "Exif.Image.artist"), jsonOfOne(photo, "tag", nullptr));
    EXPECT_EQ(tool.countCalls("--key"), 0U);
}

TEST_F(PhotoinfoTag, LetsNoEscapeCharacterThroughToTheTerminal) {
    const auto photo = makePhoto("Exif.Image.Artist  Ascii  4  A\x1B[31mda\n");

    EXPECT_NE(
        tag(photo, "Exif.Image.Artist").output.find("  Text                A\xEF\xBF\xBD[31mda\n"),
        std::string::npos);
}

TEST_F(PhotoinfoTag, TakesFileNamesOfAllLanguages) {
    tool.answerMetadata("Exif.Image.Artist  Ascii  4  Ada\n");
    const auto photo = tool.makeFile(
        "S\xC3\xBC"
        "d.jpg");

    EXPECT_EQ(tag(photo, "Exif.Image.Artist").exitCode, 0);
}

}  // namespace
}  // namespace test_support
