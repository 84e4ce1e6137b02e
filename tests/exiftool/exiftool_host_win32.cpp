#include <windows.h>

#include <shellapi.h>

#include <filesystem>

#include "exiftool/exiftool_host.h"

namespace exiftool_host {

std::vector<std::string> utf8Arguments(int, char**) {
    int count = 0;
    wchar_t** const values = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        const std::u8string text = std::filesystem::path(values[i]).u8string();
        arguments.emplace_back(text.begin(), text.end());
    }
    LocalFree(values);
    return arguments;
}

void dieAtOnce() {
    TerminateProcess(GetCurrentProcess(), 9);
    for (;;) {
    }
}

void forkAndExit() {}

}  // namespace exiftool_host
