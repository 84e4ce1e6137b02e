#include <gtest/gtest.h>

#include <iterator>
#include <string>

#include "api/summary_fixture.h"
#include "support/case_name.h"

namespace exiv2_wp::internal {
namespace {

struct CodeCase {
    const char* name;
    std::int32_t SExivMetadataInfo::*field;
    std::int32_t unknown;
    std::vector<const char*> keys;
    const char* ignoredKey;
};

class Code : public test_support::SummaryFixture, public ::testing::WithParamInterface<CodeCase> {
protected:
    [[nodiscard]] std::int32_t code() const { return summary().*GetParam().field; }
};

TEST_P(Code, IsTheFirstIntegerOfTheFirstReadableKey) {
    addIntegers(GetParam().ignoredKey, {9});
    EXPECT_EQ(code(), GetParam().unknown);
    std::int64_t value = 0;
    for (auto key = GetParam().keys.rbegin(); key != GetParam().keys.rend(); ++key) {
        addIntegers(*key, {++value, 7});
        EXPECT_EQ(code(), value) << *key;
    }
}

TEST_P(Code, PassesOverUnreadableKeys) {
    for (const char* const key : GetParam().keys) {
        addText(key, "6a");
        EXPECT_EQ(code(), GetParam().unknown);
    }
    addText(GetParam().keys.back(), "6");
    EXPECT_EQ(code(), 6);
}

const CodeCase kCodes[] = {
    {"BitsPerSample",
     &SExivMetadataInfo::bitsPerSample,
     0,
     {"Exif.Image.BitsPerSample"},
     "Exif.Photo.BitsPerSample"},
    {"Orientation",
     &SExivMetadataInfo::orientation,
     0,
     {"Exif.Image.Orientation"},
     "Exif.Photo.Orientation"},
    {"MeteringMode",
     &SExivMetadataInfo::meteringMode,
     -1,
     {"Exif.Image.MeteringMode", "Exif.Photo.MeteringMode"},
     "Xmp.exif.MeteringMode"},
    {"LightSource",
     &SExivMetadataInfo::lightSource,
     -1,
     {"Exif.Image.LightSource", "Exif.Photo.LightSource"},
     "Xmp.exif.LightSource"},
    {"WhiteBalance",
     &SExivMetadataInfo::whiteBalance,
     -1,
     {"Exif.Photo.WhiteBalance"},
     "Exif.Image.WhiteBalance"},
};

INSTANTIATE_TEST_SUITE_P(Fields, Code, ::testing::ValuesIn(kCodes),
                         test_support::caseName<CodeCase>);

class Orientation : public test_support::SummaryFixture {};

TEST_F(Orientation, IsUnknownForAnIntegerOutOfRangeWhateverTheTextSays) {
    record.tags["Exif.Image.Orientation"] = {
        "Exif.Image.Orientation", "long", "6", {}, {4294967296}, 1};

    EXPECT_EQ(summary().orientation, 0);
}

TEST_F(Orientation, IsNotCheckedAgainstTheExifCodes) {
    addIntegers("Exif.Image.Orientation", {-2147483648LL});

    EXPECT_EQ(summary().orientation, -2147483647 - 1);
}

constexpr const char* kDateKeys[] = {
    "Exif.Photo.DateTimeOriginal",
    "Exif.Image.DateTimeOriginal",
    "Exif.Image.DateTime",
    "Exif.Photo.DateTimeDigitized",
};

constexpr const char* kOffsetKeys[] = {
    "Exif.Photo.OffsetTime",
    "Exif.Photo.OffsetTimeOriginal",
    "Exif.Photo.OffsetTimeDigitized",
    "Exif.Image.TimeZoneOffset",
};

class CaptureDate : public test_support::SummaryFixture {};

TEST_F(CaptureDate, IsTheFirstOneThatIsNotBlank) {
    for (std::size_t chosen = std::size(kDateKeys); chosen-- > 0;) {
        addText(kDateKeys[chosen], " \t2021:07:0" + std::to_string(chosen) + " 18:30:05\r\n");
        EXPECT_EQ(summary().dateTimeOriginal, "2021:07:0" + std::to_string(chosen) + " 18:30:05");
    }
    addText(kDateKeys[0], "   ");
    EXPECT_EQ(summary().dateTimeOriginal, "2021:07:01 18:30:05");
}

TEST_F(CaptureDate, IsEmptyInSilenceWhenThereIsNone) {
    addText(kDateKeys[1], " \t ");

    EXPECT_EQ(summary().dateTimeOriginal, "");
    EXPECT_EQ(summary().dateTimeIso, "");
    EXPECT_EQ(log.lines().size(), 10U * 2);
}

TEST_F(CaptureDate, TakesTheFirstOffsetThatIsNotBlankThePlainOneFirst) {
    addText(kDateKeys[0], "2021:07:04 18:30:05");
    for (std::size_t chosen = std::size(kOffsetKeys); chosen-- > 0;) {
        addText(kOffsetKeys[chosen], "+0" + std::to_string(chosen) + ":00");
        EXPECT_EQ(summary().dateTimeIso, "2021-07-04T18:30:05+0" + std::to_string(chosen) + ":00");
    }
    addText(kOffsetKeys[0], " ");
    EXPECT_EQ(summary().dateTimeIso, "2021-07-04T18:30:05+01:00");
}

struct IsoCase {
    const char* name;
    const char* date;
    const char* offset;
    const char* expected;
};

class IsoDate : public test_support::SummaryFixture,
                public ::testing::WithParamInterface<IsoCase> {};

TEST_P(IsoDate, OfADateAndAnOffset) {
    addText(kDateKeys[0], GetParam().date);
    addText(kOffsetKeys[0], GetParam().offset);

    EXPECT_EQ(summary().dateTimeIso, GetParam().expected);
    EXPECT_EQ(summary().dateTimeOriginal, GetParam().date);
}

constexpr IsoCase kIsoCases[] = {
    {"WithOffset", "2021:07:04 18:30:05", "+02:00", "2021-07-04T18:30:05+02:00"},
    {"NegativeOffset", "2021:07:04 18:30:05", "-11:30", "2021-07-04T18:30:05-11:30"},
    {"LongOffsetIsKeptWhole", "2021:07:04 18:30:05", "+02:00:15", "2021-07-04T18:30:05+02:00:15"},
    {"OffsetWithoutColon", "2021:07:04 18:30:05", "+0200", "2021-07-04T18:30:05"},
    {"OffsetWithoutColonButLongEnough", "2021:07:04 18:30:05", "+02000", "2021-07-04T18:30:05"},
    {"OffsetWithoutSign", "2021:07:04 18:30:05", "02:000", "2021-07-04T18:30:05"},
    {"OffsetOfHours", "2021:07:04 18:30:05", "2", "2021-07-04T18:30:05"},
    {"OffsetWithALetterForTensOfHours", "2021:07:04 18:30:05", "+x2:00", "2021-07-04T18:30:05"},
    {"OffsetWithALetterForHours", "2021:07:04 18:30:05", "+0x:00", "2021-07-04T18:30:05"},
    {"OffsetWithALetterForTensOfMinutes", "2021:07:04 18:30:05", "+02:x0", "2021-07-04T18:30:05"},
    {"OffsetWithALetterForMinutes", "2021:07:04 18:30:05", "+02:0x", "2021-07-04T18:30:05"},
    {"OffsetZ", "2021:07:04 18:30:05", "Z", "2021-07-04T18:30:05"},
    {"SeparatorsAreNotChecked", "2021x07x04x18x30x05", "", "2021-07-04T18x30x05"},
    {"IsoAlready", "2021-07-04T18:30:05", "+02:00", "2021-07-04T18:30:05+02:00"},
    {"SubsecondsAreKept", "2021:07:04 18:30:05.25", "+02:00", "2021-07-04T18:30:05.25+02:00"},
    {"NotChecked", "9999:99:99 99:99:99", "+99:99", "9999-99-99T99:99:99+99:99"},
    {"DateAlone", "2021:07:04", "+02:00", ""},
    {"OneByteShort", "2021:07:04 18:30:0", "", ""},
    {"BlankForADigit", "2021:07:04 18:30: 5", "", ""},
    {"BlanksForDigits", "x   :  :     :  :   x", "", ""},
    {"HighBytes", "\xB2\xB2\xB2\xB2:07:04 18:30:05", "", ""},
};

INSTANTIATE_TEST_SUITE_P(Texts, IsoDate, ::testing::ValuesIn(kIsoCases),
                         test_support::caseName<IsoCase>);

TEST_F(CaptureDate, IsNotIsoWhenAnyOfItsDigitsIsNone) {
    for (const unsigned digit : {0U, 1U, 2U, 3U, 5U, 6U, 8U, 9U, 11U, 12U, 14U, 15U, 17U, 18U}) {
        std::string date = "2021:07:04 18:30:05";
        date[digit] = '/';
        addText(kDateKeys[0], date);
        EXPECT_EQ(summary().dateTimeIso, "") << date;
    }
}

}  // namespace
}  // namespace exiv2_wp::internal
