#include "runner/literal_parts.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

namespace test_support {

namespace {

constexpr auto kDigits = "0123456789";
constexpr std::size_t kLongestLine = 105;

// The number that a text of digits is; none for what is empty, no number or above 2^64 - 1.
std::optional<std::uint64_t> numberOf(const std::string& text) {
    if (text.empty() || text.find_first_not_of(kDigits) != std::string::npos) {
        return std::nullopt;
    }
    std::uint64_t number = 0;
    for (const char digit : text) {
        const auto value = static_cast<std::uint64_t>(digit - '0');
        if (number > (std::numeric_limits<std::uint64_t>::max() - value) / 10) {
            return std::nullopt;
        }
        number = number * 10 + value;
    }
    return number;
}

// The numbers of a line without its end; none for a line that isn't five.
std::vector<std::uint64_t> numbersOf(const std::string& line) {
    std::vector<std::uint64_t> numbers;
    for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t blank = std::min(line.find(' ', begin), line.size());
        const std::optional<std::uint64_t> number = numberOf(line.substr(begin, blank - begin));
        if (!number) {
            return {};
        }
        numbers.push_back(*number);
        begin = blank + 1;
    }
    return numbers.size() == 5 ? numbers : std::vector<std::uint64_t>{};
}

}  // namespace

LiteralParts literalTakeParts(std::string output, std::size_t files) {
    LiteralParts result;
    while (result.parts.size() < files) {
        const std::size_t end = output.find('\n');
        if (end == std::string::npos) {
            result.isMalformed =
                output.size() >= kLongestLine ||
                output.find_first_not_of(std::string(kDigits) + " ") != std::string::npos;
            return result;
        }
        const std::vector<std::uint64_t> numbers = numbersOf(output.substr(0, end));
        if (end >= kLongestLine || numbers.empty() || numbers[0] != result.parts.size()) {
            result.isMalformed = true;
            return result;
        }
        const std::uint64_t room = output.size() - end - 1;
        if (numbers[2] > room || numbers[4] > room - numbers[2]) {
            return result;
        }
        result.parts.push_back({numbers[1] == 0, output.substr(end + 1, numbers[2]),
                                numbers[3] == 0, output.substr(end + 1 + numbers[2], numbers[4])});
        output.erase(0, end + 1 + numbers[2] + numbers[4]);
    }
    return result;
}

std::string printPart(std::size_t position, const LiteralPart& part) {
    const auto code = [](bool isSuccess) { return isSuccess ? " 0 " : " 1 "; };
    return std::to_string(position) + code(part.isPrintAllSuccess) +
           std::to_string(part.printAll.size()) + code(part.isSummarySuccess) +
           std::to_string(part.summary.size()) + "\n" + part.printAll + part.summary;
}

}  // namespace test_support
