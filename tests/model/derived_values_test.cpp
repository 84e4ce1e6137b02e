#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "exiv2_wrapper/model/print_all_parser.h"
#include "model/lens_id_keys.h"
#include "support/case_name.h"

namespace exiv2_wp::internal {
namespace {

using test_support::kLensIdKeys;

CliExifMetadata parse(std::string_view output) {
    CliExifMetadata record;
    EXPECT_TRUE(parsePrintAllOutput(output, record));
    return record;
}

std::string linesFor(std::span<const char* const> keys, std::string_view columns) {
    std::string lines;
    for (const char* const key : keys) {
        lines += std::string(key) + ' ' + std::string(columns) + '\n';
    }
    return lines;
}

constexpr const char* kFNumberKeys[] = {
    "Exif.Photo.FNumber",     "Exif.Image.FNumber",    "Exif.Pentax.FNumber",
    "Exif.PentaxDng.FNumber", "Exif.Samsung2.FNumber",
};

TEST(DerivedFNumber, ComesFromTheFirstOfItsKeysWhateverTheOrderOfTheLines) {
    for (std::size_t first = 0; first < std::size(kFNumberKeys); ++first) {
        const auto others = std::span(kFNumberKeys).subspan(first + 1);
        const std::string output = linesFor(others, "Rational 1 56/10") +
                                   std::string(kFNumberKeys[first]) + " Rational 1 28/10 7/1";
        EXPECT_EQ(parse(output).fNumber, 2.8F) << kFNumberKeys[first];
    }
}

TEST(DerivedFNumber, PassesOverAKeyWithAnUnreadableValue) {
    EXPECT_EQ(
        parse("Exif.Photo.FNumber Rational 1 f/2.8\nExif.Image.FNumber Rational 1 56/10\n").fNumber,
        5.6F);
}

TEST(DerivedFNumber, PassesOverAKeyOfAnotherType) {
    EXPECT_EQ(parse("Exif.Photo.FNumber Short 1 4\nExif.Samsung2.FNumber Rational 1 2/1").fNumber,
              2.0F);
}

TEST(DerivedFNumber, IsNoNumberForZeroOverZero) {
    EXPECT_TRUE(std::isnan(parse("Exif.Photo.FNumber Rational 1 0/0").fNumber));
}

TEST(DerivedFNumber, IsDividedInSinglePrecision) {
    // Neither number is a float. In double precision the quotient is 3.
    EXPECT_EQ(parse("Exif.Photo.FNumber Rational 1 50331651/16777217").fNumber, 3.0F + 0x1p-22F);
}

TEST(DerivedFNumber, StaysUnknownWithoutAKey) {
    EXPECT_EQ(
        parse("Exif.Photo.ApertureValue Rational 1 4/1\nexif.photo.fnumber Rational 1 4/1").fNumber,
        -1.0F);
}

TEST(DerivedLensId, ComesFromTheFirstOfItsKeysWhateverTheOrderOfTheLines) {
    for (std::size_t first = 0; first < std::size(kLensIdKeys); ++first) {
        const auto others = std::span(kLensIdKeys).subspan(first + 1);
        const std::string output =
            linesFor(others, "Short 1 9") + std::string(kLensIdKeys[first]) + " Short 2 61 7";
        EXPECT_EQ(parse(output).lensId, 61) << kLensIdKeys[first];
    }
}

struct LensIdCase {
    const char* name;
    const char* output;
    std::int32_t expected;
};

class DerivedLensIdOf : public ::testing::TestWithParam<LensIdCase> {};

TEST_P(DerivedLensIdOf, Entries) {
    EXPECT_EQ(parse(GetParam().output).lensId, GetParam().expected);
}

constexpr LensIdCase kLensIds[] = {
    {"ZeroIsALensOfOneNikonGroup",
     "Exif.CanonCs.LensType Short 1 0\nExif.NikonLd4.LensID Byte 1 0\nExif.Nikon3.Lens Byte 1 8",
     0},
    {"NegativeIsALensOfThatGroupToo",
     "Exif.NikonLd4.LensIDNumber SByte 1 -4\nExif.Pentax.LensType Byte 2 3 255", -4},
    {"ZeroElsewhereIsPassedOver",
     "Exif.NikonLd3.LensIDNumber Byte 1 0\nExif.Pentax.LensType Byte 2 3 255", 3},
    {"NegativeElsewhereIsPassedOver",
     "Exif.CanonCs.LensType SShort 1 -1\nExif.Panasonic.LensType Byte 1 2", 2},
    {"OnlyTheFirstIntegerOfAKeyCounts",
     "Exif.Pentax.LensType Byte 2 0 7\nExif.Nikon3.Lens Byte 1 8", 8},
    {"NumberThatStandsAloneInAModelName", "Exif.Photo.LensModel Ascii 8 EF 50 mm", 50},
    {"NoNumberStandsAloneInAModelName", "Exif.Photo.LensModel Ascii 8 EF50mm f/1.8", -1},
    {"LowBitsOfALargeNumber", "Exif.CanonCs.LensType Long 1 4294967297", 1},
    {"LowBitsMayBeNegative", "Exif.CanonCs.LensType Long 1 4294967295", -1},
    {"RationalTypeNeverQualifies", "Exif.Nikon3.Lens Rational 4 240/10 700/10 28/10 28/10", -1},
    {"KeysAreCaseSensitive", "exif.canoncs.lenstype Short 1 61", -1},
    {"NoKey", "Exif.Image.Make Ascii 6 Canon", -1},
};

INSTANTIATE_TEST_SUITE_P(Table, DerivedLensIdOf, ::testing::ValuesIn(kLensIds),
                         test_support::caseName<LensIdCase>);

TEST(DerivedValues, KeepWhatTheRecordHadWhenNoKeyQualifies) {
    CliExifMetadata record;
    record.fNumber = 4;
    record.lensId = 7;

    EXPECT_TRUE(parsePrintAllOutput("Exif.Image.Make Ascii 6 Canon", record));

    EXPECT_EQ(record.fNumber, 4);
    EXPECT_EQ(record.lensId, 7);
}

}  // namespace
}  // namespace exiv2_wp::internal
