#include <windows.h>

#include <array>
#include <cwchar>
#include <string>

#include "exiv2_wrapper/platform/platform.h"
#include "exiv2_wrapper/platform/quoting.h"
#include "exiv2_wrapper/text/to_wide.h"
#include "vesk_common/vesk_common.h"

namespace exiv2_wp::internal {

namespace {

static_assert(sizeof(SECURITY_ATTRIBUTES) == 24 && sizeof(STARTUPINFOW) == 104 &&
                  sizeof(JOBOBJECT_EXTENDED_LIMIT_INFORMATION) == 144 &&
                  sizeof(JOBOBJECT_BASIC_ACCOUNTING_INFORMATION) == 48,
              "the library is built for 64-bit Windows");

constexpr DWORD kUnknownExitCode = 1;

HANDLE nativeHandle(std::intptr_t value) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the portable side holds handles as integers
    return reinterpret_cast<HANDLE>(value);
}

HANDLE nativeHandle(const Handle& handle) {
    return nativeHandle(handle.value());
}

std::intptr_t integerOf(HANDLE handle) {
    return reinterpret_cast<std::intptr_t>(handle);
}

}  // namespace

void closeHandle(std::intptr_t handle) {
    CloseHandle(nativeHandle(handle));
}

void closeProcess(std::intptr_t process, std::intptr_t thread) {
    if (thread != Handle::kNone) {
        closeHandle(thread);
    }
    closeHandle(process);
}

ErrorCode makePipe(Pipe& pipe) {
    SECURITY_ATTRIBUTES attributes{};
    attributes.nLength = sizeof attributes;
    attributes.bInheritHandle = TRUE;
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (CreatePipe(&readEnd, &writeEnd, &attributes, 0) == 0) {
        return GetLastError();
    }
    pipe.readEnd = Handle(integerOf(readEnd));
    pipe.writeEnd = Handle(integerOf(writeEnd));
    return 0;
}

ErrorCode keepFromChildren(const Handle& end) {
    return SetHandleInformation(nativeHandle(end), HANDLE_FLAG_INHERIT, 0) != 0 ? 0
                                                                                : GetLastError();
}

// The tool's path is narrowed and widened again as UTF-8: with another code page a path with
// non-ASCII characters doesn't survive that, and the start fails. Kept, since hosts ship the tool
// under such paths only where the code page is UTF-8.
ErrorCode startRun(const std::filesystem::path& tool, std::span<const NativeString> arguments,
                   const Handle& output, Process& process) {
    std::wstring commandLine = buildCommandLine(toWide(narrowPath(tool)), arguments);

    STARTUPINFOW startUp{};
    startUp.cb = sizeof startUp;
    startUp.dwFlags = STARTF_USESTDHANDLES;
    startUp.hStdOutput = nativeHandle(output);
    startUp.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    startUp.hStdInput = GetStdHandle(STD_INPUT_HANDLE);

    PROCESS_INFORMATION started{};
    if (CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                       nullptr, nullptr, &startUp, &started) == 0) {
        return GetLastError();
    }
    process = Process(integerOf(started.hProcess), integerOf(started.hThread));
    return 0;
}

std::size_t readSome(const Handle& readEnd, std::span<char> buffer) {
    DWORD count = 0;
    const auto wanted = static_cast<DWORD>(buffer.size());
    if (ReadFile(nativeHandle(readEnd), buffer.data(), wanted, &count, nullptr) == 0) {
        return 0;
    }
    return count;
}

std::uint32_t waitForExitCode(Process& process) {
    WaitForSingleObject(nativeHandle(process.value()), INFINITE);
    DWORD exitCode = kUnknownExitCode;
    GetExitCodeProcess(nativeHandle(process.value()), &exitCode);
    process.close();
    return exitCode;
}

ErrorCode writeAll(const Handle& writeEnd, std::string_view bytes) {
    DWORD count = 0;
    const auto size = static_cast<DWORD>(bytes.size());
    return WriteFile(nativeHandle(writeEnd), bytes.data(), size, &count, nullptr) != 0
               ? 0
               : GetLastError();
}

ErrorCode startService(const std::filesystem::path& tool, std::string_view arguments,
                       const Handle& input, const Handle& output, Service& service) {
    std::wstring commandLine = tool.native() + vesk::s2ws(std::string(arguments));

    STARTUPINFOW startUp{};
    startUp.cb = sizeof startUp;
    startUp.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    startUp.wShowWindow = SW_HIDE;
    startUp.hStdInput = nativeHandle(input);
    startUp.hStdOutput = nativeHandle(output);
    startUp.hStdError = nativeHandle(output);

    PROCESS_INFORMATION started{};
    if (CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE,
                       CREATE_UNICODE_ENVIRONMENT, nullptr, nullptr, &startUp, &started) == 0) {
        return GetLastError();
    }
    service.process = Process(integerOf(started.hProcess), integerOf(started.hThread));
    return 0;
}

ErrorCode createJob(Service& service) {
    HANDLE job = CreateJobObjectA(nullptr, nullptr);
    if (job == nullptr) {
        return GetLastError();
    }
    service.job = Handle(integerOf(job));
    return 0;
}

ErrorCode killJobWithHost(const Service& service) {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    return SetInformationJobObject(nativeHandle(service.job), JobObjectExtendedLimitInformation,
                                   &limits, sizeof limits) != 0
               ? 0
               : GetLastError();
}

ErrorCode assignToJob(const Service& service) {
    return AssignProcessToJobObject(nativeHandle(service.job),
                                    nativeHandle(service.process.value())) != 0
               ? 0
               : GetLastError();
}

void settleService(Service& service) {
    service.process.close();
}

ErrorCode countActiveProcesses(const Service& service, std::uint32_t& count) {
    JOBOBJECT_BASIC_ACCOUNTING_INFORMATION accounting{};
    if (QueryInformationJobObject(nativeHandle(service.job), JobObjectBasicAccountingInformation,
                                  &accounting, sizeof accounting, nullptr) == 0) {
        return GetLastError();
    }
    count = accounting.ActiveProcesses;
    return 0;
}

void awaitQuit(Service&) {}

void endService(Service& service) {
    service.job.release();
}

std::uint32_t currentProcessId() {
    return GetCurrentProcessId();
}

std::filesystem::path shortPath(const std::filesystem::path& path) {
    std::array<wchar_t, MAX_PATH> name{};
    const DWORD length =
        GetShortPathNameW(path.c_str(), name.data(), static_cast<DWORD>(name.size()));
    return length != 0 ? std::filesystem::path(name.data()) : std::filesystem::path();
}

NativeString fullPath(const std::filesystem::path& path) {
    std::wstring full(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        if (length == 0) {
            return path.native();
        }
        const bool isWhole = length < full.size();  // or else it counts the zero at its end too
        full.resize(length);
        if (isWhole) {
            return full;
        }
    }
}

std::filesystem::path libraryFile() {
    HMODULE library = nullptr;
    constexpr DWORD kFlags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExW(kFlags, reinterpret_cast<LPCWSTR>(&libraryFile), &library) == 0) {
        return {};
    }
    std::array<wchar_t, MAX_PATH> name{};
    if (GetModuleFileNameW(library, name.data(), static_cast<DWORD>(name.size())) == 0) {
        return {};
    }
    name.back() = L'\0';  // a longer path arrives cut off, on old systems without its end
    return std::filesystem::path(name.data());
}

}  // namespace exiv2_wp::internal
