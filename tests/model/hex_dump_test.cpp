#include "exiv2_wrapper/model/hex_dump.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace exiv2_wp::internal {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct Dump {
    const char* name;
    const char* text;
    bool isReadable;
    Bytes bytes;
};

void PrintTo(const Dump& dump, std::ostream* stream) {
    *stream << dump.text;
}

const std::array<Dump, 10> kDumps = {{
    {"BothLetterCases", "0a 1B ff", true, {0x0A, 0x1B, 0xFF}},
    {"EveryDigit",
     "0123456789abcdefABCDEF",
     true,
     {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF, 0xAB, 0xCD, 0xEF}},
    {"DigitsOfAByteApart", "0\n a\t1-B", true, {0x0A, 0x1B}},
    {"AnOddNumberOfDigits", "0a1", false, {}},
    {"NoDigits", "xyz, GHI!", false, {}},
    {"NoText", "", false, {}},
    {"BytesAboveAscii", "\xC3\xA4 41", true, {0x41}},
    // "Abc" in the text column of the dump is three digits more.
    {"ATextColumnThatMakesTheNumberOdd", "41 62 63  Abc", false, {}},
    {"ATextColumnThatAddsAByte", "41 62  Ab", true, {0x41, 0x62, 0xAB}},
    {"AHexPrefix", "0x41", false, {}},
}};

class HexDump : public ::testing::TestWithParam<Dump> {};

TEST_P(HexDump, IsReadFrom) {
    Bytes bytes = {1, 2, 3};
    EXPECT_EQ(decodeHexDump(GetParam().text, bytes), GetParam().isReadable);
    EXPECT_EQ(bytes, GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(, HexDump, ::testing::ValuesIn(kDumps),
                         [](const auto& dump) { return dump.param.name; });

// Dumps run to megabytes.
TEST(HexDumpBytes, TakeNoMoreRoomThanTheyFill) {
    Bytes bytes;
    ASSERT_TRUE(decodeHexDump(std::string(2 * 1025, '0'), bytes));
    EXPECT_EQ(bytes.size(), 1025U);
    EXPECT_EQ(bytes.capacity(), 1025U);
}

// The rule word by word: collect the digits, then turn each two into a byte.
bool decodeByCollecting(const std::string& text, Bytes& bytes) {
    bytes.clear();
    std::string digits;
    for (const char c : text) {
        if (std::isxdigit(static_cast<unsigned char>(c)) != 0) {
            digits += c;
        }
    }
    if (digits.empty() || digits.size() % 2 != 0) {
        return false;
    }
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    }
    return true;
}

TEST(HexDumps, OfRandomBytesAreReadAsByCollectingTheirDigits) {
    constexpr std::string_view kFrequent = "09afAFg ";
    std::mt19937 random(4);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (auto length = random() % 30; length > 0; --length) {
            const auto letter = static_cast<char>(random());
            text += random() % 2 == 0 ? letter : kFrequent[random() % kFrequent.size()];
        }
        Bytes bytes;
        Bytes expected;
        ASSERT_EQ(decodeHexDump(text, bytes), decodeByCollecting(text, expected));
        ASSERT_EQ(bytes, expected);
    }
}

}  // namespace
}  // namespace exiv2_wp::internal
