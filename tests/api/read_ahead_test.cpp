#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

#include "api/read_ahead_fixture.h"
#include "exiv2_wrapper/model/metadata_cache.h"
#include "exiv2_wrapper/runner/tool_location.h"
#include "exiv2_wrapper/text/path_text.h"
#include "model/cache_filler.h"
#include "model/record_text.h"
#include "support/case_name.h"

namespace exiv2_wp {
namespace {

namespace fs = std::filesystem;

using internal::readExifMetadataFromCliCached;
using test_support::Arguments;
using test_support::failureLine;
using test_support::fillCache;
using test_support::LogLine;
using test_support::native;

using ReadAhead = test_support::ReadAheadFixture;
using Paths = std::vector<fs::path>;

constexpr auto kPrintAll = "Exif.Image.Make Ascii 5 Maker\n";
constexpr auto kSummary = "Lens name       : EF24-70mm\n";

std::string recordText(const fs::path& file) {
    const auto record = readExifMetadataFromCliCached(file);
    return record == nullptr ? "none" : test_support::toText(*record);
}

TEST_F(ReadAhead, ReadsAllFilesByOneRun) {
    tool.answerMetadata(kPrintAll, kSummary);
    const Paths files = {file("a.jpg"), file("b.nef"), file("c.tif")};
    EXPECT_EQ(readAhead(files), 3U);
    const std::vector<Arguments> expected = {
        {native("--version")},
        {native("--read"), files[0].native(), files[1].native(), files[2].native()}};
    EXPECT_EQ(tool.calls(), expected);
}

TEST_F(ReadAhead, LeavesNothingToReadForLaterQuestions) {
    tool.answerMetadata(kPrintAll, kSummary);
    const Paths files = {file("a.jpg"), file("b.nef")};
    ASSERT_EQ(readAhead(files), 2U);
    const std::size_t calls = tool.calls().size();
    for (const fs::path& photo : files) {
        std::string maker;
        createImageMetadata(photo, [&](const auto& info) { maker = info.cameraMaker; });
        EXPECT_EQ(maker, "Maker");
    }
    EXPECT_EQ(readAhead(files), 2U);
    EXPECT_EQ(tool.calls().size(), calls);
}

TEST_F(ReadAhead, OfNothingIsNothing) {
    EXPECT_EQ(readAhead({}), 0U);
    internal::exiv2ExecutablePath.clear();
    EXPECT_EQ(readAhead({}), 0U);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

TEST_F(ReadAhead, WithoutAToolLogsThatAndRemembersNothing) {
    const fs::path photo = file("a.jpg");
    const auto path = std::exchange(internal::exiv2ExecutablePath, fs::path());
    EXPECT_EQ(readAhead({photo, file("b.jpg")}), 0U);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{failureLine(test_support::kRunExiv2CliSignature,
                                                            "Valid exiv2 executable not found")});
    internal::exiv2ExecutablePath = path;
    tool.answerMetadata(kPrintAll);
    EXPECT_NE(readExifMetadataFromCliCached(photo), nullptr);
}

TEST_F(ReadAhead, ReadsAFileOnceThatIsInTheListTwice) {
    tool.answerMetadata(kPrintAll);
    EXPECT_EQ(readAhead({file("a.jpg"), tool.path() / "." / "A.JPG", file("b.jpg")}), 3U);
    EXPECT_EQ(tool.calls().back().size(), 3U);
}

TEST_F(ReadAhead, PassesOverWhatIsKnown) {
    tool.answerMetadata(kPrintAll);
    const auto known = readExifMetadataFromCliCached(file("b.jpg"));
    EXPECT_EQ(readAhead({file("a.jpg"), file("b.jpg"), file("c.jpg")}), 3U);
    EXPECT_EQ(tool.calls().back(),
              (Arguments{native("--read"), file("a.jpg").native(), file("c.jpg").native()}));
    EXPECT_EQ(readExifMetadataFromCliCached(file("b.jpg")), known);
}

// ---- the same as by the ordinary runs

class ReadAheadOfAllKinds : public ReadAhead {
protected:
    void SetUp() override {
        ReadAhead::SetUp();
        add("usual.jpg", {.output = kPrintAll}, {.output = kSummary});
        add("raw-without-summary.nef", {.output = kPrintAll}, {.output = kSummary, .exitCode = 1});
        add("image-without-summary.jpg", {.output = kPrintAll}, {.exitCode = 253});
        add("no-metadata.nef", {.output = kPrintAll, .exitCode = 253}, {});
        add("unreadable.nef", {.output = "unreadable\n"}, {.output = kSummary});
        add("empty.png", {}, {});
        add("large.tif", {.output = kPrintAll, .repeat = 3000}, {.output = kSummary});
        add("odd bytes.jpg", {.output = std::string("Exif.Image.Make Ascii 5 a\0\xFF\r\n", 28)},
            {.output = "0 0 5 0 5\n"});
        add("last.nef", {.output = kPrintAll}, {.output = kSummary});
    }

