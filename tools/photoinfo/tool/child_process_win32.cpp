#include <windows.h>

#include <array>
#include <memory>
#include <type_traits>
#include <utility>

#include "photoinfo/tool/child_process.h"

namespace photoinfo::platform {

namespace {

struct CloseHandleOf {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, CloseHandleOf>;

// Without a window of its own. Null when it can't be started.
Handle start(const std::filesystem::path& program, const std::vector<std::wstring>& arguments,
             HANDLE output) {
    std::wstring commandLine = L"\"" + program.native() + L"\"";
    for (const std::wstring& argument : arguments) {
        commandLine += L" \"" + argument + L"\"";
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = output;
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    constexpr BOOL kInheritHandles = TRUE;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, kInheritHandles,
                       CREATE_NO_WINDOW, nullptr, nullptr, &startup, &process) == 0) {
        return nullptr;
    }
    CloseHandle(process.hThread);
    return Handle(process.hProcess);
}

std::string readAll(HANDLE readEnd) {
    std::string text;
    std::array<char, 4096> buffer{};
    DWORD count = 0;
    while (ReadFile(readEnd, buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr) !=
               0 &&
           count > 0) {
        text.append(buffer.data(), count);
    }
    return text;
}

bool endsWell(HANDLE child) {
    DWORD exitCode = 1;
    WaitForSingleObject(child, INFINITE);
    return GetExitCodeProcess(child, &exitCode) != 0 && exitCode == 0;
}

}  // namespace

std::optional<std::string> outputOf(const std::filesystem::path& program,
                                    const std::vector<std::wstring>& arguments) {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    if (CreatePipe(&read, &write, nullptr, 0) == 0) {
        return std::nullopt;
    }
    const Handle readEnd(read);
    Handle writeEnd(write);
    SetHandleInformation(write, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    const Handle child = start(program, arguments, write);
    writeEnd.reset();
    if (!child) {
        return std::nullopt;
    }
    std::string text = readAll(readEnd.get());
    return endsWell(child.get()) ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace photoinfo::platform
