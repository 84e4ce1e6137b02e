#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <locale.h>
#include <stdio.h>
#include <stdlib.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "photoinfo/application.h"
#include "photoinfo/platform.h"

namespace photoinfo::platform {

namespace {

// UTF-8 when the C locale is, otherwise the file functions' code page.
UINT narrowCodePage() {
    if (___lc_codepage_func() == CP_UTF8) {
        return CP_UTF8;
    }
    return AreFileApisANSI() != 0 ? GetACP() : GetOEMCP();
}

// None when the code page lacks a character.
std::optional<std::string> narrowBy(UINT codePage, const std::wstring& wide) {
    const bool isUtf8 = codePage == CP_UTF8;
    const DWORD flags = isUtf8 ? WC_ERR_INVALID_CHARS : WC_NO_BEST_FIT_CHARS;
    BOOL isSubstituted = FALSE;
    const auto convert = [&](char* buffer, int size) {
        return WideCharToMultiByte(codePage, flags, wide.data(), static_cast<int>(wide.size()),
                                   buffer, size, nullptr, isUtf8 ? nullptr : &isSubstituted);
    };
    const int length = convert(nullptr, 0);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    if (length == 0 || isSubstituted != FALSE || convert(narrow.data(), length) != length) {
        return std::nullopt;
    }
    return narrow;
}

// Half of a surrogate pair, which a file name may hold, becomes U+FFFD: such a file is not found
// by an argument.
std::string utf8Of(std::wstring_view wide) {
    if (wide.empty()) {
        return {};
    }
    const int wideLength = static_cast<int>(wide.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), wideLength, nullptr, 0, nullptr, nullptr);
    std::string argument(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), wideLength, argument.data(), length, nullptr,
                        nullptr);
    return argument;
}

// The 8.3 form, plain as a rule; the path itself where the volume has none.
std::wstring shortForm(const std::wstring& path) {
    const DWORD size = GetShortPathNameW(path.c_str(), nullptr, 0);
    std::wstring shortPath(size, L'\0');
    const DWORD length = GetShortPathNameW(path.c_str(), shortPath.data(), size);
    shortPath.resize(length);
    return length == 0 || length >= size ? path : shortPath;
}

}  // namespace

std::filesystem::path pathOf(const std::string& argument) {
    return std::u8string(argument.begin(), argument.end());
}

std::string argumentOf(const std::filesystem::path& path) {
    return utf8Of(path.native());
}

std::optional<std::string> narrowPathOf(const std::filesystem::path& path) {
    const UINT codePage = narrowCodePage();
    const std::optional<std::string> narrow = narrowBy(codePage, path.native());
    return narrow ? narrow : narrowBy(codePage, shortForm(path.native()));
}

// A path that doesn't fit is cut off and fills the buffer.
std::filesystem::path programFolder() {
    constexpr DWORD kLongestPath = 32768;
    std::wstring path(kLongestPath, L'\0');
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), kLongestPath);
    path.resize(length < kLongestPath ? length : 0);
    return std::filesystem::path(path).parent_path();
}

void setEnvironmentDefault(const char* name, const char* value) {
    if (getenv(name) == nullptr) {
        _putenv_s(name, value);
    }
}

// Tools inherit the process's standard handle; the C runtime has taken its own copy at the start.
void silenceTools() {
    HANDLE nowhere = CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                 OPEN_EXISTING, 0, nullptr);
    if (nowhere != INVALID_HANDLE_VALUE) {
        SetStdHandle(STD_ERROR_HANDLE, nowhere);
    }
}

void writeError(std::string_view text) {
    (void)fwrite(text.data(), 1, text.size(), stderr);
    (void)fflush(stderr);
}

std::size_t errorTerminalColumns() {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    // The C runtime hands its handles out as numbers.
    auto* const console =
        reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stderr)));  // NOLINT(*-no-int-to-ptr)
    if (GetConsoleScreenBufferInfo(console, &info) == FALSE) {
        return 0;
    }
    const SMALL_RECT& window = info.srWindow;
    return static_cast<std::size_t>(window.Right) - static_cast<std::size_t>(window.Left) + 1;
}

// A junction is a link to a folder too. Other reparse points, such as files that a cloud keeps, are
// what they seem to be.
bool isLink(const std::filesystem::path& path) {
    WIN32_FIND_DATAW found{};
    HANDLE search = FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return false;
    }
    FindClose(search);
    const bool isReparsed = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    return isReparsed && (found.dwReserved0 == IO_REPARSE_TAG_SYMLINK ||
                          found.dwReserved0 == IO_REPARSE_TAG_MOUNT_POINT);
}

}  // namespace photoinfo::platform

namespace {

// The console's code page outlives the program, so it is put back.
class Utf8Console {
public:
    Utf8Console() : before_(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;
    ~Utf8Console() { SetConsoleOutputCP(before_); }

private:
    UINT before_;
};

}  // namespace

// NOLINTNEXTLINE(misc-use-internal-linkage): the system calls it
int wmain(int argc, wchar_t** argv) {
    const Utf8Console console;
    // Narrow paths can then hold every name. Older runtime libraries don't know it and change
    // nothing.
    (void)setlocale(LC_CTYPE, ".UTF8");
    // Line ends as on every platform.
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.push_back(photoinfo::platform::utf8Of(argv[i]));
    }
    return photoinfo::runApplication(std::move(arguments));
}
