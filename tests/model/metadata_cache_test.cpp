#include "exiv2_wrapper/model/metadata_cache.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "exiv2_wrapper/text/path_text.h"
#include "exiv2_wrapper/text/text.h"
#include "model/cache_filler.h"
#include "model/metadata_cache_fixture.h"
#include "support/case_name.h"
#include "support/current_directory.h"
#include "support/log_capture.h"
#include "support/tool_directory.h"

namespace exiv2_wp::internal {
namespace {

using test_support::Arguments;
using test_support::CurrentDirectory;
using test_support::failureLine;
using test_support::fillCache;
using test_support::kPrintAll;
using test_support::kReadExifMetadataSignature;
using test_support::kSummary;
using test_support::kSummaryThatRaises;
using test_support::LogLine;
using test_support::native;
using test_support::Record;
using test_support::ToolDirectory;

using MetadataCache = test_support::MetadataCacheFixture;

constexpr auto kPrintAllFailed = "Exiv2 failed run -PXEkycv cli command for ";
constexpr auto kPrintAllUnreadable = "Exiv2 failed to parse PrintAll output for ";
constexpr auto kSummaryFailed = "Exiv2 failed run pr cli command for ";

TEST_F(MetadataCache, RunsTheToolTwiceForAFileAsTheCallerSpellsIt) {
    tool.answerMetadata(kPrintAll, kSummary);
    const std::filesystem::path file = tool.path() / "." / "Photo.JPG";
    ASSERT_TRUE(readExifMetadataFromCliCached(file));
    const std::vector<Arguments> expected = {{native("--version")},
                                             {native("-PXEkycv"), native("-q"), file.native()},
                                             {native("pr"), file.native()}};
    EXPECT_EQ(tool.calls(), expected);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST_F(MetadataCache, GivesARecordOfBothRuns) {
    tool.answerMetadata(kPrintAll, kSummary);
    const Record record = readExifMetadataFromCliCached(tool.makeFile("Photo.JPG"));
    ASSERT_TRUE(record);
    ASSERT_NE(record->find("Exif.Image.Make"), nullptr);
    EXPECT_EQ(record->find("Exif.Image.Make")->value, "Maker");
    EXPECT_EQ(record->tags.size(), 1U);
    EXPECT_EQ(record->lensName, "EF24-70mm");
}

TEST_F(MetadataCache, LeavesUnknownWhatNeitherRunTells) {
    tool.answerMetadata(kPrintAll);
    const Record record = readExifMetadataFromCliCached(tool.makeFile("photo.jpg"));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->lensName, "");
    EXPECT_EQ(record->focalLength, -1.0F);
    EXPECT_EQ(record->focalLength35mm, -1.0F);
    EXPECT_EQ(record->subjectDistance, -1.0F);
    EXPECT_EQ(record->fNumber, -1.0F);
    EXPECT_EQ(record->lensId, -1);
}

TEST_F(MetadataCache, NamesTheRecordByItsKey) {
    tool.answerMetadata(kPrintAll);
    const std::filesystem::path file = tool.path() / "Photo.JPG";
    const Record record = readExifMetadataFromCliCached(tool.path() / "x" / ".." / "Photo.JPG");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->fileKey, lowerCased(utf8Path(std::filesystem::path(file).make_preferred())));
}

TEST_F(MetadataCache, RemembersARecord) {
    tool.answerMetadata(kPrintAll, kSummary);
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    const Record first = readExifMetadataFromCliCached(file);
    tool.makeFile("photo.jpg", "changed since");
    EXPECT_EQ(readExifMetadataFromCliCached(file), first);
    EXPECT_EQ(printAllRuns(), 1U);
    EXPECT_EQ(summaryRuns(), 1U);
}

TEST_F(MetadataCache, RemembersAnEmptyPrintOutAsAnEmptyRecord) {
    tool.answerMetadata("");
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    const Record record = readExifMetadataFromCliCached(file);
    ASSERT_TRUE(record);
    EXPECT_TRUE(record->tags.empty());
    EXPECT_EQ(readExifMetadataFromCliCached(file), record);
    EXPECT_EQ(printAllRuns(), 1U);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST_F(MetadataCache, RemembersAFailedRun) {
    tool.answer({"-PXEkycv"}, {.output = kPrintAll, .exitCode = 1});
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    EXPECT_EQ(readExifMetadataFromCliCached(file), nullptr);
    EXPECT_EQ(readExifMetadataFromCliCached(file), nullptr);
    EXPECT_EQ(printAllRuns(), 1U);
    EXPECT_EQ(summaryRuns(), 0U);
    EXPECT_EQ(log.lines(),
              std::vector<LogLine>{failureLine(kReadExifMetadataSignature, kPrintAllFailed, file)});
}

TEST_F(MetadataCache, RemembersAnUnreadablePrintOut) {
    tool.answerMetadata("unreadable\n");
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    EXPECT_EQ(readExifMetadataFromCliCached(file), nullptr);
    EXPECT_EQ(readExifMetadataFromCliCached(file), nullptr);
    EXPECT_EQ(printAllRuns(), 1U);
    EXPECT_EQ(summaryRuns(), 0U);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{
                               failureLine(kReadExifMetadataSignature, kPrintAllUnreadable, file)});
}

// ---- a summary that fails

class FailedSummary : public MetadataCache {
protected:
    void SetUp() override {
        MetadataCache::SetUp();
        tool.answer({"-PXEkycv"}, {.output = kPrintAll});
        tool.answer({"pr"}, {.output = kSummary, .exitCode = 1});
    }
};

TEST_F(FailedSummary, LeavesTheRecordWithoutWhatItWouldTell) {
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    const Record record = readExifMetadataFromCliCached(file);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->tags.size(), 1U);
    EXPECT_EQ(record->lensName, "");
    EXPECT_EQ(readExifMetadataFromCliCached(file), record);
    EXPECT_EQ(summaryRuns(), 1U);
}

