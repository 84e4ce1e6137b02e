#include <future>

#include "photoinfo/photoinfo_fixture.h"

namespace test_support {
namespace {

namespace fs = std::filesystem;

constexpr auto kPrintAll =
    "Exif.Image.Model              Ascii     13  Canon EOS 6D\n"
    "Exif.Photo.DateTimeOriginal   Ascii     20  2025:09:14 19:12:08\n"
    "Exif.Photo.ExposureTime       Rational   1  1/250\n"
    "Exif.Photo.FNumber            Rational   1  56/10\n"
    "Exif.Photo.FocalLength        Rational   1  35/1\n"
    "Exif.Photo.ISOSpeedRatings    Short      1  200\n"
    "Exif.Photo.LensModel          Ascii      8  Lens, \"A\"\n";

/// "photoinfo scan" of a folder of its own, with the names of files shortened to their ways in it.
class PhotoinfoScan : public PhotoinfoTest {
protected:
    fs::path makePhoto(const fs::path& name) const {
        const fs::path parent = name.parent_path();
        fs::create_directories(photos.path() / parent);
        return photos.makeFile(shown(name));
    }
    [[nodiscard]] ProgramResult scan(std::vector<NativeString> more = {}) const {
        more.insert(more.begin(), {native("scan"), photos.path().native()});
        return photoinfo(more);
    }
    /// The files of the JSON document, in their order.
    [[nodiscard]] std::vector<std::string> scannedFiles(std::vector<NativeString> more = {}) const {
        more.push_back(native("--json"));
        std::vector<std::string> files;
        for (const Json& photo : Json::parse(scan(more).output)) {
            const auto name = photo.at("file").get<std::string>();
            files.push_back(name.substr(shown(photos.path()).size() + 1));
        }
        return files;
    }

