#include "exiv2_wrapper/text/utf8.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>

#include "support/case_name.h"

namespace exiv2_wp::internal {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCodePoint = 0x10FFFF;

bool isSurrogate(char32_t codePoint) {
    return codePoint >= 0xD800 && codePoint < 0xE000;
}

std::u32string decodeAll(std::string_view text) {
    std::u32string codePoints;
    while (!text.empty()) {
        const DecodedCharacter character = decodeUtf8(text);
        codePoints += character.codePoint;
        text.remove_prefix(character.length);
    }
    return codePoints;
}

TEST(Utf8, BringsEveryCodePointBack) {
    for (char32_t codePoint = 0; codePoint <= kLastCodePoint; ++codePoint) {
        if (isSurrogate(codePoint)) {
            continue;
        }
        std::string text;
        appendUtf8(text, codePoint);
        const DecodedCharacter back = decodeUtf8(text + "x");
        ASSERT_TRUE(back.isWellFormed && back.codePoint == codePoint && back.length == text.size())
            << static_cast<unsigned long>(codePoint);
    }
}

// Of all pairs of first bytes, with continuations behind them.
TEST(Utf8, AcceptsNoTwoFirstBytesButThoseOfCodePoints) {
    std::set<std::string> begins;
    const auto step = [](char32_t codePoint) { return codePoint < 0x800 ? 1U : 0x40U; };
    for (char32_t codePoint = 0x80; codePoint <= kLastCodePoint; codePoint += step(codePoint)) {
        if (!isSurrogate(codePoint)) {
            std::string text;
            appendUtf8(text, codePoint);
            begins.insert(text.substr(0, 2));
        }
    }
    for (int first = 0x80; first < 0x100; ++first) {
        for (int second = 0; second < 0x100; ++second) {
            const std::string begin = {static_cast<char>(first), static_cast<char>(second)};
            EXPECT_EQ(decodeUtf8(begin + "\x80\x80").isWellFormed, begins.contains(begin))
                << first << ' ' << second;
        }
    }
}

TEST(Utf8, WritesASurrogateAsThreeBytes) {
    std::string text;
    appendUtf8(text, 0xD800);
    appendUtf8(text, 0xDFFF);
    EXPECT_EQ(text, "\xED\xA0\x80\xED\xBF\xBF");
}

struct MalformedText {
    const char* name;
    std::string text;
    std::u32string decoded;
};

class MalformedUtf8 : public ::testing::TestWithParam<MalformedText> {};

TEST_P(MalformedUtf8, IsReplaced) {
    EXPECT_FALSE(decodeUtf8(GetParam().text).isWellFormed);
    EXPECT_EQ(decodeAll(GetParam().text), GetParam().decoded);
}

// What is replaced by one character is the longest beginning of a well-formed sequence.
INSTANTIATE_TEST_SUITE_P(
    Utf8, MalformedUtf8,
    ::testing::Values(
        MalformedText{"LoneContinuation", "\x80", U"\uFFFD"},
        MalformedText{"TwoContinuations", "\xBF\x80", U"\uFFFD\uFFFD"},
        MalformedText{"ByteThatBeginsNothing", "\xFFx", U"\uFFFDx"},
        MalformedText{"OverlongOfTwo", "\xC0\xAF", U"\uFFFD\uFFFD"},
        MalformedText{"OverlongOfTwoAtItsEnd", "\xC1\xBF", U"\uFFFD\uFFFD"},
        MalformedText{"OverlongOfThree", "\xE0\x9F\xBF", U"\uFFFD\uFFFD\uFFFD"},
        MalformedText{"OverlongOfFour", "\xF0\x8F\xBF\xBF", U"\uFFFD\uFFFD\uFFFD\uFFFD"},
        MalformedText{"Surrogate", "\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},
        MalformedText{"BeyondTheLastCodePoint", "\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"},
        MalformedText{"FiveByteLead", "\xF8\x88\x80", U"\uFFFD\uFFFD\uFFFD"},
        MalformedText{"CutOffAfterOne", "\xC3", U"\uFFFD"},
        MalformedText{"CutOffAfterTwo", "\xE2\x82", U"\uFFFD"},
        MalformedText{"CutOffAfterThree", "\xF0\x9F\x93", U"\uFFFD"},
        MalformedText{"CutOffByALetter", "\xE2\x82x", U"\uFFFDx"},
        MalformedText{"CutOffByAnotherLead", "\xE2\xC3\xA4", U"\uFFFD\u00E4"}),
    test_support::caseName<MalformedText>);

TEST(Utf8, ReplacesByTheReplacementCharacter) {
    EXPECT_EQ(decodeUtf8("\xFF").codePoint, kReplacement);
}

}  // namespace
}  // namespace exiv2_wp::internal
