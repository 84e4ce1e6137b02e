#include "exiv2_wrapper/api/lens_range.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <utility>

#include "api/literal_patterns.h"
#include "support/every_nth.h"

namespace exiv2_wp::internal {
namespace {

using test_support::literalLensRange;
using Range = std::optional<std::pair<std::string, std::string>>;

Range find(std::string_view lensModel) {
    const auto range = findLensRange(lensModel);
    return range ? Range({std::string(range->shortest), std::string(range->longest)})
                 : std::nullopt;
}

TEST(LensRange, AgreesWithThePatternOnModels) {
    for (const char* const model :
         {"EF 24-70mm f/2.8L", "24-70MM", "24–70mm",
          "24\xE2"
          "70 mM",
          "24\x80"
          "70\t\v\r\nmm",
          "24-70-200mm", "1224-70mm", "24-mm", "-70mm", "24-70m m", "24-70", "24--70mm", "24 -70mm",
          "24- 70mm", "1-2 3-4mm", "1-2m3-4mm", "1-2\0mm", "", "mm"}) {
        EXPECT_EQ(find(model), literalLensRange(model)) << model;
    }
    EXPECT_EQ(find("EF 24-70mm f/2.8L"), Range({"24", "70"}));
    EXPECT_EQ(find("24-70-200 mm"), Range({"70", "200"}));
    EXPECT_EQ(find("24–70mm"), std::nullopt);
}

TEST(LensRange, AgreesWithThePatternOnRandomTexts) {
    std::mt19937 random(2470);
    constexpr std::string_view kBytes = "0129--\xE2\x80\x93mmM \t\vx";
    std::uniform_int_distribution<std::size_t> byte(0, kBytes.size() - 1);
    for (int i = 0; i < 100'000 / test_support::kEveryNthInput; ++i) {
        std::string model(std::uniform_int_distribution<std::size_t>(0, 16)(random), ' ');
        for (char& c : model) {
            c = kBytes[byte(random)];
        }
        ASSERT_EQ(find(model), literalLensRange(model)) << ::testing::PrintToString(model);
    }
}

TEST(LensRange, AgreesWithThePatternOnEverySingleByteBetweenTheNumbers) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string model = "24" + std::string(1, static_cast<char>(byte)) + "70mm";
        EXPECT_EQ(find(model), literalLensRange(model)) << byte;
    }
}

TEST(LensRange, TakesAMillionDigits) {
    const std::string digits(1'000'000, '7');

    EXPECT_EQ(find(digits), std::nullopt);
    EXPECT_EQ(find(digits + "-" + digits), std::nullopt);
    EXPECT_EQ(find(digits + "-" + digits + "mm"), Range({digits, digits}));
}

TEST(LensRange, LooksAtNothingBehindTheText) {
    constexpr std::string_view kModel = "24-70 mm";
    for (std::size_t size = 0; size < kModel.size(); ++size) {
        EXPECT_EQ(find(kModel.substr(0, size)), std::nullopt) << size;
    }
}

// Each of these takes a search that starts anew at every byte hours.
TEST(LensRange, TakesLongTextsThatAlmostMatch) {
    std::string pairs;
    std::string blanks;
    for (int i = 0; i < 500'000; ++i) {
        pairs += "1-";
        blanks += "1-1 ";
    }
    EXPECT_EQ(find(pairs), std::nullopt);
    EXPECT_EQ(find(pairs + "2mm"), Range({"1", "2"}));
    EXPECT_EQ(find(blanks + "1-2mm"), Range({"1", "2"}));
    EXPECT_EQ(find("1-1" + std::string(1'000'000, ' ')), std::nullopt);
    EXPECT_EQ(find("1-1" + std::string(1'000'000, ' ') + "mm"), Range({"1", "1"}));
}

}  // namespace
}  // namespace exiv2_wp::internal
