#include "exiv2_wrapper/text/to_wide.h"

#include <cstddef>

#include "exiv2_wrapper/text/path_text.h"

namespace exiv2_wp::internal {

namespace {

// Lossy on purpose: the text then names no file, and whoever uses it fails in a visible way.
std::wstring widenByteByByte(const std::string& bytes) {
    std::wstring wide;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        wide += static_cast<wchar_t>(value < 0x80 ? value : 0xFF00U | value);
    }
    return wide;
}

}  // namespace

std::wstring toWide(const std::string& utf8) {
    return toWideBy(&widenUtf8, utf8);
}

std::wstring toWideBy(WidenFunction widen, const std::string& utf8) {
    if (utf8.empty()) {
        return {};
    }
    const int length = widen(utf8, {});
    if (length > 0) {
        std::wstring wide(static_cast<std::size_t>(length), L'\0');
        if (widen(utf8, wide) > 0) {
            return wide;
        }
    }
    return widenByteByByte(utf8);
}

}  // namespace exiv2_wp::internal