class OfAnOrdinaryImage : public FailedSummary,
                          public ::testing::WithParamInterface<const char*> {};

TEST_P(OfAnOrdinaryImage, IsNotLogged) {
    EXPECT_TRUE(readExifMetadataFromCliCached(tool.path() / ("photo." + std::string(GetParam()))));
    EXPECT_EQ(summaryRuns(), 1U);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

INSTANTIATE_TEST_SUITE_P(FailedSummary, OfAnOrdinaryImage,
                         ::testing::Values("jpg", "jpeg", "jpe", "jfif", "png", "bmp", "dib", "gif",
                                           "webp", "heic", "heif", "hif", "avif", "jxl", "jp2",
                                           "j2k", "jpf", "jpx", "psd", "psb", "tga", "exr", "hdr",
                                           "ppm", "pgm", "pbm", "pnm", "ico",  //
                                           "JPG", "Jpeg", "HEIC"),
                         [](const auto& row) { return std::string(row.param); });

struct FileName {
    const char* name;
    const char* file;
};

class OfAnotherFile : public FailedSummary, public ::testing::WithParamInterface<FileName> {};

TEST_P(OfAnotherFile, IsLogged) {
    const std::filesystem::path file = tool.path() / GetParam().file;
    EXPECT_TRUE(readExifMetadataFromCliCached(file));
    EXPECT_EQ(log.lines(),
              std::vector<LogLine>{failureLine(kReadExifMetadataSignature, kSummaryFailed, file)});
}

INSTANTIATE_TEST_SUITE_P(
    FailedSummary, OfAnotherFile,
    ::testing::Values(FileName{"Nef", "photo.nef"}, FileName{"Cr2", "photo.CR2"},
                      FileName{"Dng", "photo.dng"}, FileName{"Tif", "photo.tif"},
                      FileName{"NoExtension", "photo"}, FileName{"OnlyADot", "photo."},
                      FileName{"NoStem", ".jpg"}, FileName{"LongerExtension", "photo.jpgx"},
                      FileName{"ShorterExtension", "photo.jp"},
                      FileName{"OrdinaryOneBeforeTheLast", "photo.jpg.nef"},
                      FileName{"OrdinaryOneWithoutItsDot", "photojpg"}),
    test_support::caseName<FileName>);

// ---- spellings of one path

class PathSpelling : public MetadataCache {
protected:
    void SetUp() override {
        MetadataCache::SetUp();
        tool.answerMetadata(kPrintAll);
        record = readExifMetadataFromCliCached(tool.path() / "Photo.JPG");
        ASSERT_TRUE(record);
    }

    void expectTheSameEntry(const std::filesystem::path& spelling) {
        EXPECT_EQ(readExifMetadataFromCliCached(spelling), record);
        EXPECT_EQ(printAllRuns(), 1U);
    }

    Record record;
};

TEST_F(PathSpelling, MayDifferInAsciiLetterCase) {
    expectTheSameEntry(tool.path() / "pHOTO.jpg");
}

TEST_F(PathSpelling, MayHaveDotSegments) {
    expectTheSameEntry(tool.path() / "." / "." / "Photo.JPG");
}

TEST_F(PathSpelling, MayHaveDotDotSegments) {
    expectTheSameEntry(tool.path() / "folder" / ".." / "Photo.JPG");
}

TEST_F(PathSpelling, MayHaveRedundantSeparators) {
    expectTheSameEntry(tool.path().string() + "///Photo.JPG");
}

TEST_F(PathSpelling, MayBeRelative) {
    const CurrentDirectory current(tool.path());
    expectTheSameEntry("Photo.JPG");
}

TEST_F(PathSpelling, MayBeRelativeWithDots) {
    const CurrentDirectory current(tool.path());
    expectTheSameEntry(std::filesystem::path("..") / tool.path().filename() / "." / "Photo.JPG");
}

TEST_F(PathSpelling, IsAnotherFilesInAnotherFolder) {
    EXPECT_NE(readExifMetadataFromCliCached(tool.path() / "other" / "Photo.JPG"), record);
    EXPECT_EQ(printAllRuns(), 2U);
}

TEST_F(PathSpelling, IsAnotherFilesInAnotherCurrentFolderWhenItIsRelative) {
    const test_support::TemporaryDirectory other;
    const CurrentDirectory current(other.path());
    EXPECT_NE(readExifMetadataFromCliCached("Photo.JPG"), record);
    EXPECT_EQ(printAllRuns(), 2U);
}

// ---- exceptions

TEST_F(MetadataCache, DoesNotRememberAnException) {
    tool.answerMetadata(kPrintAll, kSummaryThatRaises);
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    EXPECT_THROW((void)readExifMetadataFromCliCached(file), std::out_of_range);
    EXPECT_THROW((void)readExifMetadataFromCliCached(file), std::out_of_range);
    EXPECT_EQ(printAllRuns(), 2U);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

// ---- eviction

TEST_F(MetadataCache, ReadsAFileAgainWhenTwoHundredOthersHaveCome) {
    tool.answerMetadata(kPrintAll);
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    const Record first = readExifMetadataFromCliCached(file);
    fillCache();
    const Record second = readExifMetadataFromCliCached(file);
    EXPECT_TRUE(first && second);
    EXPECT_NE(first, second);
    EXPECT_EQ(printAllRuns(), 2U);
    EXPECT_EQ(summaryRuns(), 2U);
}

TEST_F(MetadataCache, ForgetsAFailureWithItsEntry) {
    const std::filesystem::path file = tool.makeFile("photo.jpg");
    EXPECT_EQ(readExifMetadataFromCliCached(file), nullptr);
    fillCache();
    EXPECT_EQ(readExifMetadataFromCliCached(file), nullptr);
    EXPECT_EQ(printAllRuns(), 2U);
}

}  // namespace
}  // namespace exiv2_wp::internal
