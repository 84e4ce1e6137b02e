#include "exiv2_wrapper/text/utf8.h"

namespace exiv2_wp::internal {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// What a lead byte promises: the sequence's length and the range of its second byte, which is what
// keeps overlong forms, surrogates and numbers above U+10FFFF out.
struct Lead {
    std::size_t length = 0;  // of a byte that begins nothing
    unsigned char secondMin = 0;
    unsigned char secondMax = 0;
};

Lead leadOf(unsigned char byte) {
    if (byte < 0x80) {
        return {.length = 1};
    }
    if (byte < 0xC2) {
        return {};
    }
    if (byte < 0xE0) {
        return {2, 0x80, 0xBF};
    }
    if (byte < 0xF0) {
        const unsigned char secondMin = byte == 0xE0 ? 0xA0 : 0x80;
        const unsigned char secondMax = byte == 0xED ? 0x9F : 0xBF;
        return {3, secondMin, secondMax};
    }
    if (byte < 0xF5) {
        const unsigned char secondMin = byte == 0xF0 ? 0x90 : 0x80;
        const unsigned char secondMax = byte == 0xF4 ? 0x8F : 0xBF;
        return {4, secondMin, secondMax};
    }
    return {};
}

}  // namespace

DecodedCharacter decodeUtf8(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    const Lead lead = leadOf(first);
    if (lead.length < 2) {
        return lead.length == 1 ? DecodedCharacter{first, 1, true}
                                : DecodedCharacter{kReplacement, 1, false};
    }
    char32_t codePoint = first & (0x7FU >> lead.length);
    for (std::size_t i = 1; i < lead.length; ++i) {
        const unsigned char min = i == 1 ? lead.secondMin : 0x80;
        const unsigned char max = i == 1 ? lead.secondMax : 0xBF;
        const auto byte = i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
        if (byte < min || byte > max) {
            return {kReplacement, i, false};
        }
        codePoint = (codePoint << 6) | (byte & 0x3FU);
    }
    return {codePoint, lead.length, true};
}

void appendUtf8(std::string& text, char32_t codePoint) {
    const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (codePoint < 0x80) {
        put(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        put(0xC0 | (codePoint >> 6));
    } else {
        if (codePoint < 0x10000) {
            put(0xE0 | (codePoint >> 12));
        } else {
            put(0xF0 | (codePoint >> 18));
            put(0x80 | ((codePoint >> 12) & 0x3F));
        }
        put(0x80 | ((codePoint >> 6) & 0x3F));
    }
    put(0x80 | (codePoint & 0x3F));
}

}  // namespace exiv2_wp::internal
