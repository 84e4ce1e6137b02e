#include "exiv2_wrapper/platform/quoting.h"

#include "fuzz/checks.h"
#include "platform/split_command_line.h"

namespace {

// Step by step: with a counter of the backslashes that aren't written yet.
std::wstring literalQuote(const std::wstring& argument) {
    if (argument.empty()) {
        return L"\"\"";
    }
    bool needsQuotes = false;
    for (const wchar_t c : argument) {
        needsQuotes = needsQuotes || c == 0x20 || c == 0x09 || c == 0x0A || c == 0x0B || c == 0x22;
    }
    if (!needsQuotes) {
        return argument;
    }
    std::wstring quoted = L"\"";
    int pending = 0;
    const auto writeBackslashes = [&quoted](int count) {
        for (int i = 0; i < count; ++i) {
            quoted.push_back(L'\\');
        }
    };
    for (const wchar_t c : argument) {
        if (c == L'\\') {
            ++pending;
        } else {
            writeBackslashes(c == L'"' ? 2 * pending + 1 : pending);
            quoted.push_back(c);
            pending = 0;
        }
    }
    writeBackslashes(2 * pending);
    return quoted + L"\"";
}

// The arguments that the input holds, each ended by a zero byte. Bytes from 0x80 stand for
// characters beyond ASCII.
std::vector<std::wstring> argumentsOf(const std::uint8_t* data, std::size_t size) {
    std::vector<std::wstring> arguments(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0) {
            arguments.emplace_back();
        } else {
            arguments.back() += static_cast<wchar_t>(data[i] < 0x80 ? data[i] : 0x4E00 + data[i]);
        }
    }
    return arguments;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<std::wstring> arguments = argumentsOf(data, size);
    for (const std::wstring& argument : arguments) {
        fuzz::require(exiv2_wp::internal::quoteArgument(argument) == literalQuote(argument),
                      "both versions quote alike");
    }
    const std::wstring line =
        exiv2_wp::internal::buildCommandLine(L"C:\\a b\\exiv2.exe", arguments);
    std::vector<std::wstring> expected = {L"C:\\a b\\exiv2.exe"};
    expected.insert(expected.end(), arguments.begin(), arguments.end());
    fuzz::require(test_support::splitCommandLine(line) == expected,
                  "the tool gets the arguments that were quoted");
    return 0;
}
