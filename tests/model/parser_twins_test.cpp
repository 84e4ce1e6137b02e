#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

#include "exiv2_wrapper/model/print_all_parser.h"
#include "exiv2_wrapper/model/summary_parser.h"
#include "model/literal_parsers.h"
#include "model/record_text.h"
#include "support/comma_locale.h"
#include "support/every_nth.h"
#include "support/photo_list.h"
#include "support/skip_or_fail.h"

namespace exiv2_wp::internal {
namespace {

using namespace std::string_view_literals;
using test_support::kEveryNthInput;
using test_support::literalParsePrintAllOutput;
using test_support::literalParseSummaryOutput;
using test_support::toText;

// Pieces of which any order makes a text that comes near a real one.
template <std::size_t count>
std::string randomText(std::mt19937& random, const std::string (&pieces)[count], int most) {
    std::uniform_int_distribution<std::size_t> piece(0, count - 1);
    std::string text;
    for (int i = std::uniform_int_distribution(0, most)(random); i > 0; --i) {
        text += pieces[piece(random)];
    }
    return text;
}

const std::string kPrintAllPieces[] = {
    " ",
    "  ",
    "\t",
    "\n",
    "\n",
    "\n",
    "\r\n",
    "\r",
    "\v",
    "\f",
    std::string(1, '\0'),
    "\xE2\x80\x93",
    "\xFF",
    "\x85",
    "\xA0",
    "Exif.Photo.FNumber ",
    "Exif.Image.FNumber ",
    "Exif.CanonCs.LensType ",
    "Exif.NikonLd4.LensID ",
    "Exif.Photo.LensModel ",
    "Exif.Photo.MakerNote ",
    "exif.image.makernote ",
    "Exif.Sony2.MakerNoteVersion ",
    "Rational ",
    "SRATIONAL ",
    "Undefined ",
    "Ascii ",
    "Short ",
    "1 ",
    "+12 ",
    "-3 ",
    "28/10 ",
    "1/0 ",
    "/5 ",
    "5/ ",
    "3/4/5 ",
    "0 ",
    "99999999999999999999 ",
    "1.5 ",
    "+ ",
    "\nExif.Photo.FNumber Rational 1 ",
    "\nExif.NikonLd4.LensID Byte 1 ",
    "\nExif.Nikon3.Lens Short 2 ",
};

void expectTwinsAgreeOnPrintAll(const std::string& output) {
    CliExifMetadata fast;
    CliExifMetadata literal;
    const bool fastResult = parsePrintAllOutput(output, fast);
    ASSERT_EQ(fastResult, literalParsePrintAllOutput(output, literal))
        << ::testing::PrintToString(output);
    ASSERT_EQ(toText(fast), toText(literal)) << ::testing::PrintToString(output);
}

TEST(PrintAllParserAndItsTwin, AgreeOnRandomOutputs) {
    std::mt19937 random(1979);
    for (int i = 0; i < 10'000 / kEveryNthInput; ++i) {
        ASSERT_NO_FATAL_FAILURE(
            expectTwinsAgreeOnPrintAll(randomText(random, kPrintAllPieces, 40)));
    }
}

TEST(PrintAllParserAndItsTwin, AgreeOnRandomBytes) {
    std::mt19937 random(1980);
    constexpr std::string_view kBytes = "\n\n\n \t\r/+-0123aK.\0\xFF"sv;
    std::uniform_int_distribution<std::size_t> byte(0, kBytes.size() - 1);
    for (int i = 0; i < 10'000 / kEveryNthInput; ++i) {
        std::string output(std::uniform_int_distribution<std::size_t>(0, 60)(random), ' ');
        std::generate(output.begin(), output.end(), [&] { return kBytes[byte(random)]; });
        ASSERT_NO_FATAL_FAILURE(expectTwinsAgreeOnPrintAll(output));
    }
}

TEST(PrintAllParserAndItsTwin, AgreeInALocaleWithADecimalComma) {
    std::mt19937 random(1981);
    for (int i = 0; i < 1'000; ++i) {
        const std::string output = randomText(random, kPrintAllPieces, 40);
        CliExifMetadata literal;
        CliExifMetadata fast;
        (void)literalParsePrintAllOutput(output, literal);
        {
            const test_support::CommaLocale locale;
            (void)parsePrintAllOutput(output, fast);
        }
        ASSERT_EQ(toText(fast), toText(literal)) << ::testing::PrintToString(output);
    }
}

// The result as text; none when the parser raised what it may raise.
template <typename Parser>
std::optional<std::string> summaryOf(const Parser& parse, const std::string& output) {
    CliExifMetadata record;
    try {
        EXPECT_TRUE(parse(output, record));
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
    return toText(record);
}

class RecordedPrintOut : public ::testing::TestWithParam<std::filesystem::path> {};

TEST_P(RecordedPrintOut, MeansTheSameToTheParsersAndTheirTwins) {
    std::filesystem::path file = GetParam();
    if (file.empty()) {
        SKIP_OR_FAIL("no print-outs: EXIV2_WRAPPER_PRINTOUTS names no folder with some");
    }
    expectTwinsAgreeOnPrintAll(test_support::readFile(file));

    const std::string summary = test_support::readFile(file.replace_extension(".summary"));
    EXPECT_EQ(summaryOf(parseSummaryOutput, summary),
              summaryOf(literalParseSummaryOutput, summary));
}

INSTANTIATE_TEST_SUITE_P(Photos, RecordedPrintOut,
                         ::testing::ValuesIn(test_support::listFiles(test_support::printoutFolder(),
                                                                     ".print_all")),
                         test_support::photoName);

const std::string kSummaryPieces[] = {
    "\n",
    "\n",
    "\r\n",
    " ",
    ":",
    ": ",
    " : ",
    "Lens name",
    "Lens name: ",
    "\nLens name ",
    "Lens ",
    "-",
    "0.4",
    "1e99",
    "n/a",
    "inf",
    " mm",
    "12",
    "0x",
    "+",
    "2.4",
    "\xE2",
    "nan",
    "\nFocal length : ",
    "Focal length",
    "\nFocal length 35mm: ",
    "\nSubject distance: ",
    "Subject distance",
    std::string(1, '\0'),
};

TEST(SummaryParserAndItsTwin, AgreeOnRandomOutputs) {
    std::mt19937 random(1982);
    for (int i = 0; i < 20'000 / kEveryNthInput; ++i) {
        const std::string output = randomText(random, kSummaryPieces, 20);
        ASSERT_EQ(summaryOf(parseSummaryOutput, output),
                  summaryOf(literalParseSummaryOutput, output))
            << ::testing::PrintToString(output);
    }
}

}  // namespace
}  // namespace exiv2_wp::internal
