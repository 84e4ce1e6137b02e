#include "photoinfo/photoinfo_fixture.h"
#include "support/read_file.h"
#include "support/skip_or_fail.h"

namespace test_support {
namespace {

namespace fs = std::filesystem;

void replace(std::string& text, std::string_view from, std::string_view to) {
    const std::size_t at = text.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    text.replace(at, from.size(), to);
}

constexpr auto kFirst =
    "Exif.Image.Make               Ascii      6  Canon\n"
    "Exif.Image.Model              Ascii     13  Canon EOS 6D\n"
    "Exif.Image.Orientation        Short      1  6\n"
    "Exif.Image.Rating             Short      1  4\n"
    "Exif.Photo.DateTimeOriginal   Ascii     20  2025:09:14 19:12:08\n"
    "Exif.Photo.ExposureTime       Rational   1  1/250\n"
    "Exif.Photo.FNumber            Rational   1  56/10\n"
    "Exif.Photo.FocalLength        Rational   1  35/1\n"
    "Exif.Photo.ISOSpeedRatings    Short      1  3200\n";
constexpr auto kSecond =
    "Exif.Image.Model              Ascii     13  NIKON D70\n"
    "Exif.Photo.ISOSpeedRatings    Short      1  200\n";
// Text that would be markup, and text that would end the data.
constexpr auto kHostile =
    "Exif.Image.Make               Ascii      2  x\n"
    "Exif.Image.Model              Ascii     60  <img src=x onerror=document.title='owned'>\n"
    "Exif.Photo.LensModel          Ascii     60  </script><script>document.title='owned'</script>\n"
    "Exif.Photo.DateTimeOriginal   Ascii     60  <!-- <script> \xFF\n"
    "Exif.Photo.ISOSpeedRatings    Short      1  800\n";

/// A report of four photos in a real browser. Each test gets what a driver script finds out, as a
/// document, from a copy of the page that lets the driver run.
class ReportInBrowser : public PhotoinfoTest {
protected:
    void SetUp() override {
        if (!fs::exists(CHROMIUM)) {
            SKIP_OR_FAIL("There is no chromium here.");
        }
        tool.answerMetadata(kFirst, "", photos.makeFile("a.jpg"));
        tool.answerMetadata(kSecond, "", photos.makeFile("b.jpg"));
        tool.answerMetadata(kHostile, "", photos.makeFile("<b>&amp;.jpg"));
        (void)photos.makeFile("d.jpg");
        tool.answer({"-ep"}, {.output = "8 8 0 0 0 0\n" + readFile(SAMPLE)});
        ASSERT_EQ(photoinfo({"report", photos.path().native(), "-o", page.native()}).exitCode, 0);
    }

    /// The page's elements after its program has run, and what the browser has to say.
    [[nodiscard]] ProgramResult open(const fs::path& file, const std::string& fragment = {},
                                     const std::string& option = "--dump-dom") const {
        return runProgram(CHROMIUM,
                          {"--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                           "--enable-logging=stderr", "--window-size=1280,1000",
                           "--user-data-dir=" + (browser.path() / "profile").native(), option,
                           "file://" + file.native() + fragment},
                          browser.path());
    }

    /// What the driver wrote down.
    [[nodiscard]] Json drive(const std::string& fragment = {}) const {
        std::string text = readFile(page);
        replace(text, "<meta http-equiv", "<meta name");
        replace(text, "<meta charset=\"utf-8\">",
                "<meta charset=\"utf-8\"><script>" + readFile(DRIVER) + "</script>");
        const fs::path driven = browser.makeFile("driven.html", text);
        const std::string document = open(driven, fragment).output;
        constexpr std::string_view kBegin = "<pre id=\"findings\">";
        const std::size_t begin = document.find(kBegin) + kBegin.size();
        return Json::parse(document.substr(begin, document.find("</pre>", begin) - begin));
    }

