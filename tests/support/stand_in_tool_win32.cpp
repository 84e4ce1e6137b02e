#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <array>
#include <cstddef>

#include "support/stand_in_tool.h"

namespace stand_in::platform {

bool write(int descriptor, std::string_view bytes) {
    const HANDLE handle = GetStdHandle(descriptor == 1 ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    while (!bytes.empty()) {
        DWORD count = 0;
        constexpr std::size_t kAtMost = 1 << 20;
        const auto size = static_cast<DWORD>(bytes.size() < kAtMost ? bytes.size() : kAtMost);
        if (WriteFile(handle, bytes.data(), size, &count, nullptr) == 0) {
            return false;
        }
        bytes.remove_prefix(count);
    }
    return true;
}

std::size_t read(char* buffer, std::size_t size) {
    DWORD count = 0;
    const HANDLE handle = GetStdHandle(STD_INPUT_HANDLE);
    return ReadFile(handle, buffer, static_cast<DWORD>(size), &count, nullptr) != 0 ? count : 0;
}

void closeOutput() {
    CloseHandle(GetStdHandle(STD_OUTPUT_HANDLE));
    CloseHandle(GetStdHandle(STD_ERROR_HANDLE));
}

unsigned long processId() {
    return GetCurrentProcessId();
}

// Windows has no signals; a process that crashes ends with the code of its exception.
void dieBySignal(int) {
    TerminateProcess(GetCurrentProcess(), 0xC0000005);
    for (;;) {
    }
}

}  // namespace stand_in::platform

int wmain(int argc, wchar_t** argv) {
    std::array<wchar_t, 32768> program{};
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    return stand_in::play(program.data(), argc > 0 ? argv[0] : L"",
                          {argv + (argc > 0 ? 1 : 0), argv + argc});
}
