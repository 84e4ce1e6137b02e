#include "fuzz/literal_numbers.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <locale>

namespace fuzz {

namespace {

// `convert` is strtod or strtof. A fuzzer sets no locale, so theirs is the classic one.
template <typename Real>
std::optional<Real> convertBy(Real (*convert)(const char*, char**), const std::string& text) {
    char* end = nullptr;
    errno = 0;
    const Real value = convert(text.c_str(), &end);
    const bool isOutOfRange = errno == ERANGE && (value == 0 || std::isinf(value));
    return end == text.c_str() || isOutOfRange ? std::nullopt : std::optional(value);
}

}  // namespace

std::optional<std::int64_t> literalInteger(const std::string& text) {
    const bool hasSign = !text.empty() && (text[0] == '+' || text[0] == '-');
    const std::string digits = text.substr(hasSign ? 1 : 0);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    std::uint64_t sum = 0;
    for (const char digit : digits) {
        sum = sum * 10 + static_cast<unsigned char>(digit) - '0';
    }
    return static_cast<std::int64_t>(text[0] == '-' ? ~sum + 1 : sum);
}

std::optional<double> literalDouble(const std::string& text) {
    return convertBy(std::strtod, text);
}

std::optional<float> literalFloat(const std::string& text) {
    return convertBy(std::strtof, text);
}

bool isClassicSpace(char c) {
    return std::isspace(c, std::locale::classic());
}

std::string literalTrim(const std::string& text) {
    std::string trimmed = text;
    while (!trimmed.empty() && isClassicSpace(trimmed.front())) {
        trimmed.erase(0, 1);
    }
    while (!trimmed.empty() && isClassicSpace(trimmed.back())) {
        trimmed.erase(trimmed.size() - 1);
    }
    return trimmed;
}

std::string literalLower(std::string text) {
    for (char& c : text) {
        c = std::tolower(c, std::locale::classic());
    }
    return text;
}

}  // namespace fuzz
