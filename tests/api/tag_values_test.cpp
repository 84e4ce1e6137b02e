#include "exiv2_wrapper/api/tag_values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/case_name.h"

namespace exiv2_wp::internal {
namespace {

constexpr std::int64_t kMin32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kMax32 = std::numeric_limits<std::int32_t>::max();

CliExifTag textTag(std::string_view value) {
    return {"Key", "ascii", value, {}, {}, 1};
}
CliExifTag integerTag(std::int64_t integer) {
    return {"Key", "long", "12", {}, {integer, 5}, 2};
}
CliExifTag rationalTag(std::int64_t numerator, std::int64_t denominator) {
    return {"Key", "rational", "12", {{numerator, denominator}, {5, 1}}, {}, 2};
}

struct IntCase {
    const char* name;
    CliExifTag tag;
    std::optional<std::int32_t> expected;
};

class ReadInt : public ::testing::TestWithParam<IntCase> {};

TEST_P(ReadInt, TakesTheFirstIntegerOrTheWholeText) {
    EXPECT_EQ(readInt(GetParam().tag), GetParam().expected);
}

const IntCase kIntCases[] = {
    {"FirstInteger", integerTag(6), 6},
    {"Smallest", integerTag(kMin32), static_cast<std::int32_t>(kMin32)},
    {"Largest", integerTag(kMax32), static_cast<std::int32_t>(kMax32)},
    {"BelowTheSmallest", integerTag(kMin32 - 1), std::nullopt},
    {"AboveTheLargest", integerTag(kMax32 + 1), std::nullopt},
    {"LowBitsDoNotCount", integerTag(4294967296), std::nullopt},
    {"Text", textTag("-12"), -12},
    {"TextWithPlus", textTag("+12"), 12},
    {"TextOutOfRange", textTag("2147483648"), std::nullopt},
    {"TextWithBlank", textTag(" 6"), std::nullopt},
    {"TextWithLetter", textTag("6a"), std::nullopt},
    {"LoneSign", textTag("-"), std::nullopt},
    {"EmptyText", textTag(""), std::nullopt},
    {"RationalIsReadByItsText", rationalTag(3, 1), 12},
};

INSTANTIATE_TEST_SUITE_P(Tags, ReadInt, ::testing::ValuesIn(kIntCases),
                         test_support::caseName<IntCase>);

struct RealCase {
    const char* name;
    CliExifTag tag;
    std::optional<double> asDouble;
    std::optional<float> asFloat;
};

class ReadReal : public ::testing::TestWithParam<RealCase> {};

TEST_P(ReadReal, TakesTheFirstRationalOrIntegerOrTheText) {
    EXPECT_EQ(readDouble(GetParam().tag), GetParam().asDouble);
    EXPECT_EQ(readFloat(GetParam().tag), GetParam().asFloat);
}

constexpr float kInfinity = std::numeric_limits<float>::infinity();

const RealCase kRealCases[] = {
    {"Rational", rationalTag(28, 10), 2.8, 2.8F},
    {"RationalDividedInDoublePrecision", rationalTag(50331651, 16777217), 3.0, 3.0F},
    {"NoDenominator", rationalTag(5, 0), 5.0, 5.0F},
    {"ZeroOverZero", rationalTag(0, 0), 0.0, 0.0F},
    {"Integer", integerTag(-7), -7.0, -7.0F},
    // Rounded by way of a double it would be 9007199254740992: the double lies midway.
    {"IntegerRoundedOnce", integerTag(9007199791611905), 9007199791611904.0, 9007200328482816.0F},
    {"Text", textTag(" \t2.8 and more"), 2.8, 2.8F},
    {"TextBeyondFloat", textTag("1e300"), 1e300, kInfinity},
    {"TextTooSmallForFloat", textTag("1e-300"), 1e-300, 0.0F},
    {"TextBeyondDouble", textTag("1e400"), std::nullopt, std::nullopt},
    {"UnreadableText", textTag("f/2.8"), std::nullopt, std::nullopt},
    {"EmptyText", textTag(""), std::nullopt, std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Tags, ReadReal, ::testing::ValuesIn(kRealCases),
                         test_support::caseName<RealCase>);

TEST(ToFloat, DividesInSinglePrecision) {
    EXPECT_EQ(toFloat({50331651, 16777217}), 3.0F + 0x1p-22F);
    EXPECT_EQ(toFloat({-7, 2}), -3.5F);
    EXPECT_EQ(toFloat({7, 0}), 7.0F);
    EXPECT_EQ(toFloat({0, 0}), 0.0F);
}

}  // namespace
}  // namespace exiv2_wp::internal
