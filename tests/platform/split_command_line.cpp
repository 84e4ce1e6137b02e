#include "platform/split_command_line.h"

#include <cstddef>

namespace test_support {

namespace {

bool isBlank(wchar_t c) {
    return c == L' ' || c == L'\t';
}

// The program's name follows a rule of its own: double quotes group, backslashes mean themselves.
std::wstring takeProgram(const std::wstring& line, std::size_t& at) {
    std::wstring program;
    bool isQuoted = false;
    for (; at < line.size() && (isQuoted || !isBlank(line[at])); ++at) {
        if (line[at] == L'"') {
            isQuoted = !isQuoted;
        } else {
            program += line[at];
        }
    }
    return program;
}

std::size_t takeBackslashes(const std::wstring& line, std::size_t& at) {
    const std::size_t begin = at;
    while (at < line.size() && line[at] == L'\\') {
        ++at;
    }
    return at - begin;
}

// Before a double quote every two backslashes are one, and an odd one makes the quote a plain
// character; elsewhere they mean themselves. Two quotes within quotes are one plain quote.
std::wstring takeArgument(const std::wstring& line, std::size_t& at) {
    std::wstring argument;
    bool isQuoted = false;
    while (at < line.size() && (isQuoted || !isBlank(line[at]))) {
        const std::size_t backslashes = takeBackslashes(line, at);
        const bool isAtQuote = at < line.size() && line[at] == L'"';
        argument.append(isAtQuote ? backslashes / 2 : backslashes, L'\\');
        if (!isAtQuote) {
            if (at < line.size() && (isQuoted || !isBlank(line[at]))) {
                argument += line[at++];
            }
        } else if (backslashes % 2 == 1) {
            argument += line[at++];
        } else if (isQuoted && at + 1 < line.size() && line[at + 1] == L'"') {
            argument += L'"';
            at += 2;
        } else {
            isQuoted = !isQuoted;
            ++at;
        }
    }
    return argument;
}

}  // namespace

std::vector<std::wstring> splitCommandLine(const std::wstring& line) {
    std::size_t at = 0;
    std::vector<std::wstring> arguments = {takeProgram(line, at)};
    for (;;) {
        while (at < line.size() && isBlank(line[at])) {
            ++at;
        }
        if (at == line.size()) {
            return arguments;
        }
        arguments.push_back(takeArgument(line, at));
    }
}

}  // namespace test_support
