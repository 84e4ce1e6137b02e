// SPDX-License-Identifier: GPL-2.0-or-later
#include "exiv2/without_xmp.h"

#include <algorithm>
#include <string_view>

#include "exiv2/jpeg_segments.h"

namespace exiv2_tool {
namespace {

bool isXmp(const JpegSegment& segment) {
    constexpr std::string_view kSignature("http://ns.adobe.com/xap/1.0/\0", 29);
    const std::span<const std::uint8_t> content = segment.content();
    return segment.marker == JpegSegment::kApplicationData1 &&
           content.size() >= kSignature.size() &&
           std::equal(kSignature.begin(), kSignature.end(), content.begin());
}

// libexiv2 knows of no length of other segments. It ends its search when it has met every kind of
// segment that it reads: without a comment it goes on to the scan, whether there is XMP or not.
bool isReadAlikeWithoutXmp(const JpegSegment& segment) {
    return segment.isApplicationData() || segment.isFrameOrTables() ||
           segment.marker == JpegSegment::kQuantizationTables ||
           segment.marker == JpegSegment::kRestartInterval;
}

std::vector<std::uint8_t> joined(const std::vector<std::span<const std::uint8_t>>& parts) {
    std::vector<std::uint8_t> bytes;
    for (const std::span<const std::uint8_t> part : parts) {
        bytes.insert(bytes.end(), part.begin(), part.end());
    }
    return bytes;
}

}  // namespace

std::vector<std::uint8_t> withoutXmp(std::span<const std::uint8_t> bytes) {
    std::vector<std::span<const std::uint8_t>> parts{
        bytes.first(std::min<std::size_t>(bytes.size(), 2))};
    bool hasXmp = false;
    JpegSegments segments(bytes);
    while (const std::optional<JpegSegment> segment = segments.next()) {
        if (segment->marker == JpegSegment::kStartOfScan && hasXmp) {
            parts.push_back(segment->bytes);
            return joined(parts);
        }
        if (!isReadAlikeWithoutXmp(*segment)) {
            break;
        }
        if (isXmp(*segment)) {
            hasXmp = true;
        } else {
            parts.push_back(segment->bytes);
        }
    }
    return {};
}

}  // namespace exiv2_tool
