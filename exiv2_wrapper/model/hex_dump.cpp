#include "exiv2_wrapper/model/hex_dump.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace exiv2_wp::internal {

namespace {

constexpr std::uint8_t kNoDigit = 0xFF;

// The value of each byte as a hexadecimal digit. Dumps of maker notes run to megabytes.
constexpr std::array<std::uint8_t, 256> kDigitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(kNoDigit);
    for (std::uint8_t i = 0; i < 10; ++i) {
        values[static_cast<std::size_t>('0') + i] = i;
    }
    for (std::uint8_t i = 0; i < 6; ++i) {
        values[static_cast<std::size_t>('a') + i] = static_cast<std::uint8_t>(10 + i);
        values[static_cast<std::size_t>('A') + i] = static_cast<std::uint8_t>(10 + i);
    }
    return values;
}();

std::uint8_t digitValue(char c) {
    return kDigitValues[static_cast<unsigned char>(c)];
}

}  // namespace

bool decodeHexDump(std::string_view text, std::vector<std::uint8_t>& bytes) {
    bytes.clear();
    const auto digits = static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return digitValue(c) != kNoDigit; }));
    if (digits == 0 || digits % 2 != 0) {
        return false;
    }
    bytes.reserve(digits / 2);
    std::uint8_t high = kNoDigit;
    for (const char c : text) {
        const std::uint8_t value = digitValue(c);
        if (value == kNoDigit) {
            continue;
        }
        if (high == kNoDigit) {
            high = value;
        } else {
            bytes.push_back(static_cast<std::uint8_t>(high << 4 | value));
            high = kNoDigit;
        }
    }
    return true;
}

}  // namespace exiv2_wp::internal
