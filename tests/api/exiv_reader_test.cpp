#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "api/photo_with_tool.h"
#include "exiv2_wrapper/text/path_text.h"

namespace exiv2_wp {
namespace {

using test_support::Arguments;
using test_support::native;

using UnsignedPair = std::pair<std::uint32_t, std::uint32_t>;
using SignedPair = std::pair<std::int32_t, std::int32_t>;

static_assert(sizeof(ExivReader) == sizeof(void*));
static_assert(!std::is_copy_constructible_v<ExivReader> && !std::is_copy_assignable_v<ExivReader>);
static_assert(!std::is_convertible_v<std::string, ExivReader>);

constexpr auto kRational = "Exif.Photo.ExposureTime";
constexpr auto kIntegers = "Exif.Image.BitsPerSample";
constexpr auto kMissing = "Exif.Image.Nothing";

class Reader : public PhotoWithTool {
protected:
    [[nodiscard]] std::string fileName() const { return internal::narrowPath(file); }
};

// ---- without anything to find

TEST_F(Reader, OfAFileWithoutMetadataFindsNothing) {
    const ExivReader reader(fileName());
    std::string text = "before";
    UnsignedPair unsignedPair = {7, 7};
    SignedPair signedPair = {7, 7};
    std::uint32_t number = 7;
    std::int16_t shortNumber = 7;
    EXPECT_FALSE(reader.getRawExifTag(kRational, text));
    EXPECT_FALSE(reader.getRawExifTag(kRational, 0, unsignedPair));
    EXPECT_FALSE(reader.getRawExifTag(kRational, 0, signedPair));
    EXPECT_FALSE(reader.getRawExifTag(kRational, 0, &number));
    EXPECT_EQ(reader.getRawExifTag(kRational, &number, 1), 0);
    EXPECT_EQ(reader.getRawExifTag(kRational, &shortNumber, 1), 0);
    EXPECT_EQ(reader.getRawExifTag(kRational, &unsignedPair, 1), 0);
    EXPECT_TRUE(reader.getXMPData().empty());
    EXPECT_EQ(text, "before");
    EXPECT_EQ(number, 7U);
}

TEST_F(Reader, FindsNothingUnderAnotherKey) {
    photoHas("Exif.Photo.ExposureTime Rational 1 1/250\n");
    const ExivReader reader(fileName());
    std::string text = "before";
    for (const char* const key : {kMissing, "exif.photo.exposuretime", "Exif.Photo.", ""}) {
        EXPECT_FALSE(reader.getRawExifTag(key, text)) << key;
    }
    EXPECT_EQ(text, "before");
}

TEST_F(Reader, FindsNothingUnderANullKey) {
    photoHas("Exif.Photo.ExposureTime Rational 1 1/250\n");
    const ExivReader reader(fileName());
    std::string text;
    std::uint32_t number = 7;
    std::int32_t size = 7;
    unsigned char* data = nullptr;
    EXPECT_FALSE(reader.getRawExifTag(nullptr, text));
    EXPECT_EQ(reader.getRawExifTag(nullptr, &number, 1), 0);
    EXPECT_FALSE(reader.getRawExifTag(nullptr, &size, &data));
    EXPECT_FALSE(reader.getInterpretedRawExifTag(nullptr, 0, &number));
    EXPECT_EQ(size, 0);
    EXPECT_EQ(tool.countCalls("--key"), 0U);
}

TEST_F(Reader, AsksTheToolForNoEmptyKey) {
    photoHas("");
    tool.answer({"--key"}, {.output = "41"});
    const ExivReader reader(fileName());
    std::uint32_t number = 7;
    std::int32_t size = 7;
    unsigned char* data = nullptr;
    EXPECT_FALSE(reader.getRawExifTag("", &size, &data));
    EXPECT_FALSE(reader.getInterpretedRawExifTag("", 0, &number));
    EXPECT_EQ(tool.countCalls("--key"), 0U);
}

// ---- text

TEST_F(Reader, GivesTheValueInText) {
    photoHas("Exif.Image.Make Ascii 6   Canon  Inc. \n");
    const ExivReader reader(fileName());
    std::string text;
    EXPECT_TRUE(reader.getRawExifTag("Exif.Image.Make", text));
    EXPECT_EQ(text, "Canon  Inc.");
}

TEST_F(Reader, GivesAnEmptyValueAsAnEmptyText) {
    photoHas("Exif.Image.Make Ascii 0\n");
    const ExivReader reader(fileName());
    std::string text = "before";
    EXPECT_TRUE(reader.getRawExifTag("Exif.Image.Make", text));
    EXPECT_EQ(text, "");
}

// ---- one element

// What the three one-element getters answer for a tag's value at an index.
struct Element {
    const char* name;
    const char* line;  // behind the key
    int index;
    bool hasUnsignedPair;
    UnsignedPair unsignedPair;
    bool hasSignedPair;
    SignedPair signedPair;
    bool hasNumber;
    std::uint32_t number;
};

void PrintTo(const Element& element, std::ostream* stream) {
    *stream << element.line << " at " << element.index;
}

constexpr UnsignedPair kNoPair = {7, 7};
constexpr SignedPair kNoSigned = {-7, -7};
constexpr std::uint32_t kNoNumber = 77;

const std::array<Element, 16> kElements = {{
    {"AFractionBelowOne", "Rational 1 1/250", 0, true, {1, 250}, true, {1, 250}, true, 0},
    {"AnIndexBehindTheLast", "Rational 1 1/250", 1, false, kNoPair, false, kNoSigned, false,
     kNoNumber},
    {"ANegativeIndex", "Rational 1 1/250", -1, false, kNoPair, false, kNoSigned, false, kNoNumber},
    {"TheSmallestIndex", "Long 1 1", std::numeric_limits<int>::min(), false, kNoPair, false,
     kNoSigned, false, kNoNumber},
    {"TheLargestIndex", "Long 1 1", std::numeric_limits<int>::max(), false, kNoPair, false,
     kNoSigned, false, kNoNumber},
    {"AWholeRational", "Rational 1 72/1", 0, true, {72, 1}, true, {72, 1}, true, 72},
    {"TheSecondRational", "Rational 2 1/2 9/4", 1, true, {9, 4}, true, {9, 4}, true, 2},
    {"ADenominatorOfZero", "Rational 1 5/0", 0, true, {5, 0}, true, {5, 0}, true, 5},
    {"ANegativeRational", "SRational 1 -1/3", 0, false, kNoPair, true, {-1, 3}, true, 0},
    {"AQuotientBelowZero", "SRational 1 -7/2", 0, false, kNoPair, true, {-7, 2}, false, kNoNumber},
    {"TheSmallestOverMinusOne", "SRational 1 -9223372036854775808/-1", 0, false, kNoPair, false,
     kNoSigned, false, kNoNumber},
    {"AnInteger", "Short 3 8 9 10", 1, true, {9, 1}, true, {9, 1}, true, 9},
    {"ANegativeInteger",
     "SLong 1 -2147483648",
     0,
     false,
     kNoPair,
     true,
     {std::numeric_limits<std::int32_t>::min(), 1},
     false,
     kNoNumber},
    {"TheLargestUnsigned",
     "Long 1 4294967295",
     0,
     true,
     {4294967295U, 1},
     false,
     kNoSigned,
     true,
     4294967295U},
    {"AnIntegerBeyondThirtyTwoBits", "Long 1 4294967296", 0, false, kNoPair, false, kNoSigned,
     false, kNoNumber},
    {"ATextWithoutNumbers", "Ascii 6 Canon", 0, false, kNoPair, false, kNoSigned, false, kNoNumber},
}};

class ReaderElements : public Reader, public ::testing::WithParamInterface<Element> {};

TEST_P(ReaderElements, AreReadFrom) {
    photoHas(std::string("Exif.A.Tag ") + GetParam().line + "\n");
    const ExivReader reader(fileName());
    const int index = GetParam().index;
    UnsignedPair unsignedPair = kNoPair;
    SignedPair signedPair = kNoSigned;
    std::uint32_t number = kNoNumber;

    EXPECT_EQ(reader.getRawExifTag("Exif.A.Tag", index, unsignedPair), GetParam().hasUnsignedPair);
    EXPECT_EQ(reader.getRawExifTag("Exif.A.Tag", index, signedPair), GetParam().hasSignedPair);
    EXPECT_EQ(reader.getRawExifTag("Exif.A.Tag", index, &number), GetParam().hasNumber);

    EXPECT_EQ(unsignedPair, GetParam().unsignedPair);
    EXPECT_EQ(signedPair, GetParam().signedPair);
    EXPECT_EQ(number, GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(, ReaderElements, ::testing::ValuesIn(kElements),
                         [](const auto& element) { return element.param.name; });

TEST_F(Reader, ANumberNeedsAPlaceToGo) {
    photoHas("Exif.Image.BitsPerSample Short 1 8\n");
    const ExivReader reader(fileName());
    EXPECT_FALSE(reader.getRawExifTag(kIntegers, 0, nullptr));
}

// ---- several elements

constexpr std::size_t kRoom = 4;

// What the three array getters write for a tag's value; both pairs and numbers are compared whole,
// the places behind the last included.
struct Series {
    const char* name;
    const char* line;
    int count;
    std::vector<std::uint32_t> numbers;
    std::vector<std::int16_t> shorts;
    std::vector<UnsignedPair> pairs;
};

void PrintTo(const Series& series, std::ostream* stream) {
    *stream << series.line << ", " << series.count << " wanted";
}

const std::array<Series, 12> kSeries = {{
    {"MoreThanWanted", "Short 3 1 2 3", 2, {1, 2}, {1, 2}, {{1, 1}, {2, 1}}},
    {"FewerThanWanted", "Short 2 1 2", 4, {1, 2}, {1, 2}, {{1, 1}, {2, 1}}},
    {"NoneWanted", "Short 2 1 2", 0, {}, {}, {}},
    {"ANegativeNumberWanted", "Short 2 1 2", -1, {}, {}, {}},
    {"AShortOutOfRange", "Long 3 5 70000 6", 3, {5, 70000, 6}, {5}, {{5, 1}, {70000, 1}, {6, 1}}},
    {"ANegativeAmongThem", "SShort 3 5 -1 6", 3, {5}, {5, -1, 6}, {{5, 1}}},
    {"TheFirstOutOfRange", "SLong 2 -70000 1", 2, {}, {}, {}},
    {"Rationals", "Rational 3 7/2 9/0 1/3", 3, {3, 9, 0}, {3, 9, 0}, {{7, 2}, {9, 0}, {1, 3}}},
    {"ANegativeDenominator", "SRational 2 1/2 4/-2", 2, {0}, {0, -2}, {{1, 2}}},
    {"TheSmallestOverMinusOne", "SRational 2 1/1 -9223372036854775808/-1", 2, {1}, {1}, {{1, 1}}},
    {"ANumeratorBeyondThirtyTwoBits",
     "Rational 2 4294967296/4294967296 1/1",
     2,
     {1, 1},
     {1, 1},
     {}},
    {"NoNumbersAtAll", "Ascii 6 Canon", 3, {}, {}, {}},
}};

class ReaderSeries : public Reader, public ::testing::WithParamInterface<Series> {};

template <typename Value>
std::array<Value, kRoom> padded(const std::vector<Value>& values, const Value& rest) {
    std::array<Value, kRoom> whole;
    whole.fill(rest);
    std::copy(values.begin(), values.end(), whole.begin());
    return whole;
}

TEST_P(ReaderSeries, AreReadFrom) {
    photoHas(std::string("Exif.A.Tag ") + GetParam().line + "\n");
    const ExivReader reader(fileName());
    const Series& series = GetParam();
    auto numbers = padded<std::uint32_t>({}, kNoNumber);
    auto shorts = padded<std::int16_t>({}, 77);
    auto pairs = padded<UnsignedPair>({}, kNoPair);

    const auto size = [](const auto& values) { return static_cast<int>(values.size()); };
    EXPECT_EQ(reader.getRawExifTag("Exif.A.Tag", numbers.data(), series.count),
              size(series.numbers));
    EXPECT_EQ(reader.getRawExifTag("Exif.A.Tag", shorts.data(), series.count), size(series.shorts));
    EXPECT_EQ(reader.getRawExifTag("Exif.A.Tag", pairs.data(), series.count), size(series.pairs));

    EXPECT_EQ(numbers, padded<std::uint32_t>(series.numbers, kNoNumber));
    EXPECT_EQ(shorts, padded<std::int16_t>(series.shorts, 77));
    EXPECT_EQ(pairs, padded<UnsignedPair>(series.pairs, kNoPair));
}

INSTANTIATE_TEST_SUITE_P(, ReaderSeries, ::testing::ValuesIn(kSeries),
                         [](const auto& series) { return series.param.name; });

TEST_F(Reader, ASeriesNeedsAPlaceToGo) {
    photoHas("Exif.Image.BitsPerSample Short 3 8 8 8\n");
    const ExivReader reader(fileName());
    EXPECT_EQ(reader.getRawExifTag(kIntegers, static_cast<std::uint32_t*>(nullptr), 3), 0);
    EXPECT_EQ(reader.getRawExifTag(kIntegers, static_cast<std::int16_t*>(nullptr), 3), 0);
    EXPECT_EQ(reader.getRawExifTag(kIntegers, static_cast<UnsignedPair*>(nullptr), 3), 0);
}

// ---- construction

TEST_F(Reader, GivesXmpPropertiesSorted) {
    photoHas(
        "Xmp.xmp.Rating XmpText 1 3\n"
        "Xmp.dc.format XmpText 10 image/jpeg\n");
    const std::vector<ExivReader::XMPData> properties = ExivReader(fileName()).getXMPData();
    ASSERT_EQ(properties.size(), 2U);
    EXPECT_EQ(properties[0].name, "format");
    EXPECT_EQ(properties[1].value, "3");
}

TEST_F(Reader, KeepsWhatItReadWhenTheFileChanges) {
    photoHas("Exif.Image.Make Ascii 6 Canon\n");
    const ExivReader reader(fileName());
    photoHas("Exif.Image.Make Ascii 6 Nikon\n");
    std::string text;
    EXPECT_TRUE(reader.getRawExifTag("Exif.Image.Make", text));
    EXPECT_EQ(text, "Canon");
}

TEST_F(Reader, SharesTheRecordOfAFileWithAnotherReader) {
    photoHas("Exif.Image.Make Ascii 6 Canon\n");
    const ExivReader first(fileName());
    const ExivReader second(fileName());
    EXPECT_EQ(tool.countCalls("-PXEkycv"), 1U);
}

// A summary line that ends in its colon is the one thing that raises an exception in the cache.
constexpr auto kBrokenSummary = "Lens name:\n";

std::string messageOfBrokenSummary(const std::filesystem::path& file) {
    try {
        readExiv2Orientation(file, nullptr);
    } catch (const std::out_of_range& error) {
        return error.what();
    }
    return "nothing was raised";
}

constexpr auto kConstructorSignature =
    "__cdecl exiv2_wp::ExivReader::ExivReader(const class std::basic_string<char,struct "
    "std::char_traits<char>,class std::allocator<char> > &)";

TEST_F(Reader, LogsAnExceptionOfItsConstructor) {
    photoHas("Exif.Image.Make Ascii 6 Canon\n", kBrokenSummary);
    const std::string message = messageOfBrokenSummary(file);
    const ExivReader reader(fileName());
    test_support::LogLine expected =
        test_support::failureLine(kConstructorSignature, "ExivReader error: ");
    expected.emplace_back(vesk::LogLiteral{message});
    EXPECT_EQ(log.lines(), (std::vector<test_support::LogLine>{expected}));
}

// A logger of the host's that raises a number: the one thing that comes from outside.
TEST_F(Reader, LogsWhatItsConstructorMeetsAndIsNoException) {
    std::vector<test_support::LogLine> lines;
    vesk::setLogSink([&lines, isFirst = true](const test_support::LogLine& line) mutable {
        if (std::exchange(isFirst, false)) {
            throw 7;
        }
        lines.push_back(line);
    });

    const ExivReader reader(fileName());  // of a file that the tool can't read, which is logged

    std::string text;
    EXPECT_FALSE(reader.getRawExifTag("Exif.Image.Make", text));
    EXPECT_EQ(lines, (std::vector<test_support::LogLine>{test_support::failureLine(
                         kConstructorSignature, "ExivReader error: Unknown Error")}));
}

TEST_F(Reader, AsksTheToolEvenAfterAnExceptionOfItsConstructor) {
    photoHas("Exif.Image.Make Ascii 6 Canon\n", kBrokenSummary);
    tool.answer({"--key"}, {.output = "Exif.Image.Orientation 6\n"});
    const ExivReader reader(fileName());
    std::string text;
    std::uint32_t number = 0;
    EXPECT_FALSE(reader.getRawExifTag("Exif.Image.Make", text));
    EXPECT_TRUE(reader.getInterpretedRawExifTag("Exif.Image.Orientation", 0, &number));
    EXPECT_EQ(number, 6U);
}

}  // namespace
}  // namespace exiv2_wp
