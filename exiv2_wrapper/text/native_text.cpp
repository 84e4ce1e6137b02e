#include "exiv2_wrapper/text/native_text.h"

#include <stdexcept>

#include "exiv2_wrapper/text/utf8.h"

namespace exiv2_wp::internal {

namespace {

using Unit = NativeString::value_type;

void append(NativeString& text, char32_t codePoint, std::string_view bytes) {
    if constexpr (sizeof(Unit) == 1) {
        text.append(bytes.begin(), bytes.end());
    } else if (codePoint < 0x10000) {
        text += static_cast<Unit>(codePoint);
    } else {
        text += static_cast<Unit>(0xD800 + ((codePoint - 0x10000) >> 10));
        text += static_cast<Unit>(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
    }
}

}  // namespace

NativeString nativeText(std::string_view utf8) {
    NativeString text;
    while (!utf8.empty()) {
        const DecodedCharacter character = decodeUtf8(utf8);
        if (!character.isWellFormed) {
            throw std::range_error("malformed UTF-8");
        }
        append(text, character.codePoint, utf8.substr(0, character.length));
        utf8.remove_prefix(character.length);
    }
    return text;
}

}  // namespace exiv2_wp::internal
