#include "exiv2_wrapper/api/lens_range.h"

#include <cstddef>

#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

namespace {

constexpr std::string_view kDashBytes = "-\xE2\x80\x93";

std::size_t endOfDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && isDigit(text[at])) {
        ++at;
    }
    return at;
}

bool isUnitBehind(std::string_view text, std::size_t at) {
    while (at < text.size() && isSpace(text[at])) {
        ++at;
    }
    return at + 1 < text.size() && toLower(text[at]) == 'm' && toLower(text[at + 1]) == 'm';
}

}  // namespace

// Neither the dash nor the unit can begin inside a run of digits, so a match always takes whole
// runs, and looking at each run and the one behind it once finds the first match.
std::optional<LensRange> findLensRange(std::string_view lensModel) {
    std::size_t begin = 0;
    while (begin < lensModel.size()) {
        if (!isDigit(lensModel[begin])) {
            ++begin;
            continue;
        }
        const std::size_t end = endOfDigits(lensModel, begin);
        if (end < lensModel.size() && kDashBytes.find(lensModel[end]) != std::string_view::npos) {
            const std::size_t secondEnd = endOfDigits(lensModel, end + 1);
            if (secondEnd > end + 1 && isUnitBehind(lensModel, secondEnd)) {
                return LensRange{lensModel.substr(begin, end - begin),
                                 lensModel.substr(end + 1, secondEnd - end - 1)};
            }
        }
        begin = end;
    }
    return std::nullopt;
}

}  // namespace exiv2_wp::internal
