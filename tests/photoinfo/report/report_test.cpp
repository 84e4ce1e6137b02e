#include <iterator>
#include <utility>

#include "photoinfo/photoinfo_fixture.h"
#include "support/read_file.h"

namespace test_support {
namespace {

namespace fs = std::filesystem;

constexpr auto kPrintAll =
    "Exif.Image.Make               Ascii      6  Canon\n"
    "Exif.Image.Model              Ascii     13  Canon EOS 6D\n"
    "Exif.Image.Orientation        Short      1  6\n"
    "Exif.Photo.FNumber            Rational   1  56/10\n";

/// "photoinfo report" of a folder of its own.
class PhotoinfoReport : public PhotoinfoTest {
protected:
    [[nodiscard]] ProgramResult report(std::vector<NativeString> more = {}) const {
        return reportInto(output, std::move(more));
    }
    [[nodiscard]] ProgramResult reportInto(const fs::path& file,
                                           std::vector<NativeString> more = {}) const {
        more.insert(more.begin(),
                    {native("report"), photos.path().native(), native("-o"), file.native()});
        return photoinfo(more);
    }
    void speakPreviewCall(std::string_view preview) {
        tool.answer({"-ep"}, {.output = "8 8 0 0 0 0\n" + std::string(preview)});
    }
    /// The data of the written page.
    [[nodiscard]] Json data() const {
        const std::string page = readFile(output);
        constexpr std::string_view kBegin = "id=\"data\">";
        const std::size_t begin = page.find(kBegin) + kBegin.size();
        return Json::parse(page.substr(begin, page.find('<', begin) - begin));
    }

    TemporaryDirectory photos;
    TemporaryDirectory results;
    fs::path output = results.path() / "report.html";
};

TEST_F(PhotoinfoReport, WritesAPageWithEveryPhoto) {
    speakPreviewCall("\xFF\xD8\xFF\xE0");
    const fs::path photo = photos.makeFile("a.jpg");
    tool.answerMetadata(kPrintAll, "Lens name       : A lens\n");

    EXPECT_EQ(report(), (ProgramResult{0, shown(output) + ": 1 photo\n", ""}));
    const Json expected = {{"folder", shown(photos.path())},
                           {"photos",
                            {{{"file", shown(photo)},
                              {"error", nullptr},
                              {"preview", "data:image/jpeg;base64,/9j/4A=="},
                              {"orientation", 6},
                              {"maker", "Canon"},
                              {"camera", "Canon EOS 6D"},
                              {"lens", "A lens"},
                              {"exposureTime", nullptr},
                              {"fNumber", 5.6},
                              {"iso", nullptr},
                              {"focalLength", nullptr},
                              {"taken", nullptr},
                              {"rating", nullptr}}}}};
    EXPECT_EQ(data(), expected);
}

TEST_F(PhotoinfoReport, AsksForSmallPreviews) {
    speakPreviewCall("\xFF\xD8\xFF\xE0");
    const fs::path photo = photos.makeFile("a.jpg");

    (void)report();

    EXPECT_EQ(tool.calls().back(), (Arguments{native("-ep"), photo.native(), native("160"),
                                              native("160"), native("jpg")}));
}

TEST_F(PhotoinfoReport, DoesWithoutPreviewsThatTheToolDoesNotExtract) {
    tool.answer({"-ep"}, {.exitCode = 1});
    (void)photos.makeFile("a.jpg");

    EXPECT_EQ(report(), (ProgramResult{0, shown(output) + ": 1 photo\n",
                                       "photoinfo: this exiv2.exe does not know the call that "
                                       "extracts previews; the page does without\n"}));
    EXPECT_EQ(data().at("photos").at(0).at("preview"), nullptr);
    constexpr std::size_t kProbeAlone = 1;
    EXPECT_EQ(tool.countCalls("-ep"), kProbeAlone);
}

TEST_F(PhotoinfoReport, TellsOfAPhotoThatIsNotUnderstood) {
    speakPreviewCall("");
    (void)photos.makeFile("a.jpg");
    tool.answerMetadata(kPrintAll, "Focal length:");

    EXPECT_EQ(report().exitCode, 4);
    EXPECT_EQ(data().at("photos").at(0).at("error"),
              "exiv2 describes it in a way that is not understood");
}

TEST_F(PhotoinfoReport, ReplacesAnEarlierReport) {
    speakPreviewCall("");
    results.makeFile("report.html", "an earlier one");

    EXPECT_EQ(report().exitCode, 0);
    EXPECT_EQ(data().at("photos"), Json::array());
    EXPECT_EQ(std::distance(fs::directory_iterator(results.path()), {}), 1);
}

TEST_F(PhotoinfoReport, MakesTheSamePageEachTime) {
    speakPreviewCall("\xFF\xD8\xFF\xE0");
    (void)photos.makeFile("a.jpg");
    (void)photos.makeFile("b.jpg");
    tool.answerMetadata(kPrintAll);

    EXPECT_EQ(report().exitCode, 0);
    const std::string first = readFile(output);
    EXPECT_EQ(report({native("--jobs"), native("1")}).exitCode, 0);
    EXPECT_EQ(readFile(output), first);
}

TEST_F(PhotoinfoReport, RefusesToReplaceAPhoto) {
    const fs::path photo = photos.makeFile("a.jpg", "the photo");

    EXPECT_EQ(reportInto(photo),
              (ProgramResult{
                  4, "", "photoinfo: " + shown(photo) + ": is a photo, and is not replaced\n"}));
    EXPECT_EQ(readFile(photo), "the photo");
}

TEST_F(PhotoinfoReport, RefusesToReplaceAFileThatItIsToAskAbout) {
    const fs::path file = photos.makeFile("a.bin", "the photo");

    EXPECT_EQ(reportInto(photos.path() / "." / "a.bin", {native("--all")}).exitCode, 4);
    EXPECT_EQ(readFile(file), "the photo");
}

TEST_F(PhotoinfoReport, RefusesToReplaceAFolder) {
    EXPECT_EQ(reportInto(results.path()),
              (ProgramResult{4, "",
                             "photoinfo: " + shown(results.path()) +
                                 ": is no regular file, and is not replaced\n"}));
}

TEST_F(PhotoinfoReport, SaysBeforeAllWorkThatThereIsNoFolderToWriteTo) {
    const fs::path nowhere = results.path() / "nowhere" / "report.html";

    EXPECT_EQ(
        reportInto(nowhere),
        (ProgramResult{4, "", "photoinfo: " + shown(nowhere) + ": its folder does not exist\n"}));
    EXPECT_TRUE(tool.calls().empty());
}

TEST_F(PhotoinfoReport, NeedsAPlaceToWriteTo) {
    EXPECT_EQ(photoinfo({native("report"), photos.path().native()}).exitCode, 2);
}

}  // namespace
}  // namespace test_support
