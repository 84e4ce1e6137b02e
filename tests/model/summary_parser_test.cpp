#include "exiv2_wrapper/model/summary_parser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "model/record_text.h"
#include "support/case_name.h"
#include "support/comma_locale.h"

namespace exiv2_wp::internal {
namespace {

using test_support::toText;

CliExifMetadata parseSummary(std::string_view output) {
    CliExifMetadata record;
    EXPECT_TRUE(parseSummaryOutput(output, record));
    return record;
}

constexpr std::string_view kWholeSummary =
    "File name       : /photos/1.jpg\n"
    "Camera make     : Canon\n"
    "Subject distance: 0\n"
    "Focal length    : 50.0 mm (35 mm equivalent: 80.0 mm)\n"
    "Lens name       : EF24-70mm f/2.8L USM\n"
    "Exif comment    : \n";

TEST(SummaryParser, ReadsThreeItemsAndNothingElse) {
    CliExifMetadata expected;
    expected.lensName = "EF24-70mm f/2.8L USM";
    expected.focalLength = 50;
    expected.subjectDistance = 0.01F;

    EXPECT_EQ(toText(parseSummary(kWholeSummary)), toText(expected));
}

TEST(SummaryParser, ReadsTheSameInALocaleWithADecimalComma) {
    const test_support::CommaLocale locale;

    EXPECT_EQ(parseSummary("Focal length: 24.5 mm\n").focalLength, 24.5F);
    EXPECT_EQ(parseSummary("Subject distance: 0.4\n").subjectDistance, 0.1F);
}

TEST(SummaryParser, LeavesTheRecordAsItWasWithoutTheItems) {
    for (const char* const output :
         {"", "\n", "Camera make     : Canon\n", " Lens name : x\n", "lens name : x\n", "Lens nam",
          "Lens name\nFocal length\nSubject distance\n"}) {
        EXPECT_EQ(toText(parseSummary(output)), toText(CliExifMetadata())) << output;
    }
}

TEST(SummaryParser, ReadsEachItemWithoutTheOthers) {
    EXPECT_EQ(parseSummary("Lens name: x\nFocal length: n/a\nSubject distance: ?\n").lensName, "x");
    EXPECT_EQ(parseSummary("Lens name\nFocal length: 35\nSubject distance: ?\n").focalLength, 35);
    EXPECT_EQ(parseSummary("Focal length: ?\nSubject distance: 0.4").subjectDistance, 0.1F);
}

TEST(SummaryParser, KeepsTheCarriageReturnOfALineEnd) {
    EXPECT_EQ(parseSummary("Lens name       : EF50mm\r\n").lensName, "EF50mm\r");
    EXPECT_EQ(parseSummary("Focal length    : 50.0 mm\r\n").focalLength, 50);
}

TEST(SummaryParser, LeavesTheLensNameEmptyWhenNothingFollowsItsBlank) {
    EXPECT_EQ(parseSummary("Lens name       : \n").lensName, "");
}

TEST(SummaryParser, DropsTheByteBehindTheColonWhateverItIsAndTrimsNothing) {
    EXPECT_EQ(parseSummary("Lens name:EF50mm: x \n").lensName, "F50mm: x ");
    EXPECT_EQ(parseSummary("Lens name       :   EF50mm\n").lensName, "  EF50mm");
}

TEST(SummaryParser, TakesTheFirstOfTwoLinesWithOneLabel) {
    EXPECT_EQ(parseSummary("Lens name: A\nLens name: B\n").lensName, "A");
    EXPECT_EQ(parseSummary("Focal length\nFocal length: 50\n").focalLength, -1.0F);
}

TEST(SummaryParser, ComparesOnlyTheBeginningOfALine) {
    EXPECT_EQ(parseSummary("Focal length 35mm: 80\nFocal length: 50\n").focalLength, 80);
}

TEST(SummaryParser, ReadsALastLineWithoutALineFeed) {
    EXPECT_EQ(parseSummary("Lens name: A").lensName, "A");
}

TEST(SummaryParser, KeepsBytesThatAreNotUtf8AndNulBytes) {
    const std::string name("\xFF\0\x80z", 4);

    EXPECT_EQ(parseSummary("Lens name: " + name + "\n").lensName, name);
}

class SummaryLineThatEndsInItsColon : public ::testing::TestWithParam<const char*> {};

TEST_P(SummaryLineThatEndsInItsColon, RaisesOutOfRange) {
    CliExifMetadata record;
    const std::string line = std::string(GetParam()) + "   :";

    EXPECT_THROW((void)parseSummaryOutput(line, record), std::out_of_range);
    EXPECT_THROW((void)parseSummaryOutput(line + "\nCamera make: x\n", record), std::out_of_range);
}

INSTANTIATE_TEST_SUITE_P(Labels, SummaryLineThatEndsInItsColon,
                         ::testing::Values("Lens name", "Focal length", "Subject distance"),
                         [](const auto& label) {
                             std::string name = label.param;
                             std::erase(name, ' ');
                             return name;
                         });

TEST(SummaryParser, RaisesNothingForOtherLinesThatEndInTheirColon) {
    EXPECT_EQ(parseSummary("Flash bias:\nLens name: A\nLens name:\n").lensName, "A");
    EXPECT_EQ(parseSummary("Lens name:\r\n").lensName, "");
}

struct NumberCase {
    const char* name;
    const char* text;
    float expected;
};

class SummaryFocalLength : public ::testing::TestWithParam<NumberCase> {};

TEST_P(SummaryFocalLength, IsTheNumberAtTheBeginning) {
    EXPECT_EQ(parseSummary("Focal length    : " + std::string(GetParam().text) + "\n").focalLength,
              GetParam().expected);
}

constexpr NumberCase kFocalLengths[] = {
    {"WithUnitAndEquivalent", "50.0 mm (35 mm equivalent: 80.0 mm)", 50},
    {"WhiteSpaceBefore", " \t 7", 7},
    {"NotAvailable", "n/a", -1},
    {"Nothing", "", -1},
    {"OutOfRange", "1e99 mm", -1},
    {"TooSmall", "1e-99 mm", -1},
    {"Comma", "7,5 mm", 7},
};

INSTANTIATE_TEST_SUITE_P(Texts, SummaryFocalLength, ::testing::ValuesIn(kFocalLengths),
                         test_support::caseName<NumberCase>);

class SummarySubjectDistance : public ::testing::TestWithParam<NumberCase> {};

TEST_P(SummarySubjectDistance, IsReadAsALogarithmicStep) {
    EXPECT_FLOAT_EQ(
        parseSummary("Subject distance: " + std::string(GetParam().text) + "\n").subjectDistance,
        GetParam().expected);
}

constexpr NumberCase kDistances[] = {
    {"Zero", "0", 0.01F},
    {"OneDecade", "0.4", 0.1F},
    {"TwoDecades", "0.8", 1},
    {"FiveDecades", "2", 1000},
    {"SixDecades", "2.4", 10000},
    {"Capped", "4", 10000},
    {"CappedThoughTheirPowerHasNoFloat", "100", 10000},
    {"CappedThoughTheirPowerHasNoDouble", "9999 m", 10000},
    {"Infinite", "inf", 10000},
    {"NegativeInfinite", "-inf", 0},
    {"Negative", "-0.4", 0.001F},
    {"NoNumber", "far away", -1},
    {"Nothing", "", -1},
    {"OutOfRange", "1e99", -1},
};

INSTANTIATE_TEST_SUITE_P(Texts, SummarySubjectDistance, ::testing::ValuesIn(kDistances),
                         test_support::caseName<NumberCase>);

TEST(SummaryParser, StoresASubjectDistanceThatIsNoNumber) {
    EXPECT_TRUE(std::isnan(parseSummary("Subject distance: nan\n").subjectDistance));
}

TEST(FindSummaryValue, AnswersNothingForALabelWithoutALineOrAColon) {
    EXPECT_EQ(findSummaryValue({}, "Lens name"), "");
    EXPECT_EQ(findSummaryValue({"Lens nam: x", "Lens name", "Lens name: y"}, "Lens name"), "");
    EXPECT_EQ(findSummaryValue({"a: b", "Lens name : y"}, "Lens name"), "y");
}

}  // namespace
}  // namespace exiv2_wp::internal
