#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

// The request for a photo's tags, as the tool reads it.
std::string requestFor(const std::string& argumentLines, const std::filesystem::path& photo) {
    return "-charset\nfilename=utf8\n" + argumentLines + "\n-s2\n" + shown(photo) + "\n-execute\n";
}

class PhotoinfoTags : public PhotoinfoExiftoolTest {
protected:
    void answerTags(const std::string& lines) {
        tool.answerRequest("-s2", {.answer = {.output = lines}});
    }
    std::filesystem::path photo = tool.makeFile("photo.jpg");
};

TEST_F(PhotoinfoTags, ShowsAllSortedByName) {
    answerTags("Model: Canon EOS 6D\nISO: 200\n");

    EXPECT_EQ(photoinfo({native("tags"), photo.native()}),
              (ProgramResult{0,
                             shown(photo) + "\n"
                                            "  ISO                 200\n"
                                            "  Model               Canon EOS 6D\n",
                             ""}));
    EXPECT_EQ(tool.requests(), std::vector<std::string>{requestFor("-0all:all", photo)});
}

TEST_F(PhotoinfoTags, ShowsTheNamedOnesInTheirOrder) {
    answerTags("ISO: 200\nGPSLatitude: 46\nModel: Canon EOS 6D\n");

    EXPECT_EQ(photoinfo({native("tags"), photo.native(), native("IFD0:model"), native("Flash"),
                         native("GPS*"), native("ISO#")}),
              (ProgramResult{0,
                             shown(photo) + "\n"
                                            "  Model               Canon EOS 6D\n"
                                            "  Flash               unknown\n"
                                            "  ISO                 200\n"
                                            "  GPSLatitude         46\n",
                             ""}));
    EXPECT_EQ(tool.requests(),
              std::vector<std::string>{
                  requestFor("-0all:IFD0:model\n-0all:Flash\n-0all:GPS*\n-0all:ISO#", photo)});
}

TEST_F(PhotoinfoTags, WritesJson) {
    answerTags("Model: Canon EOS 6D\nComment: \n");

    const Json expected = {{"Model", "Canon EOS 6D"}, {"Flash", nullptr}, {"Comment", ""}};
    EXPECT_EQ(photoinfo({native("tags"), photo.native(), native("Model"), native("Flash"),
                         native("Comment"), native("--json")}),
              jsonOfOne(photo, "tags", expected));
}

TEST_F(PhotoinfoTags, TellsAnEmptyAnswerFromAToolThatIsGone) {
    tool.answerRequest("GPS", {});
    tool.answerRequest("-ExifToolVersion", {.answer = {.output = "ExifToolVersion: 12.57\n"}});

    EXPECT_EQ(photoinfo({native("tags"), photo.native(), native("GPS*")}),
              (ProgramResult{0, shown(photo) + "\n  no tags\n", ""}));
}

TEST_F(PhotoinfoTags, SaysThatTheToolDiedInTheMiddle) {
    tool.answerRequest("-s2", {.ready = false, .exit = true});

    EXPECT_EQ(photoinfo({native("tags"), photo.native()}),
              (ProgramResult{5, "",
                             "photoinfo: " + shown(tool.path()) +
                                 ": the exiftool.exe of this folder does not run\n"}));
}

TEST_F(PhotoinfoTags, PassesOnWhatTheToolSaysIsWrongWithTheFile) {
    answerTags("Error: Unknown file type\n");

    EXPECT_EQ(
        photoinfo({native("tags"), photo.native()}),
        (ProgramResult{4, "", "photoinfo: " + shown(photo) + ": exiftool: Unknown file type\n"}));
}

TEST_F(PhotoinfoTags, ShowsTheErrorWhenAskedForIt) {
    answerTags("Error: Unknown file type\n");

    EXPECT_EQ(photoinfo({native("tags"), photo.native(), native("Error")}).output,
              shown(photo) + "\n  Error               Unknown file type\n");
}

TEST_F(PhotoinfoTags, TakesNothingForATagThatCouldChangeTheFile) {
    for (const char* const name : {"Artist=Ada", "-Artist", "Artist<Model", "a b", "EXIF:", ""}) {
        EXPECT_EQ(photoinfo({native("tags"), photo.native(), native("--"), native(name)}).exitCode,
                  2)
            << name;
    }
    EXPECT_EQ(tool.calls(), std::vector<Arguments>{});
}

TEST_F(PhotoinfoTags, LetsNoEscapeCharacterThroughToTheTerminal) {
    answerTags("Artist: A\x1B[31mda\n");

    EXPECT_EQ(photoinfo({native("tags"), photo.native()}).output,
              shown(photo) + "\n  Artist              A\xEF\xBF\xBD[31mda\n");
}

TEST_F(PhotoinfoTags, SaysThatAFileIsMissing) {
    const auto missing = tool.path() / "missing.jpg";

    EXPECT_EQ(photoinfo({native("tags"), missing.native()}),
              (ProgramResult{4, "", "photoinfo: " + shown(missing) + ": no such file\n"}));
    EXPECT_EQ(tool.requests(), std::vector<std::string>{});
}

class PhotoinfoLens : public PhotoinfoTags {};

TEST_F(PhotoinfoLens, ShowsTheName) {
    answerTags("Lens: 24.0 - 105.0 mm\nLensID: Canon EF 24-105mm f/4L IS USM\n");

    EXPECT_EQ(
        photoinfo({native("lens"), photo.native()}),
        (ProgramResult{0, shown(photo) + "\n  Lens                Canon EF 24-105mm f/4L IS USM\n",
                       ""}));
    EXPECT_EQ(photoinfo({native("lens"), photo.native(), native("--json")}),
              jsonOfOne(photo, "lens", "Canon EF 24-105mm f/4L IS USM"));
}

TEST_F(PhotoinfoLens, IsUnknownWhenTheToolKnowsNone) {
    answerTags("ExifToolVersion: 12.57\n");

    EXPECT_EQ(photoinfo({native("lens"), photo.native()}),
              (ProgramResult{0, shown(photo) + "\n  Lens                unknown\n", ""}));
    EXPECT_EQ(photoinfo({native("lens"), photo.native(), native("--json")}),
              jsonOfOne(photo, "lens", nullptr));
}

TEST_F(PhotoinfoLens, SaysThatTheToolDied) {
    tool.answerRequest("-s2", {.ready = false, .exit = true});

    EXPECT_EQ(photoinfo({native("lens"), photo.native()}).exitCode, 5);
}

}  // namespace
}  // namespace test_support
