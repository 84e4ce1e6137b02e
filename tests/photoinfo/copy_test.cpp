#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

class PhotoinfoCopy : public PhotoinfoExiftoolTest {
protected:
    PhotoinfoCopy() {
        tool.answerRequest("-MIMEType", {.answer = {.output = "MIMEType: image/tiff\n"}});
    }
    void answerCopy(const RequestAnswer& answer) { tool.answerRequest("-TagsFromFile", answer); }
    void confirmCopy() { answerCopy({.answer = {.output = "    1 image files updated\n"}}); }

    [[nodiscard]] ProgramResult copy(std::vector<NativeString> more = {}) const {
        more.insert(more.begin(), {native("copy"), source.native(), destination.native()});
        return photoinfo(more);
    }

    std::filesystem::path source = tool.makeFile("source.jpg");
    std::filesystem::path destination = tool.makeFile("destination.tif");
};

TEST_F(PhotoinfoCopy, SaysWhereTheMetadataComeFrom) {
    confirmCopy();

    EXPECT_EQ(copy(),
              (ProgramResult{
                  0, shown(destination) + "\n  Metadata from       " + shown(source) + "\n", ""}));
}

TEST_F(PhotoinfoCopy, SetsTheValuesOfTheExport) {
    confirmCopy();

    const ProgramResult result =
        copy({native("--software"), native("Editor 1.0"), native("--rating"), native("-1"),
              native("--x-resolution"), native("300"), native("--y-resolution"), native("150"),
              native("--unit"), native("cm")});

    EXPECT_EQ(result,
              (ProgramResult{0,
                             shown(destination) + "\n  Metadata from       " + shown(source) +
                                 "\n"
                                 "  Software            Editor 1.0\n"
                                 "  Rating              rejected\n"
                                 "  Resolution          300 x 150 per cm\n",
                             ""}));
    EXPECT_NE(tool.requests().back().find("-XResolution=300\n-YResolution=150\n-ResolutionUnit=3\n"
                                          "-exif:Software=Editor 1.0\n-CreatorTool=Editor 1.0\n"
                                          "-Rating=-1\n"),
              std::string::npos);
}

TEST_F(PhotoinfoCopy, SaysThatTheToolDidNotConfirm) {
    answerCopy({.answer = {.output = "    0 image files updated\n"}});
    tool.answerRequest("-ExifToolVersion", {.answer = {.output = "ExifToolVersion: 12.57\n"}});

    EXPECT_EQ(copy(), (ProgramResult{4, "",
                                     "photoinfo: " + shown(destination) +
                                         ": exiftool did not confirm that it updated this file; "
                                         "does its name fit its content?\n"}));
}

TEST_F(PhotoinfoCopy, SaysThatTheToolDied) {
    answerCopy({.ready = false, .exit = true});

    EXPECT_EQ(copy(), (ProgramResult{5, "",
                                     "photoinfo: " + shown(tool.path()) +
                                         ": the exiftool.exe of this folder does not run\n"}));
}

class PhotoinfoCopyRefuses : public PhotoinfoExiftoolTest {
protected:
    [[nodiscard]] ProgramResult copy(const std::filesystem::path& from,
                                     const std::filesystem::path& to) const {
        return photoinfo({native("copy"), from.native(), to.native()});
    }
    // No request asked the tool to write.
    [[nodiscard]] bool isNothingWritten() const {
        for (const std::string& request : tool.requests()) {
            if (request.find("-TagsFromFile") != std::string::npos) {
                return false;
            }
        }
        return true;
    }

    std::filesystem::path photo = tool.makeFile("photo.jpg");
};

TEST_F(PhotoinfoCopyRefuses, ADestinationThatIsMissing) {
    const auto missing = tool.path() / "missing.jpg";

    EXPECT_EQ(copy(photo, missing),
              (ProgramResult{4, "", "photoinfo: " + shown(missing) + ": no such file\n"}));
    EXPECT_EQ(tool.calls(), std::vector<Arguments>{});
}

TEST_F(PhotoinfoCopyRefuses, ASourceThatIsMissing) {
    const auto missing = tool.path() / "missing.jpg";

    EXPECT_EQ(copy(missing, photo),
              (ProgramResult{4, "", "photoinfo: " + shown(missing) + ": no such file\n"}));
}

TEST_F(PhotoinfoCopyRefuses, ADestinationThatIsNoImage) {
    const auto text = tool.makeFile("notes.txt");
    tool.answerRequest("-MIMEType", {.answer = {.output = "MIMEType: text/plain\n"}});
    tool.answerRequest("-ExifToolVersion", {.answer = {.output = "ExifToolVersion: 12.57\n"}});

    EXPECT_EQ(copy(photo, text),
              (ProgramResult{4, "", "photoinfo: " + shown(text) + ": is no image\n"}));
    EXPECT_TRUE(isNothingWritten());
}

TEST_F(PhotoinfoCopyRefuses, TheSourceAsDestination) {
    EXPECT_EQ(copy(photo, photo.parent_path() / "." / photo.filename()).exitCode, 4);
    EXPECT_EQ(copy(photo, photo),
              (ProgramResult{4, "", "photoinfo: " + shown(photo) + ": is the source itself\n"}));
    EXPECT_TRUE(isNothingWritten());
}

TEST_F(PhotoinfoCopyRefuses, AResolutionInPart) {
    const std::vector<NativeString> copy = {native("copy"), photo.native(), native("x.jpg")};
    std::vector<NativeString> withoutDown = copy;
    withoutDown.insert(withoutDown.end(),
                       {native("--x-resolution"), native("300"), native("--unit"), native("inch")});
    std::vector<NativeString> unitAlone = copy;
    unitAlone.insert(unitAlone.end(), {native("--unit"), native("inch")});

    EXPECT_EQ(
        photoinfo(withoutDown),
        (ProgramResult{2, "",
                       "photoinfo: --x-resolution requires --y-resolution; --help tells more\n"}));
    EXPECT_EQ(
        photoinfo(unitAlone),
        (ProgramResult{2, "", "photoinfo: --unit requires --x-resolution; --help tells more\n"}));
}

TEST_F(PhotoinfoCopyRefuses, AnUnknownUnit) {
    EXPECT_EQ(photoinfo({native("copy"), photo.native(), native("x.jpg"), native("--unit"),
                         native("ell")}),
              (ProgramResult{2, "",
                             "photoinfo: --unit: ell not in {none,inch,cm}; --help tells more\n"}));
}

TEST_F(PhotoinfoCopyRefuses, ARatingBeyondTheStars) {
    EXPECT_EQ(photoinfo({native("copy"), photo.native(), native("x.jpg"), native("--rating"),
                         native("6")})
                  .exitCode,
              2);
}

TEST_F(PhotoinfoCopyRefuses, ASoftwareNameThatWouldBecomeTwoArguments) {
    EXPECT_EQ(photoinfo({native("copy"), photo.native(), native("x.jpg"), native("--software"),
                         native("a\n-Artist=b")}),
              (ProgramResult{2, "", "photoinfo: --software: the name holds a line end\n"}));
}

}  // namespace
}  // namespace test_support
