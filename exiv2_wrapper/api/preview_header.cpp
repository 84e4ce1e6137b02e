#include "exiv2_wrapper/api/preview_header.h"

#include <limits>

#include "exiv2_wrapper/text/text.h"

namespace exiv2_wp::internal {

namespace {

// Takes a number off the front of `rest`; false when there is none or it is too large.
bool takeInt(std::string_view& rest, std::int32_t& number) {
    skipSpace(rest);
    const bool isNegative = !rest.empty() && rest.front() == '-';
    if (isNegative || (!rest.empty() && rest.front() == '+')) {
        rest.remove_prefix(1);
    }
    if (rest.empty() || !isDigit(rest.front())) {
        return false;
    }
    constexpr std::int64_t kMax = std::numeric_limits<std::int32_t>::max();
    const std::int64_t limit = isNegative ? kMax + 1 : kMax;
    std::int64_t magnitude = 0;
    while (!rest.empty() && isDigit(rest.front())) {
        magnitude = magnitude * 10 + (rest.front() - '0');
        if (magnitude > limit) {
            return false;
        }
        rest.remove_prefix(1);
    }
    number = static_cast<std::int32_t>(isNegative ? -magnitude : magnitude);
    return true;
}

bool takeHeader(std::string_view& rest, PreviewHeader& header) {
    return takeInt(rest, header.previewWidth) && takeInt(rest, header.previewHeight) &&
           takeInt(rest, header.notifyValue) && takeInt(rest, header.payloadMode) &&
           takeInt(rest, header.top) && takeInt(rest, header.bottom);
}

}  // namespace

std::optional<PreviewOutput> splitPreviewOutput(std::string_view output) {
    PreviewOutput split;
    if (!takeHeader(output, split.header)) {
        return std::nullopt;
    }
    if (!output.empty()) {
        skipSpace(output);
        split.payload = output;
    }
    return split;
}

}  // namespace exiv2_wp::internal
