#include "exiv2_wrapper/platform/quoting.h"

namespace exiv2_wp::internal {

std::wstring quoteArgument(const std::wstring& arg) {
    if (arg.empty()) {
        return L"\"\"";
    }
    if (arg.find_first_of(L" \t\n\v\"") == std::wstring::npos) {
        return arg;
    }
    // Backslashes mean themselves unless a double quote follows them; the closing quote counts.
    std::wstring quoted = L"\"";
    std::size_t pendingBackslashes = 0;
    for (const wchar_t c : arg) {
        if (c == L'\\') {
            ++pendingBackslashes;
            continue;
        }
        quoted.append(c == L'"' ? 2 * pendingBackslashes + 1 : pendingBackslashes, L'\\');
        quoted += c;
        pendingBackslashes = 0;
    }
    quoted.append(2 * pendingBackslashes, L'\\');
    quoted += L'"';
    return quoted;
}

std::wstring buildCommandLine(const std::wstring& tool, std::span<const std::wstring> arguments) {
    std::wstring line = quoteArgument(tool);
    for (const std::wstring& argument : arguments) {
        line += L' ';
        line += quoteArgument(argument);
    }
    return line;
}

std::size_t commandLineRoom(const std::wstring& argument) {
    return quoteArgument(argument).size() + 1;
}

std::size_t commandLineRoom(const std::string& argument) {
    return argument.size() + 1;
}

}  // namespace exiv2_wp::internal
