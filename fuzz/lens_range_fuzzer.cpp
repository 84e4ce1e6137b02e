#include "exiv2_wrapper/api/lens_range.h"

#include <regex>

#include "fuzz/checks.h"

// The input is a lens model.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::regex kPattern("(\\d+)[-\xE2\x80\x93](\\d+)\\s*mm",
                                     std::regex::ECMAScript | std::regex::icase);
    const std::string model = fuzz::textOf(data, size);
    std::smatch match;
    const bool isMatch = std::regex_search(model, match, kPattern);
    const auto range = exiv2_wp::internal::findLensRange(model);
    fuzz::require(range.has_value() == isMatch, "the pattern matches where a range is found");
    if (range) {
        fuzz::require(match[1] == std::string(range->shortest), "the first group is the short end");
        fuzz::require(match[2] == std::string(range->longest), "the second group is the long end");
    }
    return 0;
}
