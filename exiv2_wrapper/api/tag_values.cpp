#include "exiv2_wrapper/api/tag_values.h"

#include <limits>

#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

std::optional<std::int32_t> readInt(const CliExifTag& tag) {
    const std::optional<std::int64_t> value =
        tag.integers.empty() ? parseInteger(tag.value) : tag.integers.front();
    if (!value || *value < std::numeric_limits<std::int32_t>::min() ||
        *value > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(*value);
}

std::optional<double> readDouble(const CliExifTag& tag) {
    if (!tag.rationals.empty()) {
        const auto [numerator, denominator] = tag.rationals.front();
        const auto value = static_cast<double>(numerator);
        return denominator == 0 ? value : value / static_cast<double>(denominator);
    }
    if (!tag.integers.empty()) {
        return static_cast<double>(tag.integers.front());
    }
    return parseDouble(tag.value);
}

std::optional<float> readFloat(const CliExifTag& tag) {
    if (tag.rationals.empty() && !tag.integers.empty()) {
        return static_cast<float>(tag.integers.front());
    }
    const std::optional<double> value = readDouble(tag);
    return value ? std::optional(static_cast<float>(*value)) : std::nullopt;
}

float toFloat(const std::pair<std::int64_t, std::int64_t>& rational) {
    const auto [numerator, denominator] = rational;
    const auto value = static_cast<float>(numerator);
    return denominator == 0 ? value : value / static_cast<float>(denominator);
}

}  // namespace exiv2_wp::internal
