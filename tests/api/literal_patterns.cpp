#include "api/literal_patterns.h"

#include <regex>

namespace test_support {

std::optional<std::pair<std::string, std::string>> literalLensRange(const std::string& lensModel) {
    static const std::regex kPattern(R"((\d+)[-–](\d+)\s*mm)",
                                     std::regex::ECMAScript | std::regex::icase);
    std::smatch match;
    if (!std::regex_search(lensModel, match, kPattern)) {
        return std::nullopt;
    }
    return std::pair(match[1].str(), match[2].str());
}

bool literalHasDate(const std::string& text) {
    static const std::regex kDate(
        R"(\d{4}[\s\S]\d\d[\s\S]\d\d[\s\S]\d\d[\s\S]\d\d[\s\S]\d\d[\s\S]*)");
    return std::regex_match(text, kDate);
}

bool literalHasOffset(const std::string& text) {
    static const std::regex kOffset(R"([+-]\d\d:\d\d[\s\S]*)");
    return std::regex_match(text, kOffset);
}

}  // namespace test_support
