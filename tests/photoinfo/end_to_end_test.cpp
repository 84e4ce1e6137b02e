#include <algorithm>
#include <utility>

#include "photoinfo/photoinfo_fixture.h"
#include "real_exiftool/fresh_images.h"
#include "support/current_directory.h"
#include "support/read_file.h"
#include "support/this_process.h"

namespace test_support {
namespace {

namespace fs = std::filesystem;

/// The sample, our exiv2.exe, and the real exiftool.
class PhotoinfoWithRealTools : public PhotoinfoProgramTest {
protected:
    PhotoinfoWithRealTools() {
        fs::create_symlink(EXIV2_TOOL, tools.path() / "exiv2.exe");
        fs::create_symlink(REAL_EXIFTOOL, tools.path() / "exiftool.exe");
    }
    [[nodiscard]] ProgramResult photoinfo(std::vector<NativeString> arguments) const {
        arguments.insert(arguments.begin(), {"--tools", tools.path().native()});
        return run(arguments);
    }
    [[nodiscard]] Json jsonOf(std::vector<NativeString> arguments, const char* name) const {
        arguments.insert(arguments.begin() + 1, "--json");
        return Json::parse(photoinfo(arguments).output).at(0).at(name);
    }

    TemporaryDirectory tools;
    NativeString sample = tools.makeFile("sample.jpg", readFile(SAMPLE)).native();
};

TEST_F(PhotoinfoWithRealTools, FindsTheToolDirectoryGood) {
    const ProgramResult result = photoinfo({"doctor"});

    EXPECT_EQ(result.exitCode, 0) << result.output;
    EXPECT_EQ(result.output.find("not with this"), std::string::npos) << result.output;
}

TEST_F(PhotoinfoWithRealTools, SaysWhatTheStockToolDoesNotDo) {
    fs::remove(tools.path() / "exiv2.exe");
    fs::create_symlink(REAL_EXIV2, tools.path() / "exiv2.exe");

    const ProgramResult result = photoinfo({"doctor"});

    EXPECT_EQ(result.exitCode, 6);
    for (const char* check : {"lens names", "tag bytes ", "distances ", "previews  "}) {
        EXPECT_NE(result.output.find(std::string("exiv2 ") + check + "    missing: not with this"),
                  std::string::npos)
            << check << result.output;
    }
    EXPECT_NE(result.output.find("exiv2 file names    ok"), std::string::npos);
    EXPECT_EQ(photoinfo({"preview", sample, "-o", (scratch.path() / "p.jpg").native()}).exitCode,
              6);
    EXPECT_FALSE(fs::exists(tools.path() / "sample-preview1.jpg"));
}

// A locale that the machine lacks, of which Perl warns in the tool's first answer.
TEST_F(PhotoinfoWithRealTools, HearsPerlsWarningOnlyInTheDoctor) {
    const EnvironmentVariable locale("LC_ALL", "xx_XX.UTF-8");

    EXPECT_EQ(jsonOf({"tags", sample, "Artist"}, "tags"), (Json{{"Artist", "Jana Example"}}));
    const ProgramResult result = photoinfo({"doctor"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.output.find("exiftool is quiet   warns: perl: warning: "), std::string::npos)
        << result.output;
}

TEST_F(PhotoinfoWithRealTools, ReadsTheSample) {
    EXPECT_EQ(jsonOf({"summary", sample}, "summary").at("cameraModel"), "Canon EOS 6D");
    EXPECT_EQ(jsonOf({"info", sample}, "info").at("lens").at("lensName"), "EF24-105mm f/4L IS USM");
    EXPECT_EQ(jsonOf({"batch", sample}, "values").at("exposureTime"), 0.004);
    EXPECT_EQ(jsonOf({"orientation", sample}, "orientation"), 1);
    EXPECT_EQ(jsonOf({"lens", sample}, "lens"), "Canon EF 24-105mm f/4L IS USM");
    EXPECT_EQ(jsonOf({"tags", sample, "Artist"}, "tags"), (Json{{"Artist", "Jana Example"}}));
}

TEST_F(PhotoinfoWithRealTools, ReadsEveryFormOfATag) {
    const Json tag = jsonOf({"tag", sample, "Exif.Photo.ISOSpeedRatings"}, "tag");

    const Json expected = {{"text", "200"},
                           {"numbers", {200}},
                           {"shortNumbers", {200}},
                           {"rationals", Json::array({Json::array({200, 1})})},
                           {"signedRationals", Json::array({Json::array({200, 1})})},
                           {"bytes", "00c8"},
                           {"interpreted", {200}}};
    EXPECT_EQ(tag, expected);
}

TEST_F(PhotoinfoWithRealTools, ListsTheXmpProperties) {
    const Json properties = jsonOf({"xmp", sample}, "properties");

    const Json rating = {
        {"namespace", "http://ns.adobe.com/xap/1.0/"}, {"name", "Rating"}, {"value", "4"}};
    EXPECT_NE(std::find(properties.begin(), properties.end(), rating), properties.end());
}

TEST_F(PhotoinfoWithRealTools, ExtractsAPreview) {
    const fs::path output = scratch.path() / "preview.jpg";

    const Json preview =
        jsonOf({"preview", sample, "-o", output.native(), "--size", "100"}, "preview");

    EXPECT_EQ(preview.at("width"), 160);
    EXPECT_EQ(preview.at("height"), 107);
    EXPECT_EQ(preview.at("size"), fs::file_size(output));
    EXPECT_EQ(readFile(output).substr(0, 2), "\xFF\xD8");
}

TEST_F(PhotoinfoWithRealTools, CopiesMetadataIntoExports) {
    for (const auto& [name, bytes] :
         {std::pair("export.jpg", freshJpeg()), std::pair("export.png", freshPng())}) {
        const NativeString image = tools.makeFile(name, bytes).native();

        const ProgramResult result =
            photoinfo({"copy", sample, image, "--software", "Editor", "--rating", "3"});

        EXPECT_EQ(result.exitCode, 0) << result.error;
        EXPECT_EQ(jsonOf({"summary", image}, "summary").at("rating"), 3.0) << name;
        EXPECT_EQ(jsonOf({"tags", image, "Model"}, "tags").at("Model"), "Canon EOS 6D") << name;
    }
}

TEST_F(PhotoinfoWithRealTools, SaysThatAnExportIsNotWhatItsNameSays) {
    const NativeString image = tools.makeFile("export.jpg", freshPng()).native();

    EXPECT_EQ(photoinfo({"copy", sample, image}).exitCode, 4);
}

TEST_F(PhotoinfoWithRealTools, TakesNamesThatLookLikeSomethingElse) {
    const fs::path photo = scratch.path() / "-all= #.jpg";
    fs::copy_file(SAMPLE, photo);
    const CurrentDirectory inside(scratch.path());

    EXPECT_EQ(photoinfo({"tags", "--", "-all= #.jpg", "Model"}).exitCode, 0);
    EXPECT_EQ(jsonOf({"summary", "--", "-all= #.jpg"}, "summary").at("cameraModel"),
              "Canon EOS 6D");
    EXPECT_EQ(readFile(photo), readFile(SAMPLE));
}

}  // namespace
}  // namespace test_support
