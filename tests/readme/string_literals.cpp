#include "readme/string_literals.h"

#include <algorithm>
#include <cstddef>

namespace test_support {

namespace {

// The end of the literal that begins at `begin` with its quote, behind its closing quote. What
// isn't closed ends with the text.
std::size_t endOfLiteral(std::string_view code, std::size_t begin) {
    const char quote = code[begin];
    std::size_t at = begin + 1;
    while (at < code.size() && code[at] != quote) {
        at += code[at] == '\\' ? 2U : 1U;
    }
    return std::min(at + 1, code.size());
}

// An apostrophe inside a number parts its digits.
bool isQuote(std::string_view code, std::size_t at) {
    const bool isDigitSeparator =
        code[at] == '\'' && at > 0 && code[at - 1] >= '0' && code[at - 1] <= '9';
    return (code[at] == '"' || code[at] == '\'') && !isDigitSeparator;
}

}  // namespace

std::string withoutComments(std::string_view source) {
    std::string code;
    for (std::size_t at = 0; at < source.size();) {
        const std::string_view rest = source.substr(at);
        const bool isLineStart = at == 0 || source[at - 1] == '\n';
        if (rest.starts_with("//") || (isLineStart && rest.starts_with("#"))) {
            at = std::min(source.find('\n', at), source.size());
        } else if (rest.starts_with("/*")) {
            at = std::min(source.find("*/", at), source.size() - 2) + 2;
        } else if (isQuote(source, at)) {
            const std::size_t end = endOfLiteral(source, at);
            code += source.substr(at, end - at);
            at = end;
        } else {
            code += source[at++];
        }
    }
    return code;
}

std::vector<std::string> stringLiterals(std::string_view code) {
    std::vector<std::string> literals;
    bool isNeighbour = false;
    for (std::size_t at = 0; at < code.size();) {
        if (!isQuote(code, at)) {
            isNeighbour = isNeighbour && (code[at] == ' ' || code[at] == '\n');
            ++at;
            continue;
        }
        const std::size_t end = endOfLiteral(code, at);
        if (code[at] == '"') {
            const std::string text(code.substr(at + 1, end - at - 2));
            if (isNeighbour) {
                literals.back() += text;
            } else {
                literals.push_back(text);
            }
        }
        isNeighbour = code[at] == '"';
        at = end;
    }
    return literals;
}

std::vector<std::string> argumentsOfCalls(std::string_view code, std::string_view function) {
    const std::string call = std::string(function) + "(";
    std::vector<std::string> calls;
    for (std::size_t at = code.find(call); at != std::string_view::npos;
         at = code.find(call, at + 1)) {
        const std::size_t begin = at + call.size();
        std::size_t end = begin;
        for (int depth = 1; end < code.size(); ++end) {
            depth += code[end] == '(' ? 1 : code[end] == ')' ? -1 : 0;
            if (depth == 0) {
                break;
            }
        }
        calls.emplace_back(code.substr(begin, end - begin));
    }
    return calls;
}

}  // namespace test_support
