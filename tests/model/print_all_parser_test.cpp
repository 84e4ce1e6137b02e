#include "exiv2_wrapper/model/print_all_parser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "model/record_text.h"
#include "support/case_name.h"

namespace exiv2_wp::internal {
namespace {

using test_support::caseName;
using test_support::toText;

class PrintAllParser : public ::testing::Test {
protected:
    CliExifMetadata record;

    CliExifTag parsedTag(std::string_view output, std::string_view key) {
        EXPECT_TRUE(parsePrintAllOutput(output, record));
        const CliExifTag* const tag = record.find(key);
        EXPECT_NE(tag, nullptr) << "no entry for " << key;
        return tag == nullptr ? CliExifTag() : *tag;
    }
};

TEST_F(PrintAllParser, AcceptsAnEmptyOutputAndLeavesTheRecordAsItWas) {
    record.fileKey = "/photos/1.jpg";
    record.fNumber = 4;
    record.lensId = 7;
    const std::string before = toText(record);

    EXPECT_TRUE(parsePrintAllOutput("", record));

    EXPECT_EQ(toText(record), before);
}

TEST_F(PrintAllParser, ReadsARationalWithPaddedColumns) {
    const CliExifTag tag = parsedTag("Exif.Photo.FNumber                Rational    1  28/10  \n",
                                     "Exif.Photo.FNumber");

    EXPECT_EQ(toText(tag), toText({"Exif.Photo.FNumber", "rational", "28/10", {{28, 10}}, {}, 1}));
    EXPECT_EQ(record.fNumber, 2.8F);
}

TEST_F(PrintAllParser, ReadsATextWithoutNumbers) {
    const CliExifTag tag = parsedTag("Exif.Image.Make Ascii 6 Canon\n", "Exif.Image.Make");

    EXPECT_EQ(toText(tag), toText({"Exif.Image.Make", "ascii", "Canon", {}, {}, 6}));
}

TEST_F(PrintAllParser, TakesWholeNumbersOutOfATextAndSkipsOtherWords) {
    const CliExifTag tag = parsedTag("Exif.Canon.LensModel Ascii 9 EF 50 1.5 2/3 0x10 -7 +8 9mm",
                                     "Exif.Canon.LensModel");

    EXPECT_EQ(tag.integers, (IntegerList{50, -7, 8}));
    EXPECT_EQ(tag.rationals, RationalList());
}

TEST_F(PrintAllParser, SkipsALineOfTwoWords) {
    EXPECT_TRUE(parsePrintAllOutput("Exif.Image.Model Ascii\nExif.Image.Make Ascii 1\n", record));

    EXPECT_EQ(record.find("Exif.Image.Model"), nullptr);
    EXPECT_EQ(record.tags.size(), 1U);
}

TEST_F(PrintAllParser, KeepsALineOfThreeWordsWithAnEmptyValue) {
    const CliExifTag tag = parsedTag("Exif.Image.Make Ascii 1 \t\n", "Exif.Image.Make");

    EXPECT_EQ(toText(tag), toText({"Exif.Image.Make", "ascii", "", {}, {}, 1}));
}

TEST_F(PrintAllParser, KeepsTheFirstOfTwoLinesWithOneKey) {
    const CliExifTag tag =
        parsedTag("Xmp.dc.title XmpText 1 A\nXmp.dc.title LangAlt 2 B\n", "Xmp.dc.title");

    EXPECT_EQ(toText(tag), toText({"Xmp.dc.title", "xmptext", "A", {}, {}, 1}));
    EXPECT_EQ(record.tags.size(), 1U);
}

TEST_F(PrintAllParser, TellsKeysApartByLetterCase) {
    const CliExifTag tag = parsedTag("Xmp.a.B XmpText 1 one\nXmp.a.b XmpText 1 two\n", "Xmp.a.b");

    EXPECT_EQ(tag.value, "two");
    EXPECT_EQ(record.tags.size(), 2U);
}

TEST_F(PrintAllParser, KeepsInnerBlanksOfAValue) {
    EXPECT_EQ(parsedTag("K T 1 \t a  b\t\tc \v\f\n", "K").value, "a  b\t\tc");
}

TEST_F(PrintAllParser, TakesEveryKindOfWhiteSpaceBetweenColumns) {
    const CliExifTag tag = parsedTag("\v K\fShort\r1\t42", "K");

    EXPECT_EQ(toText(tag), toText({"K", "short", "42", {}, {42}, 1}));
}

TEST_F(PrintAllParser, KeepsBytesThatAreNotUtf8AndNulBytes) {
    const std::string value("\xFF\x80\xC3(\0 7\0 8", 10);

    const CliExifTag tag = parsedTag("K Ascii 1 " + value + "\n", "K");

    EXPECT_EQ(tag.value, value);
    EXPECT_EQ(tag.integers, IntegerList{8});
}

TEST_F(PrintAllParser, ReadsCrLfLineEndsLikeLfLineEnds) {
    CliExifMetadata other;
    EXPECT_TRUE(parsePrintAllOutput("A Ascii 1 x y\r\n\r\nB Ascii 1\r\nC Short 1 7\r\n", record));
    EXPECT_TRUE(parsePrintAllOutput("A Ascii 1 x y\n\nB Ascii 1\nC Short 1 7\n", other));

    EXPECT_EQ(toText(record), toText(other));
    EXPECT_EQ(record.tags.size(), 3U);
}

TEST_F(PrintAllParser, ReadsALastLineWithoutALineFeed) {
    EXPECT_EQ(parsedTag("A Ascii 1 x\nB Ascii 1 y", "B").value, "y");
}

TEST_F(PrintAllParser, RejectsAnOutputWithoutEntries) {
    const std::string before = toText(record);
    for (const char* const output :
         {"\n", " \r\n\t\n", "one\n", "one two\n", "Exif.Photo.MakerNote Undefined 9 1 2\n"}) {
        EXPECT_FALSE(parsePrintAllOutput(output, record)) << output;
    }
    EXPECT_EQ(toText(record), before);
}

// The table doesn't show its room, but has as many buckets as it has room for entries.
TEST_F(PrintAllParser, MakesRoomForAllEntriesAtOnceAndForNoMore) {
    constexpr std::size_t kEntries = 1000;
    std::string output = "Exif.Photo.MakerNote Undefined 100000 " + std::string(100'000, 'x');
    for (std::size_t i = 0; i < kEntries; ++i) {
        output += "\nExif.Any.Key" + std::to_string(i) + " Short 1 1";
    }
    TagTable expected;
    expected.reserve(kEntries);

    EXPECT_TRUE(parsePrintAllOutput(output, record));

    EXPECT_EQ(record.tags.size(), kEntries);
    EXPECT_EQ(record.tags.bucket_count(), expected.bucket_count());
}

// However the reader parts an output, each entry is kept, and its texts stay where they are.
TEST_F(PrintAllParser, KeepsEveryEntryOfALongOutput) {
    constexpr int kEntries = 5000;
    std::string output;
    for (int i = 0; i < kEntries; ++i) {
        const std::string number = std::to_string(i);
        output += "Exif.Any.KeyThatIsLong" + number + " Short 1 " + number + "\n";
        output += "Exif.Any.KeyThatIsLong0 Short 1 again\n";
    }

    EXPECT_TRUE(parsePrintAllOutput(output, record));

    EXPECT_EQ(record.tags.size(), std::size_t{kEntries});
    for (int i = 0; i < kEntries; ++i) {
        const std::string key = "Exif.Any.KeyThatIsLong" + std::to_string(i);
        const CliExifTag* const tag = record.find(key);
        ASSERT_NE(tag, nullptr) << key;
        EXPECT_EQ(tag->key, key);
        EXPECT_EQ(tag->value, std::to_string(i));
        EXPECT_EQ(tag->integers, IntegerList{i});
    }
}

TEST_F(PrintAllParser, KeepsNothingOfLinesThatDoNotCount) {
    std::string output;
    for (int i = 0; i < 5000; ++i) {
        output += "Exif.Any.Key Short 1 " + std::to_string(i) + "\n";
    }

    EXPECT_TRUE(parsePrintAllOutput(output, record));

    EXPECT_EQ(record.tags.size(), 1U);
    EXPECT_EQ(record.find("Exif.Any.Key")->value, "0");
    EXPECT_EQ(record.texts.size(), 1U);
}

TEST_F(PrintAllParser, TouchesNoFieldButTagsFNumberAndLensId) {
    record.fileKey = "/photos/1.jpg";
    record.lensName = "lens";
    record.focalLength = 1;
    record.focalLength35mm = 2;
    record.subjectDistance = 3;
    CliExifMetadata expected = record;
    expected.fNumber = 4;
    expected.lensId = 5;

    EXPECT_TRUE(parsePrintAllOutput(
        "Exif.Photo.FNumber Rational 1 4/1\nExif.CanonCs.LensType Short 1 5\n", record));

    expected.tags = record.tags;
    EXPECT_EQ(toText(record), toText(expected));
}

TEST_F(PrintAllParser, AddsToEntriesThatTheRecordHas) {
    EXPECT_TRUE(parsePrintAllOutput("A Ascii 1 first\n", record));
    EXPECT_TRUE(parsePrintAllOutput("A Ascii 1 second\nB Ascii 1 x\n", record));

    EXPECT_EQ(record.find("A")->value, "first");
    EXPECT_EQ(record.tags.size(), 2U);
}

TEST(Record, IsOutlivedByItsCopies) {
    CliExifMetadata copy;
    {
        CliExifMetadata record;
        ASSERT_TRUE(parsePrintAllOutput("Exif.Image.Make Ascii 6 The maker of 7 cameras", record));
        copy = record;
    }
    const CliExifTag* const tag = copy.find("Exif.Image.Make");
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(tag->value, "The maker of 7 cameras");
    EXPECT_EQ(tag->integers, IntegerList{7});
}

struct CountCase {
    const char* name;
    const char* word;
    std::int32_t expected;
};

class PrintAllCount : public ::testing::TestWithParam<CountCase> {};

TEST_P(PrintAllCount, IsAWholeNumberInRangeOrElse0) {
    CliExifMetadata record;

    ASSERT_TRUE(parsePrintAllOutput("K Ascii " + std::string(GetParam().word) + " x", record));

    EXPECT_EQ(record.find("K")->count, GetParam().expected);
    EXPECT_EQ(record.find("K")->value, "x");
}

constexpr CountCase kCounts[] = {
    {"WithPlus", "+12", 12},
    {"Zero", "0", 0},
    {"Negative", "-3", 0},
    {"Letters", "abc", 0},
    {"TooLarge", "99999999999", 0},
    {"Largest", "2147483647", 2147483647},
    {"OneTooLarge", "2147483648", 0},
    {"WrappedAroundIntoRange", "18446744073709551621", 5},
    {"Decimal", "1.0", 0},
};

INSTANTIATE_TEST_SUITE_P(Words, PrintAllCount, ::testing::ValuesIn(kCounts), caseName<CountCase>);

struct MakerNoteCase {
    const char* name;
    const char* columns;
    bool isKept;
};

class PrintAllMakerNote : public ::testing::TestWithParam<MakerNoteCase> {};

TEST_P(PrintAllMakerNote, IsDroppedAsABlobAndKeptAsAValue) {
    CliExifMetadata record;

    EXPECT_EQ(parsePrintAllOutput(std::string(GetParam().columns) + " 1 1", record),
              GetParam().isKept);

    EXPECT_EQ(record.tags.size(), GetParam().isKept ? 1U : 0U);
}

constexpr MakerNoteCase kMakerNotes[] = {
    {"Photo", "Exif.Photo.MakerNote Undefined", false},
    {"PhotoOfAnyType", "Exif.Photo.MakerNote Ascii", false},
    {"ImageLong", "Exif.Image.MakerNote Long", false},
    {"AnyLetterCase", "EXIF.PHOTO.MAKERNOTE byte", false},
    {"VersionText", "Exif.Sony2.MakerNoteVersion Ascii", true},
    {"VersionBytes", "Exif.Sony2.MakerNoteVersion Undefined", false},
    {"VersionBytesInAnyLetterCase", "Exif.Sony2.mAKERnOTEx uNDEFINED", false},
    {"MakerNoteAsTheGroup", "Exif.MakerNote.ByteOrder Undefined", false},
    {"MakerNoteGroupText", "Exif.MakerNote.ByteOrder Ascii", true},
    {"LongerThanPhoto", "Exif.Photo.MakerNoteSafety Short", true},
    {"NoPointBefore", "Exif.Canon.XMakerNote Undefined", true},
    {"NotTheWholeWord", "Exif.Canon.MakerNotation Undefined", true},
    {"OtherUndefined", "Exif.Photo.UserComment Undefined", true},
};

INSTANTIATE_TEST_SUITE_P(Lines, PrintAllMakerNote, ::testing::ValuesIn(kMakerNotes),
                         caseName<MakerNoteCase>);

TEST_F(PrintAllParser, SkipsUnreadableWordsOfARationalValue) {
    const CliExifTag tag = parsedTag(
        "Exif.Photo.FNumber SRational 5 1/0 /5 5/ 3/4/5 -7/2 / x/y 1/-x 12", "Exif.Photo.FNumber");

    EXPECT_EQ(tag.rationals, (RationalList{{1, 0}, {-7, 2}}));
    EXPECT_EQ(tag.integers, IntegerList());
    EXPECT_EQ(record.fNumber, std::numeric_limits<float>::infinity());
}

TEST_F(PrintAllParser, WrapsNumbersThatDoNotFit) {
    const CliExifTag tag = parsedTag("K Rational 1 18446744073709551617/-9223372036854775809", "K");

    EXPECT_EQ(tag.rationals, (RationalList{{1, std::numeric_limits<std::int64_t>::max()}}));
}

TEST_F(PrintAllParser, ReadsNoIntegersFromARationalType) {
    EXPECT_TRUE(parsePrintAllOutput("Exif.Photo.LensSpecification Rational 4 24 70 0 0", record));

    EXPECT_EQ(record.find("Exif.Photo.LensSpecification")->integers, IntegerList());
    EXPECT_EQ(record.lensId, -1);
}

}  // namespace
}  // namespace exiv2_wp::internal
