#include "vesk_common/vesk_common.h"

#include <cstddef>

namespace vesk {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// How many bytes a sequence that begins with `lead` has; 0 for a byte that can't begin one.
std::size_t sequenceLength(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2) {
        return 0;
    }
    if (lead < 0xE0) {
        return 2;
    }
    if (lead < 0xF0) {
        return 3;
    }
    return lead < 0xF5 ? 4 : 0;
}

// Decodes one code point at `at` and moves `at` behind it; a malformed byte counts alone.
char32_t decodeOne(const std::string& text, std::size_t& at) {
    const auto byteAt = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t length = sequenceLength(byteAt(at));
    if (length == 0 || at + length > text.size()) {
        ++at;
        return kReplacement;
    }
    constexpr unsigned kLeadMasks[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t c = byteAt(at) & kLeadMasks[length];
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(at + i) & 0xC0U) != 0x80) {
            ++at;
            return kReplacement;
        }
        c = (c << 6) | (byteAt(at + i) & 0x3FU);
    }
    const bool isOverlong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
    if (isOverlong || (c >= 0xD800 && c < 0xE000) || c > 0x10FFFF) {
        ++at;
        return kReplacement;
    }
    at += length;
    return c;
}

void appendWide(std::wstring& wide, char32_t c) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (c >= 0x10000) {
            wide += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
            wide += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
            return;
        }
    }
    wide += static_cast<wchar_t>(c);
}

void appendUtf8(std::string& text, char32_t c) {
    const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (c < 0x80) {
        put(c);
        return;
    }
    if (c < 0x800) {
        put(0xC0 | (c >> 6));
    } else {
        if (c < 0x10000) {
            put(0xE0 | (c >> 12));
        } else {
            put(0xF0 | (c >> 18));
            put(0x80 | ((c >> 12) & 0x3F));
        }
        put(0x80 | ((c >> 6) & 0x3F));
    }
    put(0x80 | (c & 0x3F));
}

}  // namespace

std::wstring s2ws(const std::string& utf8) {
    std::wstring wide;
    wide.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        appendWide(wide, decodeOne(utf8, at));
    }
    return wide;
}

std::string ws2s(const std::wstring& wide) {
    std::string utf8;
    utf8.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i) {
        auto c = static_cast<char32_t>(wide[i]);
        const char32_t next = i + 1 < wide.size() ? static_cast<char32_t>(wide[i + 1]) : 0;
        if (c >= 0xD800 && c < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00);
            ++i;
        }
        appendUtf8(utf8, (c >= 0xD800 && c < 0xE000) || c > 0x10FFFF ? kReplacement : c);
    }
    return utf8;
}

}  // namespace vesk
