#include "exiv2_wrapper/text/text.h"

#include <algorithm>

namespace exiv2_wp::internal {

namespace {

constexpr bool isHexDigit(char c) {
    return isDigit(c) || (toLower(c) >= 'a' && toLower(c) <= 'f');
}

// True for "0x" with something behind it that may begin a number: std::from_chars would take a
// sign or a word such as "inf" there, the C conversions read the 0 alone then.
bool hasHexPrefix(std::string_view text) {
    if (!text.starts_with("0x") && !text.starts_with("0X")) {
        return false;
    }
    const std::string_view digits = text.substr(2);
    return !digits.empty() && (isHexDigit(digits.front()) || digits.front() == '.');
}

// What may belong to a hexadecimal number at the beginning of `digits`. One implementation of
// std::from_chars takes "p+-1" for an exponent, the C conversions end before the "p" then.
std::string_view hexNumberIn(std::string_view digits) {
    const std::size_t exponent = digits.find_first_of("pP");
    const std::string_view sign = digits.substr(std::min(exponent, digits.size())).substr(0, 3);
    return sign.size() == 3 && sign[1] == '+' && !isDigit(sign[2]) ? digits.substr(0, exponent)
                                                                   : digits;
}

// std::from_chars knows neither white space nor "+", nor the prefix of the hexadecimal form.
template <typename Real>
std::optional<Real> parseReal(std::string_view text) {
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    const bool isNegative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        text.remove_prefix(1);
    }
    if (text.empty() || text.front() == '-') {
        return std::nullopt;  // std::from_chars would take a second sign
    }

    const char* const end = text.data() + text.size();
    Real magnitude = 0;
    if (hasHexPrefix(text)) {
        const std::string_view digits = hexNumberIn(text.substr(2));
        const auto hex = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude,
                                         std::chars_format::hex);
        if (hex.ec == std::errc()) {
            return isNegative ? -magnitude : magnitude;
        }
        if (hex.ec == std::errc::result_out_of_range) {
            return std::nullopt;
        }
    }
    if (std::from_chars(text.data(), end, magnitude).ec != std::errc()) {
        return std::nullopt;
    }
    return isNegative ? -magnitude : magnitude;
}

}  // namespace

void lowerCase(std::string& text) {
    std::transform(text.begin(), text.end(), text.begin(), toLower);
}

std::string lowerCased(std::string_view text) {
    std::string lower(text);
    lowerCase(lower);
    return lower;
}

bool isPlainAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), isAscii<char>);
}

std::optional<double> parseDouble(std::string_view text) {
    return parseReal<double>(text);
}

std::optional<float> parseFloat(std::string_view text) {
    return parseReal<float>(text);
}

}  // namespace exiv2_wp::internal
