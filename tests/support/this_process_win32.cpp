#include <windows.h>

#include <stdlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "support/this_process.h"

namespace test_support {

namespace {

HANDLE openForChildren(const std::filesystem::path& file, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES attributes{};
    attributes.nLength = sizeof attributes;
    attributes.bInheritHandle = TRUE;
    return CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &attributes,
                       disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

HANDLE replace(DWORD stream, HANDLE handle) {
    const HANDLE saved = GetStdHandle(stream);
    SetStdHandle(stream, handle);
    return saved;
}

void restore(DWORD stream, HANDLE saved) {
    CloseHandle(GetStdHandle(stream));
    SetStdHandle(stream, saved);
}

}  // namespace

struct RedirectedStreams::Saved {
    HANDLE input;
    HANDLE error;
};

RedirectedStreams::RedirectedStreams(const std::filesystem::path& input,
                                     const std::filesystem::path& error)
    : saved_(std::make_unique<Saved>()) {
    saved_->input = replace(STD_INPUT_HANDLE, openForChildren(input, GENERIC_READ, OPEN_EXISTING));
    saved_->error = replace(STD_ERROR_HANDLE, openForChildren(error, GENERIC_WRITE, CREATE_ALWAYS));
}

RedirectedStreams::~RedirectedStreams() {
    restore(STD_INPUT_HANDLE, saved_->input);
    restore(STD_ERROR_HANDLE, saved_->error);
}

EnvironmentVariable::EnvironmentVariable(std::string name, const std::string& value)
    : name_(std::move(name)) {
    if (const char* const before = getenv(name_.c_str())) {
        before_ = before;
    }
    _putenv_s(name_.c_str(), value.c_str());
}

// An empty value removes the variable.
EnvironmentVariable::~EnvironmentVariable() {
    _putenv_s(name_.c_str(), before_.value_or("").c_str());
}

// Wine counts no handles, but gives a fresh one the lowest free number. Handles below the highest
// open one may be free, so some more are made, and the highest tells.
std::size_t countOpenHandles() {
    DWORD count = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &count) != 0 && count != 0) {
        return count;
    }
    std::array<HANDLE, 64> fresh{};
    std::uintptr_t highest = 0;
    for (HANDLE& handle : fresh) {
        handle = CreateEventW(nullptr, FALSE, FALSE, nullptr);
        highest = std::max(highest, reinterpret_cast<std::uintptr_t>(handle));
    }
    for (const HANDLE handle : fresh) {
        CloseHandle(handle);
    }
    return highest / 4;
}

// Events of locks that threads have once had to wait for; a leak in every run would be hundreds.
const std::size_t kHandlesKeptForThreads = 16;

bool hasChildren() {
    return false;
}

}  // namespace test_support
