#include <set>

#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

namespace fs = std::filesystem;

constexpr auto kConfirmation = "    1 image files updated\n";

/// Both stand-ins in one folder, working until a test says otherwise.
class PhotoinfoDoctor : public PhotoinfoProgramTest {
protected:
    void letExiv2Work() {
        tool.answer({"--version"}, {.output = "exiv2 0.27.6\nand more\n"});
        tool.answerMetadata("Exif.Image.Model  Ascii  6  probe\n",
                            "Lens name       : A probe lens\nSubject distance: 0.959176\n");
        tool.answer({"--key"}, {.output = "Exif.Photo.FNumber 00 00 00 08 00 00 00 01\n"});
        tool.answer({"-ep"}, {.output = "8 8 0 0 0 0\nbytes"});
        tool.knowReadCall();
    }
    static void letWork(ToolDirectory& exiftool) {
        exiftool.answerRequest("-ExifToolVersion",
                               {.answer = {.output = "ExifToolVersion: 12.57\n"}});
        exiftool.answerRequest("-Model", {.answer = {.output = "Model: probe\n"}});
        exiftool.answerRequest("-TagsFromFile", {.answer = {.output = kConfirmation}});
    }
    [[nodiscard]] ProgramResult doctor() const { return runWith(tool, {native("doctor")}); }

    [[nodiscard]] std::string report(const std::vector<std::string>& lines) const {
        std::string text = shown(tool.path()) + "\n";
        for (const std::string& line : lines) {
            text += "  " + line + "\n";
        }
        return text;
    }

    ToolDirectory tool;
};

TEST_F(PhotoinfoDoctor, FindsNothingWrongWithAGoodToolDirectory) {
    letExiv2Work();
    ToolDirectory exiftool("exiftool.exe", tool);
    letWork(exiftool);

    EXPECT_EQ(
        doctor(),
        (ProgramResult{
            0,
            report({"exiv2.exe           ok: found", "exiv2 starts        ok: exiv2 0.27.6",
                    "exiv2 reads         ok: the metadata of a photo",
                    "exiv2 lens names    ok: as the photo has them",
                    "exiv2 tag bytes     ok: exactly the tag's",
                    "exiv2 distances     ok: in metres", "exiv2 file names    ok: of any alphabet",
                    "exiv2 previews      ok: the preview call is known",
                    "exiv2 reads ahead   ok: many photos by one run",
                    "exiftool.exe        ok: found", "exiftool stays      ok: exiftool 12.57",
                    "exiftool is quiet   ok", "exiftool reads      ok: the tags of a photo",
                    "exiftool copies     ok: metadata into an image"}),
            ""}));
}

// The stock tool's ways. A tool that has them serves.
TEST_F(PhotoinfoDoctor, NamesThePromisesThatAToolDoesNotKeep) {
    tool.answerMetadata("Exif.Image.Model  Ascii  6  probe\n", "Subject distance: 2.50 m\n");
    tool.answer(
        {"--key"},
        {.output = "Exif.Photo.FNumber\n  0000  00 00 00 08 00 00 00 01        ........\n"});
    letExiv2Work();
    ToolDirectory exiftool("exiftool.exe", tool);
    letWork(exiftool);

    const ProgramResult result = doctor();

    EXPECT_EQ(result.exitCode, 0);
    for (const std::string check :
         {"exiv2 lens names    ", "exiv2 tag bytes     ", "exiv2 distances     "}) {
        EXPECT_NE(result.output.find("  " + check +
                                     "missing: not with this exiv2.exe; the one of this project "
                                     "does\n"),
                  std::string::npos)
            << check;
    }
}

TEST_F(PhotoinfoDoctor, WarnsOfAToolWithoutThePreviewCall) {
    tool.answer({"-ep"}, {.exitCode = 1});
    letExiv2Work();
    ToolDirectory exiftool("exiftool.exe", tool);
    letWork(exiftool);

    const ProgramResult result = doctor();

    EXPECT_EQ(result.exitCode, 6);
    EXPECT_NE(result.output.find("  exiv2 previews      missing: not with this exiv2.exe; "
                                 "the one of this project does\n"),
              std::string::npos);
}

// A list is read without the call too, so nothing is wrong.
TEST_F(PhotoinfoDoctor, TellsOfAToolThatReadsPhotoByPhoto) {
    tool.answer({"--read"}, {.output = "another answer", .exitCode = 255});
    letExiv2Work();
    ToolDirectory exiftool("exiftool.exe", tool);
    letWork(exiftool);

    const ProgramResult result = doctor();

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.output.find("  exiv2 reads ahead   missing: a run for each photo; the "
                                 "exiv2.exe of this project reads many by one\n"),
              std::string::npos);
}

TEST_F(PhotoinfoDoctor, SeesAnAnswerAboutManyPhotosThatIsNone) {
    tool.answer({"--read"}, {.output = "0 0 100 0 0\ntorn"});
    letExiv2Work();

    EXPECT_NE(doctor().output.find("  exiv2 reads ahead   missing"), std::string::npos);
}

// An editor can do without previews, so what else is wrong counts, wherever it stands.
TEST_F(PhotoinfoDoctor, EndsWithWhatIsWorseThanNoPreviewCall) {
    tool.answer({"-ep"}, {.exitCode = 1});
    letExiv2Work();

    EXPECT_EQ(doctor().exitCode, 5);
}

