#include "platform/awkward_arguments.h"

#include <random>
#include <string_view>

namespace test_support {

std::vector<std::wstring> awkwardArguments() {
    return {
        L"",
        L" ",
        L"a b",
        L"\t",
        L"a\nb",
        L"a\vb",
        L"a\rb",
        LR"(")",
        LR"("")",
        LR"("quoted")",
        LR"(a"b)",
        LR"(a "b" c)",
        LR"(\)",
        LR"(\\)",
        LR"(\")",
        LR"(\\")",
        LR"(\\\")",
        LR"(a\\b)",
        LR"(a b\)",
        LR"(a b\\)",
        LR"(C:\my photos\)",
        LR"(\\server\my share\photo.jpg)",
        L"-k",
        L"--key=a b",
        L"'single'",
        L"%PATH%",
        L"a^b&c|d<e>f",
        L"",
    };
}

std::vector<std::wstring> randomArguments(unsigned seed) {
    constexpr std::wstring_view kCharacters = L"\"\"\\\\\\  \t\n\vab";
    std::mt19937 random(seed);
    std::vector<std::wstring> arguments(random() % 9);
    for (std::wstring& argument : arguments) {
        argument.resize(random() % 12);
        for (wchar_t& c : argument) {
            c = kCharacters[random() % kCharacters.size()];
        }
    }
    return arguments;
}

}  // namespace test_support