    TemporaryDirectory photos;
};

using Files = std::vector<std::string>;

TEST_F(PhotoinfoScan, ShowsATableOfAllPhotos) {
    const fs::path known = makePhoto("a.jpg");
    const fs::path unknown = makePhoto("b.jpg");
    tool.answerMetadata(kPrintAll, "", known);
    tool.answerMetadata("Exif.Image.Artist  Ascii  2  A\n", "", unknown);
    const std::string gap(shown(known).size() - 4, ' ');

    EXPECT_EQ(scan(), (ProgramResult{0,
                                     "File" + gap +
                                         "  Camera        Lens       Time     F-number  ISO      "
                                         "Focal length  Taken                Rating\n" +
                                         shown(known) +
                                         "  Canon EOS 6D  Lens, \"A\"  1/250 s  f/5.6     200     "
                                         " 35 mm         2025-09-14T19:12:08  none\n" +
                                         shown(unknown) +
                                         "  unknown       unknown    unknown  unknown   unknown  "
                                         "unknown       unknown              none\n",
                                     ""}));
}

TEST_F(PhotoinfoScan, ShowsThatAPhotoHasNoMetadata) {
    (void)makePhoto("a.jpg");

    EXPECT_NE(scan().output.find("  no metadata  unknown"), std::string::npos);
}

TEST_F(PhotoinfoScan, WritesJsonAsOfSinglePhotos) {
    tool.answerMetadata(kPrintAll, "Lens name       : A lens\n");
    const fs::path photo = makePhoto("a.jpg");
    const Json summary =
        Json::parse(photoinfo({native("summary"), native("--json"), photo.native()}).output);

    Json expected = summary;
    expected.at(0).erase("error");
    expected.at(0)["lensName"] = "A lens";
    expected.at(0)["error"] = nullptr;
    EXPECT_EQ(scan({native("--json")}), (ProgramResult{0, expected.dump(2) + "\n", ""}));
}

TEST_F(PhotoinfoScan, WritesCsvWithEmptyCellsForWhatIsUnknown) {
    tool.answerMetadata(kPrintAll);
    const fs::path photo = makePhoto("a.jpg");

    EXPECT_EQ(scan({native("--csv")}),
              (ProgramResult{
                  0,
                  "file,iso,exposureTime,focalLength,fNumber,focalLength35mm,exposureBias,isApple,"
                  "lensFocalMin,lensFocalMax,lensApertureAtFocalMin,lensApertureAtFocalMax,"
                  "bitsPerSample,orientation,meteringMode,lightSource,whiteBalance,cameraMaker,"
                  "cameraModel,lensMaker,lensModel,dateTimeOriginal,dateTimeIso,rating,lensName,"
                  "error\r\n" +
                      shown(photo) +
                      ",200.0,0.004,35.0,5.6,,,false,,,,,,,,,,,Canon EOS 6D,,\"Lens, \"\"A\"\"\","
                      "2025:09:14 19:12:08,2025-09-14T19:12:08,,,\r\n",
                  ""}));
}

TEST_F(PhotoinfoScan, RefusesJsonAndCsvAtOnce) {
    EXPECT_EQ(scan({native("--json"), native("--csv")}).exitCode, 2);
}

TEST_F(PhotoinfoScan, TakesPhotosByTheirExtensionInAnyLetterCase) {
    for (const char* const name : {"a.jpg", "b.JPEG", "c.Cr2", "d.txt", "e.jp", "jpg", "f.jpgg"}) {
        (void)makePhoto(name);
    }

    EXPECT_EQ(scannedFiles(), (Files{"a.jpg", "b.JPEG", "c.Cr2"}));
}

TEST_F(PhotoinfoScan, TakesAllFilesWhenAskedTo) {
    (void)makePhoto("a.txt");
    (void)makePhoto("b");

    EXPECT_EQ(scannedFiles({native("--all")}), (Files{"a.txt", "b"}));
}

TEST_F(PhotoinfoScan, GoesIntoFoldersAndSorts) {
    for (const char* const name :
         {"z.jpg", "2024/b.jpg", "2024/a.jpg", "2024/deep/c.jpg", "a.jpg"}) {
        (void)makePhoto(fs::path(name).make_preferred());
    }

    Files expected = {"2024/a.jpg", "2024/b.jpg", "2024/deep/c.jpg", "a.jpg", "z.jpg"};
    for (std::string& name : expected) {
        name = shown(fs::path(name).make_preferred());
    }
    EXPECT_EQ(scannedFiles(), expected);
    EXPECT_EQ(scannedFiles({native("--jobs"), native("1")}), expected);
}

// ---- by a tool that reads many photos by one run

TEST_F(PhotoinfoScan, ReadsAPortionOfThePhotosByOneRun) {
    tool.knowReadCall();
    tool.answerMetadata(kPrintAll);
    constexpr int kPhotos = 45;
    for (int i = 0; i < kPhotos; ++i) {
        (void)makePhoto(std::to_string(i) + ".jpg");
    }

    EXPECT_EQ(scannedFiles({native("--jobs"), native("1")}).size(), std::size_t{kPhotos});

    EXPECT_EQ(tool.countCalls("--read"), 1U + 3U);  // the first finds out whether it can
    EXPECT_EQ(tool.countCalls("-PXEkycv"), 0U);
    EXPECT_EQ(tool.countCalls("pr"), 0U);
}

TEST_F(PhotoinfoScan, SaysTheSameWhetherItReadsAheadOrNot) {
    tool.answerMetadata("", "", makePhoto("b.jpg"));
    tool.answer({"-PXEkycv"}, {.exitCode = 253}, makePhoto("c.nef"));
    tool.answer({"pr"}, {.output = "Lens name:"}, makePhoto("d.jpg"));
    for (const char* const name : {"a.jpg", "B.JPEG", "e.jpg", "f.jpg"}) {
        (void)makePhoto(name);
    }
    tool.answerMetadata(kPrintAll, "Lens name       : A lens\n");
    const ProgramResult ordinary = scan({native("--json")});

    tool.knowReadCall();

    EXPECT_EQ(scan({native("--json")}), ordinary);
    EXPECT_EQ(ordinary.exitCode, 4);
    EXPECT_NE(ordinary.error.find("d.jpg: exiv2 describes it in a way"), std::string::npos);
}

TEST_F(PhotoinfoScan, AsksAToolThatReadsPhotoByPhotoOnce) {
    tool.answerMetadata(kPrintAll);
    constexpr int kPhotos = 50;
    for (int i = 0; i < kPhotos; ++i) {
        (void)makePhoto(std::to_string(i) + ".jpg");
    }

    EXPECT_EQ(scan().exitCode, 0);

    EXPECT_EQ(tool.countCalls("--read"), 1U);
    EXPECT_EQ(tool.countCalls("-PXEkycv"), std::size_t{kPhotos});
}

TEST_F(PhotoinfoScan, DoesNotTakeAFolderForAPhoto) {
    (void)makePhoto(fs::path("album.jpg/a.jpg").make_preferred());

    EXPECT_EQ(scannedFiles(), Files{shown(fs::path("album.jpg/a.jpg").make_preferred())});
}

TEST_F(PhotoinfoScan, AsksAboutEachPhotoOnce) {
    for (int i = 0; i < 20; ++i) {
        (void)makePhoto(std::to_string(i) + ".jpg");
    }
    tool.answerMetadata(kPrintAll);

    EXPECT_EQ(scan({native("--jobs"), native("4")}).exitCode, 0);
    EXPECT_EQ(tool.countCalls("-PXEkycv"), 20U);
    EXPECT_EQ(tool.countCalls("pr"), 20U);
}

// Each photo's answer waits for both to be asked about.
TEST_F(PhotoinfoScan, AsksAboutAsManyPhotosAtATimeAsToldTo) {
    (void)makePhoto("a.jpg");
    (void)makePhoto("b.jpg");
    tool.answer({"-PXEkycv"}, {.gate = "both"});
    auto result = std::async(std::launch::async, [&] {
        return scan({native("--jobs"), native("2")});
    });

    constexpr std::size_t kBeforeBoth = 2;  // the version, and whether it reads many by one run
    EXPECT_TRUE(tool.waitForCalls(kBeforeBoth + 2));
    tool.openGate("both");
    EXPECT_EQ(result.get().exitCode, 0);
}

TEST_F(PhotoinfoScan, RefusesANumberOfJobsThatIsNone) {
    EXPECT_EQ(scan({native("--jobs"), native("0")}).exitCode, 2);
    EXPECT_EQ(scan({native("--jobs"), native("many")}).exitCode, 2);
}

TEST_F(PhotoinfoScan, ReportsAPhotoThatIsNotUnderstoodAndGoesOn) {
    const fs::path strange = makePhoto("a.jpg");
    const fs::path plain = makePhoto("b.jpg");
    tool.answerMetadata(kPrintAll, "Focal length:", strange);
    tool.answerMetadata(kPrintAll, "", plain);

    const ProgramResult result = scan();

    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(result.error, "photoinfo: " + shown(strange) +
                                ": exiv2 describes it in a way that is not understood\n"
                                "photoinfo: 1 of 2 photos could not be asked about\n");
    EXPECT_NE(result.output.find(shown(plain)), std::string::npos);
    EXPECT_EQ(result.output.find(shown(strange)), std::string::npos);
}

TEST_F(PhotoinfoScan, SaysThatThereAreNoPhotos) {
    EXPECT_EQ(scan(), (ProgramResult{0, "",
                                     "photoinfo: " + shown(photos.path()) +
                                         ": no photos below this folder\n"}));
    EXPECT_EQ(scan({native("--json")}).output, "[]\n");
}

TEST_F(PhotoinfoScan, RefusesWhatIsNoFolder) {
    const fs::path photo = makePhoto("a.jpg");
    const fs::path nowhere = photos.path() / "nowhere";

    EXPECT_EQ(photoinfo({native("scan"), photo.native()}),
              (ProgramResult{4, "", "photoinfo: " + shown(photo) + ": is no folder\n"}));
    EXPECT_EQ(photoinfo({native("scan"), nowhere.native()}),
              (ProgramResult{4, "", "photoinfo: " + shown(nowhere) + ": no such folder\n"}));
}

TEST_F(PhotoinfoScan, NeedsATool) {
    const TemporaryDirectory empty;

    EXPECT_EQ(
        run({native("scan"), photos.path().native(), native("--tools"), empty.path().native()})
            .exitCode,
        3);
}

}  // namespace
}  // namespace test_support
