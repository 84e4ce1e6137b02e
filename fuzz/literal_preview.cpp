#include "fuzz/literal_preview.h"

#include <algorithm>
#include <cstddef>
#include <locale>
#include <sstream>

#include "text/literal_text.h"

namespace fuzz {

LiteralPreview::LiteralPreview(const std::string& output) {
    std::istringstream stream(output);
    stream.imbue(std::locale::classic());
    for (std::int32_t& number : header) {
        stream >> number;
    }
    hasHeader = !stream.fail();
    const std::streamoff position = hasHeader ? std::streamoff{stream.tellg()} : -1;
    if (position < 0 || position >= static_cast<std::streamoff>(output.size())) {
        return;
    }
    payload = output.substr(static_cast<std::size_t>(position));
    if (payload[0] == '\r' || payload[0] == '\n') {
        payload.erase(0, 1);
    }
    while (!payload.empty() && test_support::isClassicSpace(payload[0])) {
        payload.erase(0, 1);
    }
    hasPayload = true;
}

void HostStory::tell(std::string event, const std::vector<std::int64_t>& numbers) {
    for (const std::int64_t number : numbers) {
        event += " " + std::to_string(number);
    }
    told.push_back(event);
}

HostStory literalStory(const std::string& output, const std::string& format, int firstSize,
                       int secondSize) {
    const LiteralPreview preview(output);
    const auto& [width, height, notify, mode, top, bottom] = preview.header;
    HostStory story;
    if (!preview.hasHeader) {
        if (test_support::literalLower(format) != "dng") {
            story.lines = {"Exiv2 failed to extract param for "};
        }
        return story;
    }
    story.top = top;
    story.bottom = bottom;
    if (width <= 0 || height <= 0) {
        story.lines = {"Exiv2 incorrect preview size extracted for "};
    } else if (mode < 0 || mode > 1) {
        story.lines = {"Exiv2 incorrect format extracted for "};
    } else if (!preview.hasPayload) {
        story.lines = {"Exiv2 failed to handle output size for "};
    } else if (preview.payload.empty()) {
        story.lines = {"Exiv2 incorrect blob size for "};
    }
    if (!story.lines.empty()) {
        return story;
    }
    const std::int64_t size = std::max(std::max(firstSize, secondSize), 1);
    story.tell("size", {width, height, size});
    if (notify > 0) {
        story.tell("notify", {notify});
    }
    if (mode == 0) {
        story.tell("plain " + preview.payload, {top, bottom});
    } else {
        // In 64 bits, of which the low 32 count as a signed number.
        std::int64_t rows = std::int64_t{height} - bottom - top;
        rows = (rows % 0x100000000 + 0x100000000) % 0x100000000;
        rows = rows >= 0x80000000 ? 0 : rows;
        story.tell("sized " + preview.payload, {width, rows, top, bottom, size});
    }
    story.result = true;
    return story;
}

}  // namespace fuzz
