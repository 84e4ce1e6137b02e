#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

/// The one place for what the library does with tool text. The text is bytes, mostly UTF-8; none of
/// these functions looks at a locale, so a host that sets one changes no result.
namespace exiv2_wp::internal {

/// The white space of the classic C locale: blank, TAB, LF, VT, FF, CR.
[[nodiscard]] constexpr bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

[[nodiscard]] constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// True below 0x80, for a unit of text of any width.
template <typename Unit>
[[nodiscard]] constexpr bool isAscii(Unit unit) {
    return static_cast<char32_t>(unit) < 0x80;
}

/// Lower-cases A to Z; every other byte is kept.
[[nodiscard]] constexpr char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// Lower-cases every byte in place.
void lowerCase(std::string& text);

[[nodiscard]] std::string lowerCased(std::string_view text);

/// Without the white space at both ends.
[[nodiscard]] constexpr std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// Drops the white space at the front of `rest`.
constexpr void skipSpace(std::string_view& rest) {
    std::size_t begin = 0;
    while (begin < rest.size() && isSpace(rest[begin])) {
        ++begin;
    }
    rest.remove_prefix(begin);
}

/// Takes the bytes before the first white space off the front of `rest`: none when it begins with
/// white space.
constexpr std::string_view takeUntilSpace(std::string_view& rest) {
    std::size_t end = 0;
    while (end < rest.size() && !isSpace(rest[end])) {
        ++end;
    }
    const std::string_view taken = rest.substr(0, end);
    rest.remove_prefix(end);
    return taken;
}

/// Takes the next run of non-space bytes off the front of `rest`, with the white space before it.
/// Empty when `rest` holds none; `rest` is then empty too.
[[nodiscard]] constexpr std::string_view takeWord(std::string_view& rest) {
    skipSpace(rest);
    return takeUntilSpace(rest);
}

/// True when every byte is below 0x80.
[[nodiscard]] bool isPlainAscii(std::string_view text);

/// The one number rule: takes an optional single "+" or "-" and all decimal digits behind it off
/// the front of `rest`. No value without a digit. Accumulated modulo 2^64: a number that doesn't
/// fit wraps around, which is kept for the sake of equal results.
[[nodiscard]] constexpr std::optional<std::int64_t> takeInteger(std::string_view& rest) {
    const bool isNegative = !rest.empty() && rest.front() == '-';
    const std::size_t begin = !rest.empty() && (isNegative || rest.front() == '+') ? 1 : 0;
    std::uint64_t magnitude = 0;
    std::size_t end = begin;
    for (; end < rest.size() && isDigit(rest[end]); ++end) {
        magnitude = magnitude * 10 + static_cast<std::uint64_t>(rest[end] - '0');
    }
    rest.remove_prefix(end);
    if (end == begin) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(isNegative ? 0 - magnitude : magnitude);
}

/// The number that `word` is from its first byte to its last.
[[nodiscard]] constexpr std::optional<std::int64_t> parseInteger(std::string_view word) {
    const std::optional<std::int64_t> number = takeInteger(word);
    return word.empty() ? number : std::nullopt;
}

/// The low 32 bits, as the tool's identifiers are stored.
[[nodiscard]] constexpr std::int32_t low32Bits(std::int64_t value) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(value)));
}

/// Converts the number at the beginning of `text` as the C conversions do in the classic locale:
/// leading white space and a sign are taken, decimal, hexadecimal, infinite and not-a-number forms
/// are read, trailing text is ignored. No value when there is no number or when it is too large, or
/// too small but not zero, for the type.
[[nodiscard]] std::optional<double> parseDouble(std::string_view text);
[[nodiscard]] std::optional<float> parseFloat(std::string_view text);

}  // namespace exiv2_wp::internal
