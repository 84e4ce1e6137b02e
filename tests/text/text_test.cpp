#include "exiv2_wrapper/text/text.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>
#include <sstream>
#include <vector>

#include "support/case_name.h"
#include "support/comma_locale.h"
#include "text/literal_text.h"

namespace exiv2_wp::internal {
namespace {

using namespace std::literals;

std::vector<char> allBytes() {
    std::vector<char> bytes;
    for (int byte = CHAR_MIN; byte <= CHAR_MAX; ++byte) {
        bytes.push_back(static_cast<char>(byte));
    }
    return bytes;
}

std::string bytesThat(bool (*isChosen)(char)) {
    std::string chosen;
    for (const char byte : allBytes()) {
        if (isChosen(byte)) {
            chosen += byte;
        }
    }
    return chosen;
}

TEST(Text, TakesSixBytesForWhiteSpaceAndTenForDigits) {
    EXPECT_EQ(bytesThat(isSpace), "\t\n\v\f\r ");
    EXPECT_EQ(bytesThat(isDigit), "0123456789");
}

TEST(Text, LowerCasesAsciiLettersAlone) {
    std::string expected;
    std::string all;
    for (const char byte : allBytes()) {
        all += byte;
        const bool isUpper = byte >= 'A' && byte <= 'Z';
        expected += isUpper ? static_cast<char>(byte - 'A' + 'a') : byte;
    }
    EXPECT_EQ(lowerCased(all), expected);
    lowerCase(all);
    EXPECT_EQ(all, expected);
}

TEST(Text, TrimsWhiteSpaceAtBothEndsAndNothingInside) {
    EXPECT_EQ(trimmed(" \t\r\n\v\fa \t b\f\v\n\r\t "), "a \t b");
    EXPECT_EQ(trimmed("a"), "a");
    EXPECT_EQ(trimmed(" \t\r\n\v\f"), "");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed("\xA0 \x85"), "\xA0 \x85");
}

TEST(Text, TakesWordsOneByOneAsAStreamDoes) {
    const std::string text = " \tExif.Image.Make\v\fAscii  \xE4\r\n6 a\0b  "s;
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    std::string_view rest = text;
    for (std::string expected; stream >> expected;) {
        EXPECT_EQ(takeWord(rest), expected);
    }
    EXPECT_EQ(takeWord(rest), "");
    EXPECT_EQ(rest, "");
}

TEST(Text, SkipsTheWhiteSpaceInFrontAlone) {
    std::string_view rest = " \t\n\v\f\ra b ";
    skipSpace(rest);
    EXPECT_EQ(rest, "a b ");
    skipSpace(rest);
    EXPECT_EQ(rest, "a b ");
    rest = " \r";
    skipSpace(rest);
    EXPECT_EQ(rest, "");
}

TEST(Text, TakesAllUpToTheNextWhiteSpace) {
    std::string_view rest = "a\xA0\0b\tc"sv;
    EXPECT_EQ(takeUntilSpace(rest), "a\xA0\0b"sv);
    EXPECT_EQ(takeUntilSpace(rest), "");
    EXPECT_EQ(rest, "\tc");
    rest = "c";
    EXPECT_EQ(takeUntilSpace(rest), "c");
    EXPECT_EQ(takeUntilSpace(rest), "");
}

TEST(Text, TakesAnIntegerAndLeavesWhatFollows) {
    std::string_view rest = "+12/-3x";
    EXPECT_EQ(takeInteger(rest), 12);
    EXPECT_EQ(rest, "/-3x");
    EXPECT_EQ(takeInteger(rest), std::nullopt);
    EXPECT_EQ(rest, "/-3x");
    rest.remove_prefix(1);
    EXPECT_EQ(takeInteger(rest), -3);
    EXPECT_EQ(rest, "x");
}

TEST(Text, CallsATextPlainWhenEveryByteIsBelow0x80) {
    EXPECT_TRUE(isPlainAscii(""));
    EXPECT_TRUE(isPlainAscii(std::string_view("\0 Canon \x7F", 9)));
    EXPECT_FALSE(isPlainAscii("Canon \x80"));
    EXPECT_FALSE(isPlainAscii("\xFF"));
}

TEST(Text, CallsAUnitOfAnyWidthAsciiBelow0x80) {
    EXPECT_TRUE(isAscii('\0') && isAscii('\x7F') && isAscii(L'\x7F'));
    EXPECT_FALSE(isAscii('\x80') || isAscii('\xFF'));
    EXPECT_FALSE(isAscii(L'\x80') || isAscii(L'\xFFFF'));
}

TEST(Text, KeepsTheLow32BitsOfAnInteger) {
    EXPECT_EQ(low32Bits(4294967297), 1);
    EXPECT_EQ(low32Bits(2147483648), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(low32Bits(-1), -1);
}

struct IntegerCase {
    const char* name;
    std::string_view word;
    std::optional<std::int64_t> expected;
};

class ParseInteger : public ::testing::TestWithParam<IntegerCase> {};

TEST_P(ParseInteger, FollowsTheOneNumberRule) {
    EXPECT_EQ(parseInteger(GetParam().word), GetParam().expected);
}

constexpr std::int64_t kMin64 = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMax64 = std::numeric_limits<std::int64_t>::max();

constexpr IntegerCase kIntegerCases[] = {
    {"Zero", "0", 0},
    {"Plus", "+12", 12},
    {"Minus", "-3", -3},
    {"LeadingZeros", "-0042", -42},
    {"Empty", "", std::nullopt},
    {"LonePlus", "+", std::nullopt},
    {"LoneMinus", "-", std::nullopt},
    {"TwoSigns", "+-1", std::nullopt},
    {"SignBehind", "1-", std::nullopt},
    {"BlankBefore", " 1", std::nullopt},
    {"BlankBehind", "1 ", std::nullopt},
    {"Letters", "abc", std::nullopt},
    {"Decimal", "1.5", std::nullopt},
    {"Rational", "2/3", std::nullopt},
    {"Hexadecimal", "0x10", std::nullopt},
    {"Exponent", "1e3", std::nullopt},
    {"NulInside", std::string_view("1\0", 2), std::nullopt},
    {"SuperscriptTwoInUtf8", "\xC2\xB2", std::nullopt},
    {"Largest", "9223372036854775807", kMax64},
    {"Smallest", "-9223372036854775808", kMin64},
    {"WrapsToTheSmallest", "9223372036854775808", kMin64},
    {"WrapsToOne", "18446744073709551617", 1},
    {"WrapsToMinusOne", "-18446744073709551617", -1},
};

INSTANTIATE_TEST_SUITE_P(Words, ParseInteger, ::testing::ValuesIn(kIntegerCases),
                         test_support::caseName<IntegerCase>);

struct RealCase {
    const char* name;
    std::string_view text;
    std::optional<double> asDouble;
    std::optional<float> asFloat;
};

class ParseReal : public ::testing::TestWithParam<RealCase> {};

// By their bits, so that -0 is not 0; any value that is no number equals any other.
template <typename Real>
std::string shown(std::optional<Real> value) {
    if (!value) {
        return "none";
    }
    if (std::isnan(*value)) {
        return "not a number";
    }
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::hexfloat << *value;
    return text.str();
}

TEST_P(ParseReal, ConvertsAsTheClassicLocaleDoes) {
    EXPECT_EQ(shown(parseDouble(GetParam().text)), shown(GetParam().asDouble));
    EXPECT_EQ(shown(parseFloat(GetParam().text)), shown(GetParam().asFloat));
}

TEST_P(ParseReal, ConvertsTheSameInALocaleWithADecimalComma) {
    const test_support::CommaLocale locale;
    EXPECT_EQ(shown(parseDouble(GetParam().text)), shown(GetParam().asDouble));
    EXPECT_EQ(shown(parseFloat(GetParam().text)), shown(GetParam().asFloat));
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr float kInfinityF = std::numeric_limits<float>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr float kNanF = std::numeric_limits<float>::quiet_NaN();

constexpr RealCase kRealCases[] = {
    {"Integer", "50", 50.0, 50.0F},
    {"Fraction", "2.8", 2.8, 2.8F},
    {"UnitBehind", "50.0 mm (35 mm equivalent: 80.0 mm)", 50.0, 50.0F},
    {"WhiteSpaceBefore", " \t\n\v\f\r7x", 7.0, 7.0F},
    {"Plus", "+1.5", 1.5, 1.5F},
    {"MinusZero", "-0", -0.0, -0.0F},
    {"TwoSigns", "--1", std::nullopt, std::nullopt},
    {"PlusMinus", "+-1", std::nullopt, std::nullopt},
    {"MinusPlus", "-+1", std::nullopt, std::nullopt},
    {"BlankBehindSign", "- 1", std::nullopt, std::nullopt},
    {"Empty", "", std::nullopt, std::nullopt},
    {"Blanks", "  ", std::nullopt, std::nullopt},
    {"LoneSign", "-", std::nullopt, std::nullopt},
    {"LonePoint", ".", std::nullopt, std::nullopt},
    {"Words", "n/a", std::nullopt, std::nullopt},
    {"NoLeadingDigit", "-.5", -0.5, -0.5F},
    {"NoTrailingDigit", "5.", 5.0, 5.0F},
    {"Comma", "1,5", 1.0, 1.0F},
    {"Exponent", "25e-1", 2.5, 2.5F},
    {"ExponentWithoutDigits", "2e+", 2.0, 2.0F},
    {"NulInside", std::string_view("2\0003", 3), 2.0, 2.0F},
    {"Hexadecimal", "0x1.8p1", 3.0, 3.0F},
    {"HexadecimalUpperCase", "-0XA", -10.0, -10.0F},
    {"HexadecimalPointFirst", "0x.8", 0.5, 0.5F},
    {"HexadecimalExponentWithoutDigits", "0x2p", 2.0, 2.0F},
    {"HexadecimalExponentWithTwoSigns", "0x.8p+-1", 0.5, 0.5F},
    {"HexadecimalExponentWithASign", "0x.8P+1", 1.0, 1.0F},
    {"LoneHexadecimalPrefix", "0x", 0.0, 0.0F},
    {"HexadecimalPrefixAndWord", "0xg", 0.0, 0.0F},
    {"HexadecimalPrefixAndInfinity", "0xinf", 0.0, 0.0F},
    {"HexadecimalPrefixAndNan", "0xnan", 0.0, 0.0F},
    {"HexadecimalPrefixAndSign", "0x-1", 0.0, 0.0F},
    {"HexadecimalPrefixAndPoint", "0x.", 0.0, 0.0F},
    {"Infinity", "-Infinity", -kInfinity, -kInfinityF},
    {"ShortInfinity", "infinit", kInfinity, kInfinityF},
    {"NotANumber", "NaN", kNan, kNanF},
    {"NotANumberWithText", "nan(1)", kNan, kNanF},
    {"BeyondFloat", "1e39", 1e39, std::nullopt},
    {"BeyondDouble", "-1e400", std::nullopt, std::nullopt},
    {"BeyondDoubleInHexadecimal", "0x1p5000", std::nullopt, std::nullopt},
    {"TooSmallForFloat", "1e-50", 1e-50, std::nullopt},
    {"TooSmallForDouble", "1e-400", std::nullopt, std::nullopt},
    {"ZeroWithAHugeExponent", "0e99999999999999999999", 0.0, 0.0F},
    {"HugeExponent", "1e99999999999999999999", std::nullopt, std::nullopt},
    // Not all C runtimes give a value that has lost digits; that of Windows does.
    {"DenormalFloat", "1e-40", 1e-40, 1e-40F},
    {"DenormalDouble", "4e-320", 4e-320, std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Texts, ParseReal, ::testing::ValuesIn(kRealCases),
                         test_support::caseName<RealCase>);

std::string randomRealText(std::mt19937& random) {
    constexpr const char* kPieces[] = {"0", "1", "9",   "47",  ".",  "-",   "+",
                                       "e", "E", "p",   "x",   "0x", " ",   "f",
                                       "A", "i", "inf", "nan", "0.", "e-4", "p+"};
    std::uniform_int_distribution<std::size_t> piece(0, std::size(kPieces) - 1);
    std::string text;
    for (int i = std::uniform_int_distribution(0, 8)(random); i > 0; --i) {
        text += kPieces[piece(random)];
    }
    return text;
}

TEST(ParseReal, AgreesWithTheCConversionsOnRandomTexts) {
    std::mt19937 random(20211);
    for (int i = 0; i < 100'000; ++i) {
        const std::string text = randomRealText(random);
        ASSERT_EQ(shown(parseDouble(text)), shown(test_support::literalDouble(text)))
            << '"' << text << '"';
        ASSERT_EQ(shown(parseFloat(text)), shown(test_support::literalFloat(text)))
            << '"' << text << '"';
    }
}

TEST(ParseReal, RoundsRandomDecimalNumbersCorrectly) {
    std::mt19937_64 random(47);
    for (int i = 0; i < 20'000; ++i) {
        std::ostringstream text;
        text.imbue(std::locale::classic());
        text.precision(std::uniform_int_distribution(1, 25)(random));
        const auto bits = (random() & ~(std::uint64_t{0x7F} << 56)) | (std::uint64_t{0x3F} << 56);
        text << std::bit_cast<double>(bits);
        ASSERT_EQ(shown(parseDouble(text.str())), shown(test_support::literalDouble(text.str())))
            << text.str();
        ASSERT_EQ(shown(parseFloat(text.str())), shown(test_support::literalFloat(text.str())))
            << text.str();
    }
}

}  // namespace
}  // namespace exiv2_wp::internal
