// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/distance_step.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace exiv2_tool {
namespace {

constexpr double kStepsOfTenfold = 0.4;
constexpr double kMetresOfStepZero = 0.01;

// Beyond the 10000 m at which the reader stops.
constexpr std::string_view kInfinity = "4";

std::optional<double> metresOf(std::string_view printed) {
    double metres = 0;
    const char* const end = printed.data() + printed.size();
    const auto [behind, error] = std::from_chars(printed.data(), end, metres);
    if (error != std::errc() || std::string_view(behind, end) != " m" || !std::isfinite(metres) ||
        metres <= 0) {
        return std::nullopt;
    }
    return metres;
}

}  // namespace

std::string distanceStep(std::string_view printed) {
    if (printed == "Infinity" || printed == "Infinite") {
        return std::string(kInfinity);
    }
    const std::optional<double> metres = metresOf(printed);
    if (!metres) {
        return {};
    }
    const auto step = static_cast<float>(kStepsOfTenfold * std::log10(*metres / kMetresOfStepZero));
    std::array<char, 64> digits{};
    const auto end =
        std::to_chars(digits.begin(), digits.end(), step, std::chars_format::fixed).ptr;
    return {digits.begin(), end};
}

}  // namespace exiv2_tool