    TemporaryDirectory photos;
    TemporaryDirectory browser;
    fs::path page = scratch.path() / "report.html";
};

using Files = std::vector<std::string>;

TEST_F(ReportInBrowser, ShowsEveryPhotoWithoutAComplaintOfTheBrowser) {
    const ProgramResult result = open(page);

    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.error.find("CONSOLE"), std::string::npos) << result.error;
    EXPECT_NE(result.output.find("4 of 4 photos"), std::string::npos);
    EXPECT_NE(result.output.find("<td class=\"number\">1/250 s</td>"), std::string::npos);
}

TEST_F(ReportInBrowser, RunsNoProgramButThePagesOwn) {
    const fs::path changed = browser.makeFile(
        "changed.html", readFile(page) + "<script>document.title='owned'</script>");

    const ProgramResult result = open(changed);

    EXPECT_EQ(result.output.find("<title>owned"), std::string::npos);
    EXPECT_NE(result.error.find("Content Security Policy"), std::string::npos);
}

TEST_F(ReportInBrowser, ShowsHostileMetadataAsText) {
    const Json findings = drive("#text=onerror");

    EXPECT_EQ(findings.at("title"), "Photos in " + photos.path().filename().native());
    EXPECT_EQ(findings.at("files"), Json(Files{"<b>&amp;.jpg"}));
    const Json& cells = findings.at("cells").at(0);
    EXPECT_EQ(cells.at(2), "x <img src=x onerror=document.title='owned'>");
    EXPECT_EQ(cells.at(3), "</script><script>document.title='owned'</script>");
    EXPECT_EQ(cells.at(8), "<!-- <script> \xEF\xBF\xBD");
}

TEST_F(ReportInBrowser, RunsWithoutAnErrorInAllThatTheDriverDoes) {
    EXPECT_EQ(drive().at("errors"), Json::array());
}

TEST_F(ReportInBrowser, SortsByAClickAndTurnsByAnother) {
    const Json findings = drive();

    const Json expected = {{"<b>&amp;.jpg", "a.jpg", "b.jpg", "d.jpg"},
                           {"b.jpg", "<b>&amp;.jpg", "a.jpg", "d.jpg"},
                           {"a.jpg", "<b>&amp;.jpg", "b.jpg", "d.jpg"}};
    EXPECT_EQ(findings.at("clicks").at("files"), expected);
    const std::vector<Files> sorts = {
        {"ascending", "none"}, {"none", "ascending"}, {"none", "descending"}};
    EXPECT_EQ(findings.at("clicks").at("sorts"), Json(sorts));
}

TEST_F(ReportInBrowser, KeepsTheViewInItsAddress) {
    EXPECT_EQ(drive("#sort=iso&order=descending").at("files"),
              Json(Files{"a.jpg", "<b>&amp;.jpg", "b.jpg", "d.jpg"}));
    EXPECT_EQ(drive("#sort=nothing").at("files").size(), 4U);
}

TEST_F(ReportInBrowser, FiltersByTextCameraAndRating) {
    const Json findings = drive();

    EXPECT_EQ(findings.at("filters").at("text"), Json(Files{"b.jpg"}));
    EXPECT_EQ(findings.at("filters").at("camera"), Json(Files{"a.jpg"}));
    EXPECT_EQ(findings.at("filters").at("rating"), Json(Files{"a.jpg"}));
    EXPECT_EQ(findings.at("filters").at("nothing"), Json(Files{}));
    EXPECT_EQ(findings.at("filters").at("count"), "0 of 4 photos");
    EXPECT_EQ(findings.at("filters").at("reset").size(), 4U);
}

TEST_F(ReportInBrowser, DrawsWhatIsKnown) {
    const Json expected = {"Focal length (mm): 35: 1", "Aperture (F-number): 5.6: 1",
                           "Shutter (seconds): 1/250: 1", "ISO (speed): 200: 1, 800: 1, 3200: 1"};
    EXPECT_EQ(drive().at("plots"), expected);
}

TEST_F(ReportInBrowser, LoadsAndTurnsThePreviews) {
    const Json findings = drive("#text=a.jpg");

    EXPECT_EQ(findings.at("previews").at(0), (Json{{"isLoaded", true}, {"turn", "turned-6"}}));
}

TEST_F(ReportInBrowser, IsPictured) {
    const fs::path picture = browser.path() / "report.png";

    (void)open(page, "", "--screenshot=" + picture.native());

    EXPECT_EQ(readFile(picture).substr(1, 3), "PNG");
    EXPECT_GT(fs::file_size(picture), 10'000U);
}

}  // namespace
}  // namespace test_support
