#include "photoinfo/show/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

namespace photoinfo {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

struct Character {
    char32_t codePoint = 0;
    std::size_t length = 1;
    bool isWellFormed = false;
};

// The least code point that needs a sequence of this many bytes; less is an overlong form.
constexpr std::array<char32_t, 5> kLeastCodePoints = {0, 0, 0x80, 0x800, 0x10000};

std::size_t sequenceLength(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC0) {
        return 0;
    }
    if (lead < 0xE0) {
        return 2;
    }
    return lead < 0xF0 ? 3 : (lead < 0xF8 ? 4 : 0);
}

// Malformed text is decoded a byte at a time.
Character decode(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = sequenceLength(lead);
    if (length <= 1) {
        return {lead, 1, length == 1};
    }
    if (length > text.size()) {
        return {};
    }
    char32_t codePoint = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0U) != 0x80) {
            return {};
        }
        codePoint = (codePoint << 6) | (byte & 0x3FU);
    }
    const bool isSurrogate = codePoint >= 0xD800 && codePoint < 0xE000;
    if (codePoint < kLeastCodePoints.at(length) || isSurrogate || codePoint > 0x10FFFF) {
        return {};
    }
    return {codePoint, length, true};
}

bool isControl(char32_t c) {
    const bool isC0orC1 = c < 0x20 || (c >= 0x7F && c < 0xA0);
    const bool isLineEnd = c == 0x2028 || c == 0x2029;
    const bool isDirection = c == 0x061C || c == 0x200E || c == 0x200F ||
                             (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    return isC0orC1 || isLineEnd || isDirection;
}

}  // namespace

std::string printable(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const Character c = decode(text);
        const bool isShown = c.isWellFormed && !isControl(c.codePoint);
        shown += isShown ? text.substr(0, c.length) : kReplacement;
        text.remove_prefix(c.length);
    }
    return shown;
}

std::size_t lengthOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

std::string decimal(double value) {
    std::array<char, 320> buffer{};  // a sign, 309 digits, a point, two decimals
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed, 2)
                         .ptr;
    std::string text(buffer.data(), end);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') {
            text.pop_back();
        }
    }
    return text == "-0" ? "0" : text;
}

double sameDecimal(float value) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    double result = 0.0;
    std::from_chars(buffer.data(), end, result);
    return result;
}

}  // namespace photoinfo
