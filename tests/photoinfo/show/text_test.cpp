#include "photoinfo/show/text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace photoinfo {
namespace {

constexpr auto kReplaced = "\xEF\xBF\xBD";

struct PrintableCase {
    const char* name;
    std::string text;
    std::string shown;
};

class PrintableText : public ::testing::TestWithParam<PrintableCase> {};

TEST_P(PrintableText, IsSafeToShow) {
    EXPECT_EQ(printable(GetParam().text), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Of, PrintableText,
    ::testing::Values(
        PrintableCase{"Nothing", "", ""},
        PrintableCase{"Ascii", "Canon EOS 6D ~", "Canon EOS 6D ~"},
        PrintableCase{"TwoBytes", "\xC3\xBC", "\xC3\xBC"},
        PrintableCase{"ThreeBytes", "\xE5\x86\x99", "\xE5\x86\x99"},
        PrintableCase{"FourBytes", "\xF0\x9F\x93\xB7", "\xF0\x9F\x93\xB7"},
        PrintableCase{"Nul", std::string(1, '\0'), kReplaced},
        PrintableCase{"Escape", "\x1B[0m", kReplaced + std::string("[0m")},
        PrintableCase{"LineEnd", "a\nb", "a" + std::string(kReplaced) + "b"},
        PrintableCase{"Delete", "\x7F", kReplaced},
        PrintableCase{"ControlSequenceIntroducer", "\xC2\x9B", kReplaced},
        PrintableCase{"FirstBehindTheControls", "\xC2\xA0", "\xC2\xA0"},
        PrintableCase{"LineSeparator", "\xE2\x80\xA8", kReplaced},
        PrintableCase{"RightToLeftOverride", "\xE2\x80\xAE", kReplaced},
        PrintableCase{"DirectionIsolate", "\xE2\x81\xA6", kReplaced},
        PrintableCase{"LoneByte", "\xFF", kReplaced},
        PrintableCase{"LoneContinuation", "\x80", kReplaced},
        PrintableCase{"CutShort", "a\xE5\x86", "a" + std::string(kReplaced) + kReplaced},
        PrintableCase{"BrokenOff",
                      "\xE5"
                      "ab",
                      kReplaced + std::string("ab")},
        PrintableCase{"Overlong", "\xC0\xAF", kReplaced + std::string(kReplaced)},
        PrintableCase{"Surrogate", "\xED\xA0\x80", kReplaced + std::string(kReplaced) + kReplaced},
        PrintableCase{"BeyondUnicode", "\xF4\x90\x80\x80",
                      kReplaced + std::string(kReplaced) + kReplaced + kReplaced}),
    [](const auto& each) { return std::string(each.param.name); });

struct DecimalCase {
    const char* name;
    double value;
    const char* shown;
};

class Decimal : public ::testing::TestWithParam<DecimalCase> {};

TEST_P(Decimal, HasTwoDecimalsAtMost) {
    EXPECT_EQ(decimal(GetParam().value), GetParam().shown);
}

constexpr float kInfinity = std::numeric_limits<float>::infinity();

INSTANTIATE_TEST_SUITE_P(
    Of, Decimal,
    ::testing::Values(DecimalCase{"Whole", 100.0F, "100"}, DecimalCase{"Tenths", 2.8F, "2.8"},
                      DecimalCase{"Thirds", -1.0F / 3.0F, "-0.33"}, DecimalCase{"Zero", 0.0F, "0"},
                      DecimalCase{"MinusZero", -0.0F, "0"}, DecimalCase{"NearZero", -0.001F, "0"},
                      DecimalCase{"HighIso", 102400.0F, "102400"},
                      DecimalCase{"Largest", std::numeric_limits<float>::max(),
                                  "340282346638528859811704183484516925440"},
                      DecimalCase{"Infinite", -kInfinity, "-inf"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(SameDecimal, HasTheShortFormOfTheFloat) {
    EXPECT_EQ(sameDecimal(0.004F), 0.004);
    EXPECT_EQ(sameDecimal(-5.6F), -5.6);
    EXPECT_EQ(sameDecimal(std::numeric_limits<float>::max()), 3.4028235e38);
    EXPECT_EQ(sameDecimal(kInfinity), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(sameDecimal(std::numeric_limits<float>::quiet_NaN())));
}

}  // namespace
}  // namespace photoinfo
