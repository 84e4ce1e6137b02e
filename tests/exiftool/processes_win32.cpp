#include <windows.h>

#include <tlhelp32.h>

#include <string>

#include "exiftool/processes.h"

namespace test_support {

bool isProcessAlive(unsigned long processId) {
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, processId);
    if (process == nullptr) {
        return false;
    }
    const bool isAlive = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return isAlive;
}

void killProcess(unsigned long processId) {
    const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, processId);
    if (process != nullptr) {
        TerminateProcess(process, 9);
        CloseHandle(process);
    }
}

std::set<unsigned long> exiftoolProcesses(const std::filesystem::path&) {
    std::set<unsigned long> found;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot, &entry); more != 0;
         more = Process32NextW(snapshot, &entry)) {
        const std::wstring name = entry.szExeFile;
        if (name == L"exiftool.exe" || name == L"perl.exe") {
            found.insert(entry.th32ProcessID);
        }
    }
    CloseHandle(snapshot);
    return found;
}

}  // namespace test_support