TEST_F(PhotoinfoDoctor, MissesBothTools) {
    const ProgramResult result =
        run({native("doctor"), native("--tools"), scratch.path().native()});

    EXPECT_EQ(result, (ProgramResult{3,
                                     shown(scratch.path()) + "\n"
                                                             "  exiv2.exe           missing\n"
                                                             "  exiv2 starts        not tried\n"
                                                             "  exiv2 reads         not tried\n"
                                                             "  exiv2 lens names    not tried\n"
                                                             "  exiv2 tag bytes     not tried\n"
                                                             "  exiv2 distances     not tried\n"
                                                             "  exiv2 file names    not tried\n"
                                                             "  exiv2 previews      not tried\n"
                                                             "  exiv2 reads ahead   not tried\n"
                                                             "  exiftool.exe        missing\n"
                                                             "  exiftool stays      not tried\n"
                                                             "  exiftool is quiet   not tried\n"
                                                             "  exiftool reads      not tried\n"
                                                             "  exiftool copies     not tried\n",
                                     ""}));
}

TEST_F(PhotoinfoDoctor, SeesThatExiv2DoesNotStart) {
    tool.answer({"--version"}, {.exitCode = 1});
    ToolDirectory exiftool("exiftool.exe", tool);
    letWork(exiftool);

    const ProgramResult result = doctor();

    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(result.output.find("  exiv2 starts        failed\n  exiv2 reads         not tried\n"),
              std::string::npos);
    EXPECT_NE(result.output.find("  exiftool copies     ok"), std::string::npos);
}

TEST_F(PhotoinfoDoctor, SeesThatExiv2DoesNotRead) {
    tool.answerMetadata("Exif.Image.Model  Ascii  6  other\n");
    letExiv2Work();

    const ProgramResult result = doctor();

    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(result.output.find("  exiv2 reads         failed\n  exiv2 lens names    not tried\n"),
              std::string::npos);
}

TEST_F(PhotoinfoDoctor, SeesThatExiftoolEndsAtOnce) {
    letExiv2Work();
    ToolDirectory exiftool("exiftool.exe", tool);
    exiftool.live({.exitAtStart = true});

    const ProgramResult result = doctor();

    EXPECT_EQ(result.exitCode, 5);
    EXPECT_NE(result.output.find("  exiftool stays      failed\n"
                                 "  exiftool is quiet   not tried\n"
                                 "  exiftool reads      not tried\n"),
              std::string::npos);
}

// As Perl does under a locale that the machine lacks.
TEST_F(PhotoinfoDoctor, SaysThatExiftoolWarns) {
    letExiv2Work();
    ToolDirectory exiftool("exiftool.exe", tool);
    exiftool.answerRequest("-ExifToolVersion",
                           {.answer = {.output = "ExifToolVersion: 12.57\n",
                                       .error = "perl: warning: Setting locale failed.\n"}});
    letWork(exiftool);

    const ProgramResult result = doctor();

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(
        result.output.find("  exiftool stays      ok: exiftool 12.57\n"
                           "  exiftool is quiet   warns: perl: warning: Setting locale failed.\n"
                           "  exiftool reads      ok"),
        std::string::npos)
        << result.output;
}

TEST_F(PhotoinfoDoctor, SeesThatExiftoolDoesNotCopy) {
    letExiv2Work();
    ToolDirectory exiftool("exiftool.exe", tool);
    exiftool.answerRequest("-TagsFromFile", {});
    letWork(exiftool);

    const ProgramResult result = doctor();

    EXPECT_EQ(result.exitCode, 5);
    EXPECT_NE(result.output.find("  exiftool copies     failed\n"), std::string::npos);
}

TEST_F(PhotoinfoDoctor, WritesJson) {
    letExiv2Work();

    const ProgramResult result = runWith(tool, {native("doctor"), native("--json")});

    const Json document = Json::parse(result.output);
    EXPECT_EQ(result.exitCode, 5);
    EXPECT_EQ(document.at("tools"), Json(shown(tool.path())));
    EXPECT_EQ(document.at("checks").size(), 14U);
    EXPECT_EQ(document.at("checks").at(1),
              (Json{{"check", "exiv2 starts"}, {"state", "ok"}, {"detail", "exiv2 0.27.6"}}));
    EXPECT_EQ(document.at("checks").at(9),
              (Json{{"check", "exiftool.exe"}, {"state", "missing"}, {"detail", nullptr}}));
}

TEST_F(PhotoinfoDoctor, AsksAboutAPhotoOfItsOwnAndRemovesIt) {
    letExiv2Work();

    (void)doctor();

    std::set<fs::path> folders;
    for (const Arguments& call : tool.calls()) {
        if (call.front() == native("-ep")) {
            folders.insert(fs::path(call.at(1)).parent_path());
        } else if (call.size() > 1) {
            folders.insert(fs::path(call.back()).parent_path());
        }
    }
    ASSERT_EQ(folders.size(), 1U);
    EXPECT_FALSE(fs::exists(*folders.begin()));
}

TEST_F(PhotoinfoDoctor, NeedsAToolDirectory) {
    EXPECT_EQ(run({native("doctor")}),
              (ProgramResult{2, "", "photoinfo: doctor: name the folder with --tools DIR\n"}));
}

}  // namespace
}  // namespace test_support
