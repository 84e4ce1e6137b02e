// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/distance_step.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace exiv2_tool {
namespace {

/// What the reader of the summary makes of a step, in metres.
float metresOfStep(const std::string& step) {
    const double steps = std::stof(step);
    return std::min(static_cast<float>(0.01 * std::pow(10.0, steps / 0.4)), 10000.0F);
}

std::string sixDigits(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", number);
    return text;
}

TEST(DistanceStep, GivesTheMetresBackToSixDigits) {
    for (int centimetres = 1; centimetres <= 200000; centimetres += 1 + centimetres / 500) {
        char printed[32];
        std::snprintf(printed, sizeof printed, "%.2f m", centimetres / 100.0);
        const std::string step = distanceStep(printed);
        ASSERT_FALSE(step.empty()) << printed;
        EXPECT_EQ(sixDigits(metresOfStep(step)), sixDigits(centimetres / 100.0)) << printed;
    }
}

struct StepCase {
    const char* name;
    const char* printed;
    const char* step;
};

class DistanceSteps : public ::testing::TestWithParam<StepCase> {};

TEST_P(DistanceSteps, AreMadeOfDistancesAlone) {
    EXPECT_EQ(distanceStep(GetParam().printed), GetParam().step);
}

const StepCase kDistances[] = {
    {"OneMetre", "1.00 m", "0.8"},   {"OneCentimetre", "0.01 m", "0"},
    {"TenMetres", "10 m", "1.2"},    {"Infinity", "Infinity", "4"},
    {"Infinite", "Infinite", "4"},   {"Zero", "0.00 m", ""},
    {"Unknown", "Unknown", ""},      {"Negative", "-1.00 m", ""},
    {"NumberAlone", "25", ""},       {"Rational", "25/10", ""},
    {"Millimetres", "25 mm", ""},    {"MoreBehind", "2.5 m (about)", ""},
    {"NoBlank", "2.5m", ""},         {"NotANumber", "nan m", ""},
    {"InfiniteNumber", "inf m", ""}, {"TooLarge", "1e999 m", ""},
    {"Brackets", "(0/0)", ""},       {"Nothing", "", ""},
};

INSTANTIATE_TEST_SUITE_P(Table, DistanceSteps, ::testing::ValuesIn(kDistances),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace exiv2_tool