    void add(const std::string& name, const test_support::Answer& printAll,
             const test_support::Answer& summary) {
        files.push_back(file(name));
        tool.answer({"-PXEkycv"}, printAll, files.back());
        tool.answer({"pr"}, summary, files.back());
    }

    // The records and log lines of the ordinary runs; the files are unknown again then.
    void readOrdinarily() {
        for (const fs::path& photo : files) {
            records.push_back(recordText(photo));
        }
        lines = log.lines();
        fillCache();
        log.clear();
    }

    void expectTheSame() {
        EXPECT_EQ(log.lines(), lines);
        for (std::size_t i = 0; i < files.size(); ++i) {
            EXPECT_EQ(recordText(files[i]), records[i]) << files[i];
        }
        EXPECT_EQ(log.lines(), lines);
    }

    Paths files;
    std::vector<std::string> records;
    std::vector<LogLine> lines;
};

TEST_F(ReadAheadOfAllKinds, GivesTheRecordsAndLogLinesOfTheOrdinaryRuns) {
    readOrdinarily();
    const std::size_t runs = printAllRuns();
    EXPECT_EQ(readAhead(files), files.size());
    expectTheSame();
    EXPECT_EQ(readCalls(), 1U);
    EXPECT_EQ(printAllRuns(), runs);
}

TEST_F(ReadAheadOfAllKinds, GivesThemByAToolThatDoesNotKnowTheCall) {
    readOrdinarily();
    tool.answer({"--read"}, {.output = "a.jpg   File name : a.jpg\n", .exitCode = 255});
    EXPECT_EQ(readAhead(files), files.size());
    expectTheSame();
    EXPECT_EQ(readCalls(), 1U);
}

// ---- a tool that doesn't know the call

TEST_F(ReadAhead, AsksAToolThatDoesNotKnowTheCallOnceUntilTheNextStart) {
    tool.answer({"--read"}, {.exitCode = 1});
    tool.answerMetadata(kPrintAll);
    EXPECT_EQ(readAhead({file("a.jpg"), file("b.jpg")}), 2U);
    EXPECT_EQ(readAhead({file("c.jpg"), file("d.jpg")}), 2U);
    EXPECT_EQ(readCalls(), 1U);
    EXPECT_EQ(printAllRuns(), 4U);
    ASSERT_TRUE(initialize(tool.path()));
    EXPECT_EQ(readAhead({file("e.jpg"), file("f.jpg")}), 2U);
    EXPECT_EQ(readCalls(), 2U);
}

// ---- a tool that stops

TEST_F(ReadAhead, ReadsThePhotoThatBringsTheToolDownByItself) {
    tool.answer({"-PXEkycv"}, {.output = kPrintAll, .signal = 9}, file("b.jpg"));
    tool.answerMetadata(kPrintAll, kSummary);
    const Paths files = {file("a.jpg"), file("b.jpg"), file("c.jpg"), file("d.jpg")};
    EXPECT_EQ(readAhead(files), 4U);
    const std::vector<Arguments> expected = {
        {native("--version")},
        {native("--read"), files[0].native(), files[1].native(), files[2].native(),
         files[3].native()},
        {native("-PXEkycv"), native("-q"), files[1].native()},
        {native("--read"), files[2].native(), files[3].native()}};
    EXPECT_EQ(tool.calls(), expected);
    EXPECT_EQ(recordText(files[1]), "none");
    EXPECT_NE(recordText(files[3]), "none");
    EXPECT_EQ(log.lines(), std::vector<LogLine>{failureLine(
                               test_support::kReadExifMetadataSignature,
                               "Exiv2 failed run -PXEkycv cli command for ", files[1])});
}

TEST_F(ReadAhead, StartsAgainBehindEveryPhotoThatBringsTheToolDown) {
    constexpr std::size_t kPhotos = 12;
    Paths files;
    for (std::size_t i = 0; i < kPhotos; ++i) {
        files.push_back(file(std::to_string(i) + ".jpg"));
    }
    tool.answer({"-PXEkycv"}, {.signal = 9});
    EXPECT_EQ(readAhead(files), kPhotos);
    EXPECT_EQ(readCalls(), kPhotos);
    EXPECT_EQ(printAllRuns(), kPhotos);
    EXPECT_EQ(log.lines().size(), kPhotos);
}

struct Output {
    std::string name;
    std::string text;  ///< of the call for three files
};

void PrintTo(const Output& output, std::ostream* stream) {
    *stream << output.text;
}

class ReadAheadByWrongOutput : public ReadAhead, public ::testing::WithParamInterface<Output> {};

// The first part is right and makes the tool one that knows the call.
TEST_P(ReadAheadByWrongOutput, ReadsOnBehindWhatCameWhole) {
    tool.answerMetadata(kPrintAll);
    ASSERT_EQ(readAhead({file("before.jpg")}), 1U);
    const std::string entries = kPrintAll;
    const std::string first = "0 0 " + std::to_string(entries.size()) + " 0 0\n" + entries;
    tool.answer({"--read", internal::utf8Path(file("a.jpg"))}, {.output = first + GetParam().text});
    EXPECT_EQ(readAhead({file("a.jpg"), file("b.jpg"), file("c.jpg")}), 3U);
    EXPECT_EQ(readCalls(), 3U);
    EXPECT_EQ(printAllRuns(), 1U);
    for (const char* const name : {"a.jpg", "b.jpg", "c.jpg"}) {
        const auto record = readExifMetadataFromCliCached(file(name));
        ASSERT_TRUE(record);
        EXPECT_EQ(record->tags.size(), 1U);
    }
}

INSTANTIATE_TEST_SUITE_P(, ReadAheadByWrongOutput,
                         ::testing::Values(Output{"TooShort", "1 0 9 0 0\nExif"},
                                           Output{"WrongPosition", "2 0 0 0 0\n"},
                                           Output{"SamePosition", "0 0 0 0 0\n"},
                                           Output{"TooManyBytes", "\n1 0 0 0 0\n"},
                                           Output{"AnotherText", "Exif.Image.Make"},
                                           Output{"NoMore", ""}),
                         test_support::caseName<Output>);

// ---- an exception of the summary's parser

TEST_F(ReadAhead, EndsTheFrontAtAFileAboutWhichTheQuestionRaises) {
    tool.answer({"pr"}, {.output = "Lens name:"}, file("b.jpg"));
    tool.answerMetadata(kPrintAll, kSummary);
    EXPECT_EQ(readAhead({file("a.jpg"), file("b.jpg"), file("c.jpg")}), 1U);
    EXPECT_EQ(readAhead({file("b.jpg"), file("c.jpg")}), 0U);
    EXPECT_EQ(readAhead({file("c.jpg")}), 1U);
    EXPECT_THROW((void)readExifMetadataFromCliCached(file("b.jpg")), std::out_of_range);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

// ---- names

TEST_F(ReadAhead, TakesFileNamesAsTheCallerSpellsThem) {
    tool.answerMetadata(kPrintAll);
    const Paths files = {tool.path() / u8"B\u00E4r \u5199\u771F \U0001F4F7.jpg",
                         tool.path() / "." / "a b'c%d^e&.JPG", tool.path() / "tail\\"};
    EXPECT_EQ(readAhead(files), 3U);
    EXPECT_EQ(tool.calls().back(), (Arguments{native("--read"), files[0].native(),
                                              files[1].native(), files[2].native()}));
}

TEST_F(ReadAhead, ReadsAFileWhoseNameBeginsLikeAnOptionByItself) {
    tool.answerMetadata(kPrintAll);
    EXPECT_EQ(readAhead({file("a.jpg"), "-b.jpg", file("c.jpg")}), 3U);
    EXPECT_EQ(readCalls(), 2U);
    EXPECT_EQ(printAllRuns(), 1U);
    fillCache();  // a relative name
}

}  // namespace
}  // namespace exiv2_wp
