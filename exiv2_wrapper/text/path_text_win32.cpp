#include <windows.h>

#include <clocale>
#include <limits>
#include <system_error>

#include "exiv2_wrapper/text/path_text.h"
#include "exiv2_wrapper/text/utf8.h"
#include "vesk_common/vesk_common.h"

namespace exiv2_wp::internal {

namespace {

// What the file functions take narrow text for; the C locale comes first, since a host that has
// made it UTF-8 reads log lines as UTF-8.
UINT narrowCodePage() {
    if (___lc_codepage_func() == CP_UTF8) {
        return CP_UTF8;
    }
    return AreFileApisANSI() != 0 ? GetACP() : GetOEMCP();
}

// Without look-alikes: "a" in place of "\u0101" would name another file, where "?" can name none.
// The code pages that know every character don't take the flag.
DWORD narrowingFlags(UINT codePage) {
    constexpr UINT kGb18030 = 54936;
    return codePage == CP_UTF8 || codePage == kGb18030 ? 0 : WC_NO_BEST_FIT_CHARS;
}

std::string narrowBy(UINT codePage, const std::wstring& wide) {
    if (wide.empty() || wide.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return {};
    }
    const int wideLength = static_cast<int>(wide.size());
    const DWORD flags = narrowingFlags(codePage);
    const int length =
        WideCharToMultiByte(codePage, flags, wide.data(), wideLength, nullptr, 0, nullptr, nullptr);
    if (length <= 0) {
        return {};
    }
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(codePage, flags, wide.data(), wideLength, narrow.data(), length, nullptr,
                        nullptr);
    return narrow;
}

// Fails for bytes that the code page doesn't know, where narrowBy puts a substitute: another file
// must not be opened in place of one that can't be named.
std::wstring widenBy(UINT codePage, std::string_view narrow) {
    if (narrow.empty()) {
        return {};
    }
    if (narrow.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw std::system_error(std::make_error_code(std::errc::value_too_large));
    }
    const int narrowLength = static_cast<int>(narrow.size());
    const int length = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, narrow.data(),
                                           narrowLength, nullptr, 0);
    if (length <= 0) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
    }
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, narrow.data(), narrowLength, wide.data(),
                        length);
    return wide;
}

}  // namespace

int widenUtf8(std::string_view utf8, std::span<wchar_t> wide) {
    if (utf8.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return 0;
    }
    return MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(),
                               static_cast<int>(wide.size()));
}

std::string narrowPath(const std::filesystem::path& path) {
    return narrowBy(narrowCodePage(), path.native());
}

std::filesystem::path pathFromNarrow(std::string_view narrow) {
    return widenBy(narrowCodePage(), narrow);
}

std::wstring widePath(const std::filesystem::path& path) {
    return path.native();
}

std::string utf8Path(const std::filesystem::path& path) {
    const std::wstring& wide = path.native();
    std::string utf8;
    utf8.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i) {
        char32_t codePoint = wide[i];
        const char32_t next = i + 1 < wide.size() ? wide[i + 1] : 0;
        if (codePoint >= 0xD800 && codePoint < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (next - 0xDC00);
            ++i;
        }
        appendUtf8(utf8, codePoint);
    }
    return utf8;
}

std::string hostUtf8Path(const std::filesystem::path& path) {
    return vesk::ws2s(path.native());
}

}  // namespace exiv2_wp::internal
