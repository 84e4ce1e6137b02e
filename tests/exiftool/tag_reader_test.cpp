#include "exiv2_wrapper/exiftool/tag_reader.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

#include "exiftool/running_tool.h"
#include "exiv2_wrapper/exiv2_wrapper.h"
#include "support/latch.h"
#include "support/log_capture.h"

namespace exiftool {
namespace {

using test_support::inRequest;
using test_support::LogCapture;
using test_support::LogLine;
using test_support::plainLine;
using test_support::RequestCapture;
using test_support::runningTool;
using test_support::uniqueFile;
using Tags = std::unordered_map<std::string, std::string>;

std::filesystem::path fileAnswering(const std::string& output) {
    const std::filesystem::path file = uniqueFile("photo.jpg");
    runningTool().answerRequest(inRequest(file), {.answer = {.output = output}});
    return file;
}

LogLine ignored(const std::string& line) {
    return plainLine(0, "readTags: ignoring line: ", line);
}

// ---- readTags

TEST(ReadTags, SendsEachBlankSeparatedArgumentOnALineOfItsOwn) {
    const std::filesystem::path file = uniqueFile("a photo.jpg");
    RequestCapture capture;

    static_cast<void>(readTags(file, "-Lens -LensID"));

    EXPECT_EQ(capture.requests(),
              std::vector<std::string>{"-charset\nfilename=utf8\n-Lens\n-LensID\n-s2\n" +
                                       inRequest(file) + "\n-execute\n"});
}

TEST(ReadTags, SplitsAnArgumentThatHoldsABlankToo) {
    const std::filesystem::path file = uniqueFile("photo.jpg");
    RequestCapture capture;

    static_cast<void>(readTags(file, "-if  $Make eq 'A B'"));

    EXPECT_EQ(capture.requests(),
              std::vector<std::string>{"-charset\nfilename=utf8\n-if\n\n$Make\neq\n'A\nB'\n-s2\n" +
                                       inRequest(file) + "\n-execute\n"});
}

TEST(ReadTags, SendsAPathThatIsNotAsciiAsUtf8) {
    const std::filesystem::path file = uniqueFile("x") / std::filesystem::path(u8"Fôtö-写真.jpg");
    RequestCapture capture;

    static_cast<void>(readTags(file, "-Make"));

    ASSERT_EQ(capture.requests().size(), 1U);
    EXPECT_NE(capture.requests()[0].find("F\xC3\xB4t\xC3\xB6-\xE5\x86\x99\xE7\x9C\x9F.jpg\n"),
              std::string::npos);
}

TEST(ReadTags, ReturnsTheTagsAndLogsTheLineOfTheMarker) {
    LogCapture log;
    const auto file = fileAnswering("Make: Canon\nModel: Canon EOS 40D\n");

    EXPECT_EQ(readTags(file, "-Make -Model"),
              (Tags{{"Make", "Canon"}, {"Model", "Canon EOS 40D"}}));
    EXPECT_EQ(log.lines(), std::vector<LogLine>{ignored("{ready}")});
}

TEST(ReadTags, TakesTheToolsErrorTextForATagWhenItHoldsAColon) {
    const std::filesystem::path file = uniqueFile("missing.jpg");
    runningTool().answerRequest(inRequest(file),
                                {.answer = {.error = "Error: File not found - missing.jpg\n"}});

    EXPECT_EQ(readTags(file, "-Make"), (Tags{{"Error", "File not found - missing.jpg"}}));
}

TEST(ReadTags, ServesEightThreadsWithoutMixingTheirRequests) {
    constexpr int kThreads = 8;
    constexpr int kRequests = 200;
    runningTool().answerRequest("own-", {.echo = true});
    test_support::Latch start(kThreads);
    std::vector<std::thread> threads;
    std::array<int, kThreads> right{};
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&start, &count = right[static_cast<std::size_t>(i)], i] {
            start.arrive_and_wait();
            for (int request = 0; request < kRequests; ++request) {
                const std::string own =
                    "own-" + std::to_string(i) + "-" + std::to_string(request) + ".jpg";
                count += readTags(own, "-Make") == Tags{{"Line", own}} ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    std::array<int, kThreads> expected{};
    expected.fill(kRequests);
    EXPECT_EQ(right, expected);
}

// ---- the lines of an answer

TEST(ParseTagLines, DropsBlanksBehindTheNameAndBeforeTheValue) {
    EXPECT_EQ(internal::parseTagLines("  Lens ID   :   EF 50 mm  \n"),
              (Tags{{"  Lens ID", "EF 50 mm  "}}));
}

TEST(ParseTagLines, KeepsOtherWhiteSpace) {
    EXPECT_EQ(internal::parseTagLines("A\t:\tb\n"), (Tags{{"A\t", "\tb"}}));
}

TEST(ParseTagLines, SplitsAtTheFirstColonOnly) {
    EXPECT_EQ(internal::parseTagLines("CreateDate: 2021:07:04 18:30:05\n"),
              (Tags{{"CreateDate", "2021:07:04 18:30:05"}}));
}

TEST(ParseTagLines, GivesALineThatStartsWithAColonAnEmptyName) {
    EXPECT_EQ(internal::parseTagLines(": a\n   :b\n"), (Tags{{"", "b"}}));
}

TEST(ParseTagLines, AcceptsAnEmptyValue) {
    EXPECT_EQ(internal::parseTagLines("Software:\nArtist:   "),
              (Tags{{"Software", ""}, {"Artist", ""}}));
}

TEST(ParseTagLines, KeepsTheLastOfTwoLinesWithOneName) {
    EXPECT_EQ(internal::parseTagLines("Make: A\nMake: B\n"), (Tags{{"Make", "B"}}));
}

TEST(ParseTagLines, LogsAndSkipsLinesWithoutAColon) {
    LogCapture log;

    EXPECT_EQ(internal::parseTagLines("    1 image files read\n\nMake: A\n{ready}\n"),
              (Tags{{"Make", "A"}}));

    const std::vector<LogLine> expected = {ignored("    1 image files read"), ignored(""),
                                           ignored("{ready}")};
    EXPECT_EQ(log.lines(), expected);
}

// ---- getLensPrettyName

TEST(GetLensPrettyName, AsksForLensAndLensId) {
    const std::filesystem::path file = uniqueFile("photo.jpg");
    RequestCapture capture;

    EXPECT_EQ(getLensPrettyName(file), "");

    EXPECT_EQ(capture.requests(),
              std::vector<std::string>{"-charset\nfilename=utf8\n-Lens\n-LensID\n-s2\n" +
                                       inRequest(file) + "\n-execute\n"});
}

struct LensCase {
    const char* name;
    const char* answer;
    const char* lens;
};

class LensName : public ::testing::TestWithParam<LensCase> {};

TEST_P(LensName, IsChosen) {
    EXPECT_EQ(getLensPrettyName(fileAnswering(GetParam().answer)), GetParam().lens);
}

const LensCase kLensCases[] = {
    {"LensIdGoesBeforeLens", "Lens: 24-70 mm\nLensID: EF 24-70mm f/2.8L USM\n",
     "EF 24-70mm f/2.8L USM"},
    {"LensIdAlone", "LensID: EF 50mm f/1.4\n", "EF 50mm f/1.4"},
    {"LensAlone", "Lens: 50.0 mm\n", "50.0 mm"},
    {"UnknownLensIdGivesWayToLens", "LensID: Unknown (198)\nLens: 50.0 mm\n", "50.0 mm"},
    {"UnknownAnywhereInLensIdCounts", "LensID: An Unknown one\nLens: 50.0 mm\n", "50.0 mm"},
    {"UnknownInOtherLettersIsAName", "LensID: unknown\nLens: 50.0 mm\n", "unknown"},
    {"UnknownLensIdWithoutLensIsNothing", "LensID: Unknown (198)\n", ""},
    {"UnknownInLensIsAName", "Lens: Unknown 50 mm\n", "Unknown 50 mm"},
    {"NotAsciiIsNothingAndLensIsntTried", "LensID: \xC2\xB5 Four Thirds\nLens: 50 mm\n", ""},
    {"NotAsciiLensIsNothing", "Lens: 50\xC2\xA0mm\n", ""},
    {"FirstOfTwoCandidates", "LensID: Sigma 50mm or Tamron 60mm\n", "Sigma 50mm"},
    {"FirstOfThreeCandidates", "LensID: A or B or C\n", "A"},
    {"OrInsideAWordIsNoChoice", "LensID: Tamron Aspherical\n", "Tamron Aspherical"},
    {"NoTag", "Make: Canon\n", ""},
};

INSTANTIATE_TEST_SUITE_P(GetLensPrettyName, LensName, ::testing::ValuesIn(kLensCases),
                         [](const auto& testInfo) { return testInfo.param.name; });

// ---- getMakernotesSize

TEST(GetMakernotesSize, SendsThePathFirstAndAnEmptyLineLast) {
    const std::filesystem::path file = uniqueFile("photo.jpg");
    RequestCapture capture;

    static_cast<void>(internal::getMakernotesSize(file));

    EXPECT_EQ(capture.requests(),
              std::vector<std::string>{"-charset\nfilename=utf8\n" + inRequest(file) +
                                       "\n-s3\n-makernotes\n\n-execute\n"});
}

struct SizeCase {
    const char* name;
    const char* answer;
    int size;
};

class MakernotesSize : public ::testing::TestWithParam<SizeCase> {};

TEST_P(MakernotesSize, IsRead) {
    LogCapture log;
    EXPECT_EQ(internal::getMakernotesSize(fileAnswering(GetParam().answer)), GetParam().size);
    EXPECT_EQ(log.lines(), std::vector<LogLine>{});
}

const SizeCase kSizeCases[] = {
    {"TheCountInASentence", "(Binary data 6542 bytes, use -b option to extract)\n", 6542},
    {"NothingForAFileWithoutMakerNotes", "", 0},
    {"NothingForAnAnswerWithoutDigits", "no digits here\n", 0},
    {"AllDigitsAsOneNumber", "12 and 34\n", 1234},
    {"MinusOneForAWarning", "Warning: Bad MakerNotes 12\n", -1},
    {"MinusOneForAWarningInOtherLetters", "12 WARNING\n", -1},
    {"TheLargestNumber", "2147483647\n", 2147483647},
};

INSTANTIATE_TEST_SUITE_P(GetMakernotesSize, MakernotesSize, ::testing::ValuesIn(kSizeCases),
                         [](const auto& testInfo) { return testInfo.param.name; });

TEST(GetMakernotesSize, LogsDigitsThatDontFitAndAnswersMinusOne) {
    const auto file = fileAnswering("2147483648\n");
    LogCapture log;

    EXPECT_EQ(internal::getMakernotesSize(file), -1);

    // The text behind the message is the standard library's own.
    ASSERT_EQ(log.lines().size(), 1U);
    LogLine line = log.lines()[0];
    ASSERT_EQ(line.size(), 3U);
    line[2] = std::string();
    EXPECT_EQ(line, plainLine(2, "getMakernotesSize: exception encountered: ", ""));
}

}  // namespace
}  // namespace exiftool
