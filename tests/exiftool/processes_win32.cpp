#include <windows.h>

#include <tlhelp32.h>

#include <cstddef>
#include <map>
#include <string>

#include "exiftool/processes.h"

namespace test_support {

namespace {

// Whether this process has started the other, itself or through its children.
bool isOurs(unsigned long id, const std::map<unsigned long, unsigned long>& parents) {
    std::size_t steps = 0;  // a number that was given away again may lead in a circle
    for (auto found = parents.find(id); found != parents.end() && steps < parents.size(); ++steps) {
        if (found->second == GetCurrentProcessId()) {
            return true;
        }
        found = parents.find(found->second);
    }
    return false;
}

}  // namespace

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
    std::map<unsigned long, unsigned long> parents;
    std::set<unsigned long> found;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot, &entry); more != 0;
         more = Process32NextW(snapshot, &entry)) {
        parents[entry.th32ProcessID] = entry.th32ParentProcessID;
        const std::wstring name = entry.szExeFile;
        if (name == L"exiftool.exe" || name == L"perl.exe") {
            found.insert(entry.th32ProcessID);
        }
    }
    CloseHandle(snapshot);
    std::erase_if(found, [&parents](unsigned long id) { return !isOurs(id, parents); });
    return found;
}

}  // namespace test_support
