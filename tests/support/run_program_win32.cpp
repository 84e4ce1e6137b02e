#include <windows.h>

#include "exiv2_wrapper/platform/quoting.h"
#include "support/run_program.h"

namespace test_support {

namespace {

HANDLE openInheritable(const wchar_t* file, DWORD access, DWORD creation) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return CreateFileW(file, access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, creation,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

int waitForEnd(const PROCESS_INFORMATION& process) {
    DWORD exitCode = 0;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(exitCode);
}

}  // namespace

int runIntoFiles(const std::filesystem::path& program, const std::vector<NativeString>& arguments,
                 const std::filesystem::path& output, const std::filesystem::path& error) {
    std::wstring commandLine = exiv2_wp::internal::buildCommandLine(program.native(), arguments);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = openInheritable(L"NUL", GENERIC_READ, OPEN_EXISTING);
    startup.hStdOutput = openInheritable(output.c_str(), GENERIC_WRITE, CREATE_ALWAYS);
    startup.hStdError = openInheritable(error.c_str(), GENERIC_WRITE, CREATE_ALWAYS);
    PROCESS_INFORMATION process{};
    const BOOL isStarted = CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr,
                                          TRUE, 0, nullptr, nullptr, &startup, &process);
    const int exitCode = isStarted != 0 ? waitForEnd(process) : -1;
    for (const HANDLE handle : {startup.hStdInput, startup.hStdOutput, startup.hStdError}) {
        CloseHandle(handle);
    }
    return exitCode;
}

}  // namespace test_support
