// SPDX-License-Identifier: GPL-2.0-or-later
#include <windows.h>

#include <signal.h>
#include <stdlib.h>

#include <string>
#include <string_view>
#include <vector>

#include "exiv2/application.h"

namespace {

constexpr UINT kAborted = 3;  // as the C runtime has it, after words and perhaps a dialog

std::string utf8Of(std::wstring_view wide) {
    const int wideSize = static_cast<int>(wide.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), wideSize, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), wideSize, text.data(), size, nullptr, nullptr);
    return text;
}

}  // namespace

// NOLINTNEXTLINE(misc-use-internal-linkage): the system calls it
int wmain(int count, wchar_t** arguments) {
    // A photo that brings libexiv2 down ends this process, without a dialog.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    (void)signal(SIGABRT, [](int) { TerminateProcess(GetCurrentProcess(), kAborted); });
    std::vector<exiv2_tool::Argument> texts;
    for (int i = 1; i < count; ++i) {
        texts.push_back({arguments[i], utf8Of(arguments[i])});
    }
    // Everything is written; what is left to tidy up ends with the process.
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exiv2_tool::runApplication(texts)));
    return EXIT_FAILURE;
}
