#include "text/literal_text.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <locale>

namespace test_support {

namespace {

// `convert` is strtod or strtof. What runtime libraries answer differently is made alike: a
// denormal number, which some report as a range error, is taken for a value; signs that no number
// follows, which some step over, are none; and the text alone gives a zero its sign, which some
// lose in "-0x".
template <typename Real>
std::optional<Real> convertBy(Real (*convert)(const char*, char**), const std::string& text) {
    char* end = nullptr;
    errno = 0;
    const Real value = convert(text.c_str(), &end);
    const auto size = static_cast<std::size_t>(end - text.c_str());
    const std::size_t begin = text.find_first_not_of(" \t\n\v\f\r");
    const bool isOutOfRange = errno == ERANGE && (value == 0 || std::isinf(value));
    if (isOutOfRange || text.find_first_not_of("+- \t\n\v\f\r") >= size) {
        return std::nullopt;
    }
    return value == 0 && text[begin] == '-' ? -Real(0) : value;
}

}  // namespace

std::optional<std::int64_t> literalInteger(const std::string& text) {
    const bool hasSign = !text.empty() && (text[0] == '+' || text[0] == '-');
    const std::size_t begin = hasSign ? 1 : 0;
    if (text.size() == begin) {
        return std::nullopt;
    }
    std::uint64_t sum = 0;
    for (std::size_t at = begin; at < text.size(); ++at) {
        if (text[at] < '0' || text[at] > '9') {
            return std::nullopt;
        }
        sum = sum * 10 + static_cast<std::uint64_t>(text[at] - '0');
    }
    return static_cast<std::int64_t>(text[0] == '-' ? ~sum + 1 : sum);
}

std::optional<double> literalDouble(const std::string& text) {
    return convertBy(std::strtod, text);
}

std::optional<float> literalFloat(const std::string& text) {
    return convertBy(std::strtof, text);
}

std::string literalTrim(const std::string& text) {
    const auto begin = std::find_if_not(text.begin(), text.end(), isClassicSpace);
    const auto end = std::find_if_not(text.rbegin(), text.rend(), isClassicSpace).base();
    return begin < end ? std::string(begin, end) : std::string();
}

std::string literalLower(std::string text) {
    std::use_facet<std::ctype<char>>(std::locale::classic())
        .tolower(text.data(), text.data() + text.size());
    return text;
}

bool isClassicSpace(char c) {
    return std::isspace(c, std::locale::classic());
}

}  // namespace test_support
