#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "api/photo_with_tool.h"
#include "exiv2_wrapper/text/path_text.h"
#include "support/comma_locale.h"

namespace exiv2_wp {
namespace {

using test_support::Arguments;
using test_support::native;

constexpr auto kKey = "Exif.Photo.ExifVersion";

// The two getters that ask the tool anew.
class ReaderWithTool : public PhotoWithTool {
protected:
    void SetUp() override {
        PhotoWithTool::SetUp();
        photoHas("");
        reader = std::make_unique<ExivReader>(internal::narrowPath(file));
        log.clear();
    }

    void toolPrints(const std::string& output) { tool.answer({"--key"}, {.output = output}); }

    std::unique_ptr<ExivReader> reader;
};

// ---- raw bytes

class ReaderBytes : public ReaderWithTool {
protected:
    // Reads the bytes and gives the buffer back as its owner has to.
    std::vector<unsigned char> read() {
        isRead = reader->getRawExifTag(kKey, &size, &data);
        if (!isRead || data == nullptr) {
            return {};
        }
        std::vector<unsigned char> bytes(data, data + size);
        ::operator delete(data);
        return bytes;
    }

    bool isRead = false;
    std::int32_t size = 7;
    unsigned char other = 0;
    unsigned char* data = &other;
};

TEST_F(ReaderBytes, AreThoseOfTheDump) {
    toolPrints("Exif.Photo.ExifVersion   30 32 33 31  \n");
    EXPECT_EQ(read(), (std::vector<unsigned char>{'0', '2', '3', '1'}));
    EXPECT_TRUE(isRead);
    EXPECT_EQ(size, 4);
}

TEST_F(ReaderBytes, AreAskedForAsADump) {
    toolPrints("30");
    read();
    const Arguments expected = {native("--key"), native(kKey), native("--Print"), native("kh"),
                                file.native()};
    EXPECT_EQ(tool.calls().back(), expected);
}

TEST_F(ReaderBytes, AreReadAnewByEachCall) {
    toolPrints("30");
    read();
    read();
    EXPECT_EQ(tool.countCalls("--key"), 2U);
}

TEST_F(ReaderBytes, OfAnOddNumberOfDigitsAreNone) {
    toolPrints("Exif.Photo.ExifVersion 30 3");
    read();
    EXPECT_FALSE(isRead);
    EXPECT_EQ(size, 0);
    EXPECT_EQ(data, nullptr);
}

TEST_F(ReaderBytes, OfAFailedRunAreNone) {
    read();
    EXPECT_FALSE(isRead);
    EXPECT_EQ(size, 0);
    EXPECT_EQ(data, nullptr);
}

TEST_F(ReaderBytes, MayBeMany) {
    std::string dump;
    std::vector<unsigned char> expected;
    for (int i = 0; i < 100000; ++i) {
        dump += i % 2 == 0 ? "0a " : "F1\n";
        expected.push_back(i % 2 == 0 ? 0x0A : 0xF1);
    }
    toolPrints(dump);
    EXPECT_EQ(read(), expected);
}

TEST_F(ReaderBytes, NeedTwoPlacesToGo) {
    toolPrints("30");
    EXPECT_FALSE(reader->getRawExifTag(kKey, static_cast<std::int32_t*>(nullptr), &data));
    EXPECT_FALSE(reader->getRawExifTag(kKey, &size, static_cast<unsigned char**>(nullptr)));
    EXPECT_EQ(size, 7);
    EXPECT_NE(data, nullptr);
    EXPECT_EQ(tool.countCalls("--key"), 0U);
}

TEST_F(ReaderBytes, OfAMalformedKeyRaiseARangeError) {
    EXPECT_THROW(reader->getRawExifTag("Exif.\xFF", &size, &data), std::range_error);
    EXPECT_EQ(size, 0);
    EXPECT_EQ(data, nullptr);
}

// ---- interpreted numbers

struct Interpreted {
    const char* name;
    const char* text;
    int index;
    bool isRead;
    std::uint32_t number;
};

void PrintTo(const Interpreted& interpreted, std::ostream* stream) {
    *stream << interpreted.text << " at " << interpreted.index;
}

constexpr std::uint32_t kUnread = 77;

constexpr std::array<Interpreted, 14> kInterpreted = {{
    {"ANumberInFrontOfItsUnit", "50 mm", 0, true, 50},
    {"AUnitBehindItsNumber", "50 mm", 1, false, kUnread},
    {"AUnitWithoutABlank", "50mm", 0, true, 50},
    {"TheThirdOfThree", "1\t2\n3", 2, true, 3},
    {"BehindTheLast", "1 2 3", 3, false, kUnread},
    {"TheLargestIndex", "1 2 3", std::numeric_limits<int>::max(), false, kUnread},
    {"ANegativeIndex", "1 2 3", -1, false, kUnread},
    {"AWordInFront", "ISO 400", 0, false, kUnread},
    {"ASignedNumber", "+400", 0, true, 400},
    {"ANegativeNumber", "-1", 0, false, kUnread},
    {"TheLargestNumber", "4294967295", 0, true, 4294967295U},
    {"ANumberBeyondThirtyTwoBits", "4294967296", 0, false, kUnread},
    {"ANumberBeyondSixtyFourBits", "18446744073709551616", 0, false, kUnread},
    {"ALargeNumberInFront", "4294967296 5", 1, true, 5},
}};

class ReaderInterpreted : public ReaderWithTool,
                          public ::testing::WithParamInterface<Interpreted> {};

TEST_P(ReaderInterpreted, NumbersAreReadFrom) {
    toolPrints(std::string(kKey) + "  " + GetParam().text + "\n");
    std::uint32_t number = kUnread;
    EXPECT_EQ(reader->getInterpretedRawExifTag(kKey, GetParam().index, &number), GetParam().isRead);
    EXPECT_EQ(number, GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(, ReaderInterpreted, ::testing::ValuesIn(kInterpreted),
                         [](const auto& interpreted) { return interpreted.param.name; });

// Where a point parts thousands, the classic locale's number still ends in front of it.
TEST_F(ReaderWithTool, AnInterpretedNumberIsTheSameInALocaleWithADecimalComma) {
    toolPrints("1.234 5");
    const test_support::CommaLocale locale;
    std::uint32_t number = kUnread;
    EXPECT_TRUE(reader->getInterpretedRawExifTag(kKey, 0, &number));
    EXPECT_EQ(number, 1U);
    EXPECT_FALSE(reader->getInterpretedRawExifTag(kKey, 1, &number));
}

TEST_F(ReaderWithTool, AsksForAnInterpretedNumberByTheKey) {
    toolPrints("50");
    std::uint32_t number = 0;
    EXPECT_TRUE(reader->getInterpretedRawExifTag(kKey, 0, &number));
    const Arguments expected = {native("--key"), native(kKey), native("--Print"), native("kt"),
                                file.native()};
    EXPECT_EQ(tool.calls().back(), expected);
}

TEST_F(ReaderWithTool, AnInterpretedNumberOfAFailedRunIsNone) {
    std::uint32_t number = kUnread;
    EXPECT_FALSE(reader->getInterpretedRawExifTag(kKey, 0, &number));
    EXPECT_EQ(number, kUnread);
}

TEST_F(ReaderWithTool, AnInterpretedNumberOfAMalformedKeyRaisesARangeError) {
    std::uint32_t number = kUnread;
    EXPECT_THROW(reader->getInterpretedRawExifTag("Exif.\xFF", 0, &number), std::range_error);
    EXPECT_EQ(number, kUnread);
}

// The tool is asked first; what it says counts for the log, not for the answer.
TEST_F(ReaderWithTool, AnInterpretedNumberAtANegativeIndexIsAskedForAndRefused) {
    toolPrints("50");
    std::uint32_t number = kUnread;
    EXPECT_FALSE(reader->getInterpretedRawExifTag(kKey, -1, &number));
    EXPECT_EQ(tool.countCalls("--key"), 1U);
}

TEST_F(ReaderWithTool, AnInterpretedNumberNeedsAPlaceToGo) {
    toolPrints("50");
    EXPECT_FALSE(reader->getInterpretedRawExifTag(kKey, 0, nullptr));
    EXPECT_EQ(tool.countCalls("--key"), 0U);
}

TEST_F(ReaderWithTool, TheRecordIsNotReadAgain) {
    toolPrints("50");
    std::uint32_t number = 0;
    EXPECT_TRUE(reader->getInterpretedRawExifTag(kKey, 0, &number));
    EXPECT_EQ(tool.countCalls("-PXEkycv"), 1U);
}

}  // namespace
}  // namespace exiv2_wp
