#include "exiv2_wrapper/api/tag_elements.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <optional>

namespace exiv2_wp::internal {
namespace {

constexpr std::int64_t kSmallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();

struct Quotient {
    const char* name;
    Pair<std::int64_t> rational;
    std::optional<std::int16_t> number;
};

const std::array<Quotient, 9> kQuotients = {{
    {"APositiveOneIsTruncatedTowardsZero", {7, 2}, 3},
    {"ANegativeOneIsTruncatedTowardsZero", {-7, 2}, -3},
    {"AZeroDenominatorGivesTheNumerator", {9, 0}, 9},
    {"AZeroDenominatorDoesNotWidenTheRange", {40000, 0}, std::nullopt},
    {"TheSmallestOverMinusOneIsOutOfRange", {kSmallest, -1}, std::nullopt},
    {"TheLargestOverMinusOneIsOutOfRange", {kLargest, -1}, std::nullopt},
    {"TheSmallestOverItselfIsOne", {kSmallest, kSmallest}, 1},
    {"TheLowerEndIsInRange", {32768, -1}, std::int16_t{-32768}},
    {"BehindTheUpperEndIsOutOfRange", {65536, 2}, std::nullopt},
}};

class Quotients : public ::testing::TestWithParam<Quotient> {};

TEST_P(Quotients, Are) {
    EXPECT_EQ(toNumber<std::int16_t>(GetParam().rational), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(, Quotients, ::testing::ValuesIn(kQuotients),
                         [](const auto& quotient) { return quotient.param.name; });

TEST(TagElements, TheSmallestOverMinusOneIsInNoGettersRange) {
    EXPECT_EQ(toNumber<std::uint32_t>(Pair<std::int64_t>(kSmallest, -1)), std::nullopt);
}

TEST(TagElements, APairNeedsBothPartsInRange) {
    using Expected = std::optional<Pair<std::uint32_t>>;
    EXPECT_EQ(toPair<std::uint32_t>(Pair<std::int64_t>(4294967295, 0)),
              Expected({4294967295U, 0U}));
    EXPECT_EQ(toPair<std::uint32_t>(Pair<std::int64_t>(4294967296, 1)), Expected());
    EXPECT_EQ(toPair<std::uint32_t>(Pair<std::int64_t>(1, -1)), Expected());
}

}  // namespace
}  // namespace exiv2_wp::internal
