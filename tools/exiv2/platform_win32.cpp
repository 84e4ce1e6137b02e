// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/platform.h"

#include <windows.h>

#include <algorithm>
#include <stdexcept>

namespace exiv2_tool {
namespace {

/// Closes a handle when it dies.
class Handle {
public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (isOpen()) {
            CloseHandle(handle_);
        }
    }
    [[nodiscard]] bool isOpen() const {
        return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE;
    }
    [[nodiscard]] HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

[[noreturn]] void fail(const char* reason) {
    throw std::runtime_error(std::string(reason) + ", error " + std::to_string(GetLastError()));
}

// The form of a name in which Windows lets it be longer than 260 characters; empty when there is
// none. It is used where it is needed: shorter names have their ordinary meaning.
std::wstring longForm(const wchar_t* name) {
    const DWORD size = GetFullPathNameW(name, 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(std::min(size, GetFullPathNameW(name, size, full.data(), nullptr)));
    if (full.starts_with(L"\\\\?\\") || full.starts_with(L"\\\\.\\")) {
        return full;
    }
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

HANDLE openFile(const wchar_t* name, DWORD access) {
    constexpr DWORD kForOthers = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return CreateFileW(name, access, kForOthers, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

// Who may change a file's attributes can read it without leaving the time of it.
HANDLE openWithoutTrace(const wchar_t* name) {
    HANDLE file = openFile(name, GENERIC_READ | FILE_WRITE_ATTRIBUTES);
    if (file == INVALID_HANDLE_VALUE) {
        return openFile(name, GENERIC_READ);
    }
    constexpr FILETIME kUnchanged = {0xFFFFFFFF, 0xFFFFFFFF};
    SetFileTime(file, nullptr, &kUnchanged, nullptr);
    return file;
}

HANDLE openForReading(const wchar_t* name) {
    const bool isLong = GetFullPathNameW(name, 0, nullptr, nullptr) >= MAX_PATH;
    return openWithoutTrace(isLong ? longForm(name).c_str() : name);
}

// An empty file can't be mapped.
std::span<const std::uint8_t> viewOf(HANDLE file) {
    LARGE_INTEGER size{};
    if (GetFileType(file) != FILE_TYPE_DISK || GetFileSizeEx(file, &size) == FALSE) {
        throw std::runtime_error("not a regular file");
    }
    if (size.QuadPart == 0) {
        throw std::runtime_error("the file is empty");
    }
    const Handle mapping(CreateFileMappingW(file, nullptr, PAGE_READONLY, 0, 0, nullptr));
    const void* const view =
        mapping.isOpen() ? MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0) : nullptr;
    if (view == nullptr) {
        fail("can't be read");
    }
    return {static_cast<const std::uint8_t*>(view), static_cast<std::size_t>(size.QuadPart)};
}

// The C runtime would change line ends.
bool writeTo(DWORD stream, std::string_view bytes) {
    constexpr std::size_t kPortion = 1U << 20U;
    while (!bytes.empty()) {
        DWORD count = 0;
        if (WriteFile(GetStdHandle(stream), bytes.data(),
                      static_cast<DWORD>(std::min(bytes.size(), kPortion)), &count,
                      nullptr) == FALSE) {
            return false;
        }
        bytes.remove_prefix(count);
    }
    return true;
}

}  // namespace

FileView::FileView(const NativeChar* name) {
    const Handle file(openForReading(name));
    if (!file.isOpen()) {
        fail("can't be opened");
    }
    bytes_ = viewOf(file.get());
}

FileView::~FileView() {
    UnmapViewOfFile(bytes_.data());
}

Written writeOutput(std::string_view bytes) {
    if (writeTo(STD_OUTPUT_HANDLE, bytes)) {
        return Written::whole;
    }
    const DWORD error = GetLastError();
    return error == ERROR_BROKEN_PIPE || error == ERROR_NO_DATA ? Written::unwanted
                                                                : Written::failed;
}

void writeError(std::string_view text) {
    (void)writeTo(STD_ERROR_HANDLE, text);
}

}  // namespace exiv2_tool
