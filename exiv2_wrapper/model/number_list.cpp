#include "exiv2_wrapper/model/number_list.h"

#include <optional>

#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

namespace {

std::optional<Rational> takeRational(std::string_view& rest) {
    const auto numerator = takeInteger(rest);
    if (!numerator || !rest.starts_with('/')) {
        return std::nullopt;
    }
    rest.remove_prefix(1);
    const auto denominator = takeInteger(rest);
    if (!denominator) {
        return std::nullopt;
    }
    return Rational(*numerator, *denominator);
}

template <typename Take, typename Number>
void readBy(const Take& take, std::string_view text, std::vector<Number>& numbers) {
    for (skipSpace(text); !text.empty(); skipSpace(text)) {
        const auto number = take(text);
        if (takeUntilSpace(text).empty() && number) {
            numbers.push_back(*number);
        }
    }
}

}  // namespace

void readNumbers(std::string_view text, std::vector<std::int64_t>& numbers) {
    readBy(takeInteger, text, numbers);
}

void readNumbers(std::string_view text, std::vector<Rational>& numbers) {
    readBy(takeRational, text, numbers);
}

}  // namespace exiv2_wp::internal
