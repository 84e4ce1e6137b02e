#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8 by its definition, for the places where no platform conversion is wanted.
namespace exiv2_wp::internal {

struct DecodedCharacter {
    char32_t codePoint = 0;  ///< U+FFFD for malformed bytes
    std::size_t length = 0;  ///< bytes used, at least 1
    bool isWellFormed = false;
};

/// Decodes the character at the start of `text`, which must not be empty. Of malformed text the
/// longest beginning of a well-formed sequence counts as one character, as platforms replace it.
[[nodiscard]] DecodedCharacter decodeUtf8(std::string_view text);

/// Appends one code point. A surrogate becomes the three bytes that its number would have.
void appendUtf8(std::string& text, char32_t codePoint);

}  // namespace exiv2_wp::internal
